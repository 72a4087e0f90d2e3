#ifndef BENCH_NATIVEFILES_H
#define BENCH_NATIVEFILES_H

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>

#include <string>

/// The terrain as a cloud, points coloured by their index or without colour.
void FillTerrain(CPntCld& cld, std::int64_t nNum, bool bColor);

/// The terrain as a native file, made once a size and type.
std::string GetTerrainNative(std::int64_t nNum, bool bColor);

/// Loads it. @return the checksum of the points loaded.
std::uint64_t LoadNative(std::int64_t nNum, bool bColor, CCpuTimer& timer);

#endif
