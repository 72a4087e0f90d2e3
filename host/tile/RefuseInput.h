#ifndef HOST_TILE_REFUSEINPUT_H
#define HOST_TILE_REFUSEINPUT_H

#include <string>

namespace zorcld
{

/// Keeps a command from writing over what it reads: as RefuseSameFile; of tiles, the manifest and each of its
/// files.
/// @param sInPath  a file, a manifest, or its folder.
/// @throws CUsageError; CFailure when it is a manifest that cannot be read.
void RefuseInput(const std::string& sInPath, const std::string& sOutPath, const char* pOption, bool bForce);

} // namespace zorcld

#endif
