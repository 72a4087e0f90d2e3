#ifndef HOST_TILE_HASHFILE_H
#define HOST_TILE_HASHFILE_H

#include <string>

namespace zorcld
{

/// @return XXH3 of 128 bits of all bytes of a file, 32 hexadecimal digits.
/// @throws CFailure when it cannot be read.
std::string HashFile(const std::string& sPath);

} // namespace zorcld

#endif
