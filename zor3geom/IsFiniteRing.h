#ifndef ZOR3GEOM_ISFINITERING_H
#define ZOR3GEOM_ISFINITERING_H

#include <zor3geom/PNT_2D.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace zor::geom
{

inline bool IsFinitePnt(const PNT_2D& pnt) noexcept
{
    return std::isfinite(pnt.x) && std::isfinite(pnt.y);
}

/// @return whether every coordinate of a ring is a finite number.
inline bool IsFiniteRing(const std::vector<PNT_2D>& ring) noexcept
{
    return std::all_of(ring.begin(), ring.end(), IsFinitePnt);
}

} // namespace zor::geom

#endif
