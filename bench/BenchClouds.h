#ifndef BENCH_BENCHCLOUDS_H
#define BENCH_BENCHCLOUDS_H

#include <bench/CMmSum.h>
#include <octree/CTruncPnt.h>
#include <sample/CSampleTerrain.h>
#include <tests/support/CNoColors.h>
#include <tests/support/CSumListener.h>
#include <zor4data/CPntCld.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The synthetic terrain, seed 1, made once for each size.
const std::vector<CSamplePnt>& GetTerrain(std::int64_t nNumPnts);

/// The terrain as compact points relative to its first one, in scan order or shuffled (fixed seed).
std::vector<CTruncPnt> MakeCompact(std::int64_t nNumPnts, bool bShuffled);

/// The terrain as a cloud with its octree, made once for each size.
const CPntCld& GetTerrainCld(std::int64_t nNumPnts);

/// @return the checksum of all points of a cloud, its octree built or not, on top of `sum`, which says
///         about which origin the coordinates lie.
std::uint64_t SumMm(const CPntCld& cld, CMmSum sum);

/// The checksum of coordinates about the terrain's origin, or of relative ones, to begin with.
inline CMmSum MakeAbsoluteSum()
{
    return {CSampleTerrain::c_dOrgX, CSampleTerrain::c_dOrgY};
}
inline CMmSum MakeRelativeSum()
{
    return {};
}

/// @return the checksum of the terrain itself: what a cloud of all its points has.
std::uint64_t GetTerrainSum(std::int64_t nNumPnts);

/// @return the path of a temporary file of that name, written by `write` when it is asked for the first time.
/// Removed when the program ends.
std::string GetBenchFile(const std::string& sName, const std::function<bool(const std::string&)>& write);

/// The terrain as PLY (float x, y, z; uchar red, green, blue) in a temporary file, made once a size.
/// Removed when the program ends.
std::string GetTerrainPly(std::int64_t nNumPnts);

/// The same with a second element, behind the vertices, whose property is of no known type: a reader
/// delivers all vertices and then fails.
std::string GetUnfinishedPly(std::int64_t nNumPnts);

#endif
