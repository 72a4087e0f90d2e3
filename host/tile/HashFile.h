#ifndef HOST_TILE_HASHFILE_H
#define HOST_TILE_HASHFILE_H

#include <atomic>
#include <string>

namespace zorcld
{

/// XXH3 of 128 bits over the bytes of a file, 32 hexadecimal digits as `xxh128sum` prints them.
/// @param pStop  set by another thread: what is returned is worth nothing; null: nobody does.
/// @throws CFailure when it cannot be read.
std::string HashFile(const std::string& sPath, const std::atomic<bool>* pStop = nullptr);

/// Is it what HashFile gives?
bool IsHash(const std::string& sText);

/// The same of a text.
std::string HashText(const std::string& sText);

} // namespace zorcld

#endif
