#ifndef BENCH_ASCIIGRIDFILES_H
#define BENCH_ASCIIGRIDFILES_H

#include <bench/BenchTable.h>

#include <cstdint>
#include <string>

/// An ESRI ASCII grid of heights between 400 and 500 in millimetres, made once a size; no cell is without
/// data.
std::string GetGrid(std::int64_t nNumCols, std::int64_t nNumRows);

/// Decodes it into a cloud, without building the tree. @return the checksum of the heights.
std::uint64_t DecodeGrid(std::int64_t nNumCols, std::int64_t nNumRows, CCpuTimer& timer);

#endif
