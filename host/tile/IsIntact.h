#ifndef HOST_TILE_ISINTACT_H
#define HOST_TILE_ISINTACT_H

#include <string>

namespace zorcld
{

struct CTileEntry;

/// Has a file the size and the hash that are told of a tile? Reads all of it.
/// @return false, too, where there is no such file.
/// @throws CFailure when it cannot be read.
bool IsIntact(const std::string& sPath, const CTileEntry& tile);

} // namespace zorcld

#endif
