#ifndef HOST_TILE_BUILDTILE_H
#define HOST_TILE_BUILDTILE_H

#include <host/output/CFailure.h>
#include <host/tile/CManifest.h>

#include <cstdint>
#include <string>

namespace zorcld
{

struct CTileCount;
struct CTilePlan;

/// Points of a tile that wait for their octree: a native file, points in the order of the files.
struct CTilePnts
{
    std::string sPath;
    std::uint64_t nHash = 0; ///< CPntsHash of them
};

/// The points that wait are not those that were handed out.
class CDamagedPnts : public CFailure
{
public:
    using CFailure::CFailure;
};

/// Does what is told of a tile have the numbers of the plan?
bool FitsPlan(const CTilePlan& plan, const CTileCount& tile, const CTileEntry& entry);

/// Makes a tile of its points.
/// @param sFolder  where the tile goes.
/// @return what the manifest says of it; the tile is on the disk then.
/// @throws CFailure, CDamagedPnts
CTileEntry BuildTile(const CTilePlan& plan, const CTileCount& tile, const CTilePnts& pnts,
                     const std::string& sFolder);

} // namespace zorcld

#endif
