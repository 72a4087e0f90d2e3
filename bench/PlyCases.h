#ifndef BENCH_PLYCASES_H
#define BENCH_PLYCASES_H

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>

#include <cstdint>

constexpr const char* c_pPlyLoad = "PLY load, octree and duplicates included";

/// Loads the terrain's PLY file as a host does. @return the checksum of its points.
std::uint64_t LoadProduct(std::int64_t nNum, CCpuTimer& timer);

#endif
