#ifndef ZOR3GEOM_RECT_3D_H
#define ZOR3GEOM_RECT_3D_H

#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Axis-parallel box, coordinate units; undefined until set.
struct RECT_3D
{
    double xmin = c_dUndefined;
    double ymin = c_dUndefined;
    double zmin = c_dUndefined;
    double xmax = c_dUndefined;
    double ymax = c_dUndefined;
    double zmax = c_dUndefined;

    RECT_3D() = default;
    RECT_3D(double dXMin, double dYMin, double dZMin, double dXMax, double dYMax, double dZMax)
        : xmin(dXMin), ymin(dYMin), zmin(dZMin), xmax(dXMax), ymax(dYMax), zmax(dZMax)
    {
    }
};

} // namespace zor::geom

#endif
