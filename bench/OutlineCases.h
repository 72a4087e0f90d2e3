#ifndef BENCH_OUTLINECASES_H
#define BENCH_OUTLINECASES_H

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>

constexpr double c_dOutlineDistance = 2.0; // metres

/// Outlines of two kinds are not the same line: what is compared is the area inside, to one part in fifty.
std::uint64_t CheckOutlineArea(std::int64_t nNum, double dArea);

/// Outlines the terrain, points coming one by one.
std::uint64_t OutlineProduct(std::int64_t nNum, CCpuTimer& timer);

#endif
