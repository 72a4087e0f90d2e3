#ifndef HOST_TILE_FINDMEMORY_H
#define HOST_TILE_FINDMEMORY_H

namespace zorcld
{

/// @return bytes that this program may count on: those of the machine, or those of addresses that it is
///         allowed.
double FindMemory();

/// Is it allowed some addresses only? Threads take 8 MB each for their stacks.
bool IsMemoryLimited();

} // namespace zorcld

#endif
