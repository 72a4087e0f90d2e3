#ifndef HOST_TILE_BUILDTILE_H
#define HOST_TILE_BUILDTILE_H

#include <host/tile/CManifest.h>

#include <string>

namespace zorcld
{

struct CTileCount;
struct CTilePlan;

/// Makes a tile of its points.
/// @param sPntsPath  a native file without an octree, points in the order of the files.
/// @param sFolder    where the tile goes.
/// @return what the manifest says of it; the tile is on the disk then.
/// @throws CFailure
CTileEntry BuildTile(const CTilePlan& plan, const CTileCount& tile, const std::string& sPntsPath,
                     const std::string& sFolder);

} // namespace zorcld

#endif
