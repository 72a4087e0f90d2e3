#ifndef BENCH_QUERYCASES_H
#define BENCH_QUERYCASES_H

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <zor3geom/PLANE_3D.h>
#include <zor3geom/RECT_2D.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Points handed over at a time.
constexpr int c_nQueryBatch = 4096;

/// Six planes around a box in the middle of the terrain that holds the given share of its plan, and all
/// heights. Sides lie between two millimetres: no rounding can decide about a point.
std::vector<zor::geom::PLANE_3D> MakeClipBox(std::int64_t nNum, double dShare);

/// The product's clipped query. @return the checksum of what it delivers.
std::uint64_t ClipProduct(std::int64_t nNum, double dShare, CCpuTimer& timer);

/// The same for the four planes of each of the rectangles, one after the other, told per rectangle.
std::uint64_t RectsProduct(std::int64_t nNum, const std::vector<zor::geom::RECT_2D>& vecRects,
                           CCpuTimer& timer);

/// Squares of that edge spread over the terrain: more of the small ones. Sides between two millimetres.
std::vector<zor::geom::RECT_2D> MakeSquares(std::int64_t nNum, double dEdge);

/// Adds the rows of the level of detail at 5 m and 50 m beside a peer that thins to one point a voxel. The
/// bars are meant for the fastest of the peers: the row of each has to hold them.
///
/// @param peer  thins to the spacing it is given and returns the number of points left.
void AddLodRows(std::int64_t nNum, const std::string& sPeer,
                const std::function<std::uint64_t(double, CCpuTimer&)>& peer);

#endif
