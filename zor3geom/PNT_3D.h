#ifndef ZOR3GEOM_PNT_3D_H
#define ZOR3GEOM_PNT_3D_H

#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Point in space, coordinate units; undefined until set.
struct PNT_3D
{
    double x = c_dUndefined;
    double y = c_dUndefined;
    double z = c_dUndefined;

    PNT_3D() = default;
    PNT_3D(double dX, double dY, double dZ) : x(dX), y(dY), z(dZ) {}
};

} // namespace zor::geom

#endif
