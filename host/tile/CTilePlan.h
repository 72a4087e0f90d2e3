#ifndef HOST_TILE_CTILEPLAN_H
#define HOST_TILE_CTILEPLAN_H

#include <host/tile/CManifest.h>
#include <host/tile/CTilePnt.h>
#include <host/tile/CTileTable.h>
#include <host/tile/NameTile.h>

#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace zorcld
{

class CConsole;
struct CInputOptions;

/// A file to be cut, and what the first pass over it has found.
struct CPlannedFile
{
    CTiledFile file;
    std::int64_t nTime = 0;  ///< of its last change, as far as the system tells it apart
    bool bDeepColor = false; ///< 16 bits a channel
};

/// What the first pass over the files tells: where the points are to go, and how many.
struct CTilePlan
{
    CTileOptions options;
    TOrigin origin{};
    bool bColor = false;
    CTileUnits units;
    std::array<std::int32_t, 3> anMin = {c_nHighest, c_nHighest, c_nHighest}; ///< of all points
    std::array<std::int32_t, 3> anMax = {c_nLowest, c_nLowest, c_nLowest};
    std::vector<CPlannedFile> vecFiles;
    std::vector<CTileCount> vecTiles; ///< those with a point in their core, sorted

    static constexpr std::int32_t c_nLowest = std::numeric_limits<std::int32_t>::min();
    static constexpr std::int32_t c_nHighest = std::numeric_limits<std::int32_t>::max();

    std::int64_t CountPnts() const;

    /// @throws CUsageError
    CTileGrid MakeGrid() const { return {options.dSize, options.dBuffer, origin, units.dPlan}; }
};

/// What can be told of a file without reading it. @throws CFailure when there is none.
CPlannedFile LookAtTime(const std::string& sPath);

/// Reads all files once, and hashes them.
/// @throws CFailure, CUsageError where they cannot be cut so.
CTilePlan MakePlan(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
                   const CConsole& console);

/// A plan, and what the points that have been handed out by it are known by.
struct CCutPlan
{
    CTilePlan plan;
    std::map<CCell, std::uint64_t> mapHashes; ///< CPntsHash, of all its tiles; empty: they have not been
};

/// Does what MakePlan does, and hands out the points on the way, unless the plan has to be known before:
/// colours turn out to have 16 bits late in a file, a tile is larger than a cloud may be, or tiles are so
/// small that most points go to many. Then there may be files in the folder that are of no use.
/// @param sFolder  where the points go, as by HandOutPnts.
/// @throws CFailure, CUsageError likewise.
CCutPlan MakePlanAndCut(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
                        const std::string& sFolder, const CConsole& console);

} // namespace zorcld

#endif
