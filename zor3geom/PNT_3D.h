#ifndef ZOR3GEOM_PNT_3D_H
#define ZOR3GEOM_PNT_3D_H

#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Point in space, coordinate units; undefined until set.
struct PNT_3D
{
    double x = c_dUndefined; ///< coordinate units
    double y = c_dUndefined; ///< coordinate units
    double z = c_dUndefined; ///< coordinate units, height

    /// An undefined point.
    PNT_3D() = default;

    /// The point of three coordinates.
    PNT_3D(double dX, double dY, double dZ) : x(dX), y(dY), z(dZ) {}
};

} // namespace zor::geom

#endif
