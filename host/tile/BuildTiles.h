#ifndef HOST_TILE_BUILDTILES_H
#define HOST_TILE_BUILDTILES_H

#include <host/tile/BuildTile.h>
#include <host/tile/CTilePlan.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace zorcld
{

/// Builds tiles (BuildTile), two at once where they take less than a quarter of the machine's memory, and no
/// limit is set.
/// @param getPnts  where the points of a tile wait.
/// @param onBuilt      gets each tile and its position in `vecTiles`, in the order in which they are done;
/// one
///                     call at a time, on any thread.
/// @throws CFailure; of tiles that were under way the others are done first.
void BuildTiles(const CTilePlan& plan, const std::vector<CTileCount>& vecTiles, const std::string& sFolder,
                const std::function<CTilePnts(const CTileCount&)>& getPnts,
                const std::function<void(const CTileEntry&, std::size_t)>& onBuilt);

} // namespace zorcld

#endif
