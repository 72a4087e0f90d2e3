#ifndef ZOR3GEOM_ISUSABLERING_H
#define ZOR3GEOM_ISUSABLERING_H

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

/// @return whether a ring can hold anything: three points or more, every coordinate a finite number.
inline bool IsUsableRing(const std::vector<PNT_2D>& ring) noexcept
{
    return ring.size() >= 3 && std::all_of(ring.begin(), ring.end(), IsFinitePnt);
}

} // namespace zor::geom

#endif
