#ifndef HOST_TILE_PRINTTILECOMMANDS_H
#define HOST_TILE_PRINTTILECOMMANDS_H

#include <host/tile/CTilePnt.h>

#include <optional>
#include <string>

namespace zorcld
{

/// Prints on standard output, for a shell, one `zorcld ground` a tile.
/// @param sManifest  the manifest, or its folder.
/// @param sFolder    where the commands put their files, which are named as the tiles are; it is made.
/// @param units      that the user gives in place of the manifest's.
/// @throws CFailure where the tiles do not give the ground of the whole; CUsageError for the tiles' folder.
void PrintGroundCommands(const std::string& sManifest, const std::string& sFolder,
                         const std::optional<CTileUnits>& units);

} // namespace zorcld

#endif
