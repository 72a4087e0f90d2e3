#ifndef HOST_TILE_HANDOUTPNTS_H
#define HOST_TILE_HANDOUTPNTS_H

#include <host/tile/CTilePlan.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zorcld
{

class CConsole;
struct CInputOptions;

/// The pass over the files that follows a plan made before: appends the points of each tile to a file of its
/// own (CSpool).
/// @param vecTiles  those that get points. @param sFolder  for the files; empty.
/// @return hashes of the points of each tile.
/// @throws CFailure
std::map<CCell, std::uint64_t> HandOutPnts(const std::vector<CInputOptions>& vecInputs, const CTilePlan& plan,
                                           const std::vector<CTileCount>& vecTiles,
                                           const std::string& sFolder, const CConsole& console);

} // namespace zorcld

#endif
