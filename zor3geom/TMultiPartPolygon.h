#ifndef ZOR3GEOM_TMULTIPARTPOLYGON_H
#define ZOR3GEOM_TMULTIPARTPOLYGON_H

#include <zor3geom/PNT_2D.h>

#include <vector>

namespace zor::geom
{

/// Region in plan view: what lies inside the outer ring and in none of the holes. The closing edge of a
/// ring is implied; rings may run either way round.
struct TMultiPartPolygon
{
    std::vector<PNT_2D> outer;              ///< coordinate units
    std::vector<std::vector<PNT_2D>> holes; ///< a ring each
};

} // namespace zor::geom

#endif
