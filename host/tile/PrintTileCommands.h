#ifndef HOST_TILE_PRINTTILECOMMANDS_H
#define HOST_TILE_PRINTTILECOMMANDS_H

#include <string>

namespace zorcld
{

/// Prints on standard output, for a shell, one `zorcld ground` a tile.
/// @param sManifest  the manifest, or its folder.
/// @param sFolder    where the commands put their files, which are named as the tiles are; it is made.
/// @throws CFailure
void PrintGroundCommands(const std::string& sManifest, const std::string& sFolder);

} // namespace zorcld

#endif
