#ifndef ZOR3GEOM_ISPNTINSIDEPOLYGON_H
#define ZOR3GEOM_ISPNTINSIDEPOLYGON_H

#include <zor0lang/Export.h>
#include <zor3geom/PNT_2D.h>

#include <vector>

namespace zor::geom
{

/// Does a point lie inside a ring, or on it?
///
/// @param ring  closing edge implied, either way round. Where the ring crosses itself a place is inside
///              when a ray from it crosses the ring an odd number of times. Fewer than three points, or a
///              coordinate that is not finite: nothing is inside.
/// @param pnt   the place that is asked about.
///
/// Cost: linear in the ring's points. Exact for coordinates whose products do not overflow.
ZOR_API bool IsPntInsidePolygon(const std::vector<PNT_2D>& ring, const PNT_2D& pnt) noexcept;

} // namespace zor::geom

#endif
