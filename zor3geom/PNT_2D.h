#ifndef ZOR3GEOM_PNT_2D_H
#define ZOR3GEOM_PNT_2D_H

#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Point in plan view, coordinate units; undefined until set.
struct PNT_2D
{
    double x = c_dUndefined; ///< coordinate units
    double y = c_dUndefined; ///< coordinate units

    /// An undefined point.
    PNT_2D() = default;

    /// The point of two coordinates.
    PNT_2D(double dX, double dY) : x(dX), y(dY) {}

    /// @return the squared distance to another point.
    double dist_square(const PNT_2D& pnt) const noexcept
    {
        const double dx = pnt.x - x;
        const double dy = pnt.y - y;
        return dx * dx + dy * dy;
    }
};

} // namespace zor::geom

#endif
