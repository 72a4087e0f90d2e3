#ifndef OCTREE_ROUNDINWARDS_H
#define OCTREE_ROUNDINWARDS_H

#include <zor3geom/TPlanBox.h>

#include <cmath>
#include <cstdint>

/// @return the nearest whole number not below `d`; a number beyond 2^40 becomes that bound, and what is not a
///         number the lower one.
inline std::int64_t RoundUp(double d) noexcept
{
    constexpr double c_dBound = 1099511627776.0; // 2^40: every square of a tree lies within it
    if (!(d > -c_dBound))
        return static_cast<std::int64_t>(-c_dBound);
    return static_cast<std::int64_t>(d < c_dBound ? std::ceil(d) : c_dBound);
}

/// The whole numbers of a box, compact units: whether a whole number lies beyond a limit does not change when
/// the limit is rounded inwards. A limit that is not a number limits nothing.
inline zor::geom::TPlanBox<std::int64_t> RoundInwards(const zor::geom::TPlanBox<double>& box) noexcept
{
    // Upper limits are rounded with their sign turned, so that not-a-number ends at the wide end of both.
    return {RoundUp(box.xmin), RoundUp(box.ymin), -RoundUp(-box.xmax), -RoundUp(-box.ymax)};
}

#endif
