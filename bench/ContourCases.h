#ifndef BENCH_CONTOURCASES_H
#define BENCH_CONTOURCASES_H

#include <bench/CCpuTimer.h>
#include <zor3geom/PNT_2D.h>

#include <geos/geom/Geometry.h>

#include <cstdint>
#include <memory>
#include <vector>

/// Outer ring and holes, for both sides.
struct CContourCase
{
    std::vector<zor::geom::PNT_2D> outer;
    std::vector<std::vector<zor::geom::PNT_2D>> vecHoles;
    std::unique_ptr<geos::geom::Geometry> pArea;
};

/// A ring about the middle of the terrain of so many points, which holds half of it, and a hole a sixteenth
/// as large with a tenth of the vertices. Neither crosses itself. Made once.
const CContourCase& GetCase(std::int64_t nNum, int nNumVertices, bool bHole);

/// Asks GEOS's indexed locator, its index included, about every point of the terrain's cloud.
/// @return by index: not 0 where the point lies in the area or on its edge.
std::vector<char> LocateGeos(std::int64_t nNum, const geos::geom::Geometry& area, CCpuTimer& timer);

#endif
