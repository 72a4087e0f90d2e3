#ifndef BENCH_BUILDCASES_H
#define BENCH_BUILDCASES_H

#include <bench/BenchTable.h>
#include <octree/CTruncPnt.h>

#include <cstdint>
#include <vector>

/// What all sides index: the terrain's compact points. One case is kept.
const std::vector<CTruncPnt>& GetBuildPnts(std::int64_t nNum, bool bShuffled);

/// Builds the product's octree over a copy of them.
/// @return the number of points that its leaves hold.
std::uint64_t BuildProduct(std::int64_t nNum, bool bShuffled, CCpuTimer& timer);

/// Bytes of the heap that the product's octree takes, a point.
double MeasureTreeMemory(std::int64_t nNum);

#endif
