#ifndef ZOR3GEOM_RECT_3D_H
#define ZOR3GEOM_RECT_3D_H

#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Axis-parallel box, coordinate units; undefined until set.
struct RECT_3D
{
    double xmin = c_dUndefined; ///< lower limit
    double ymin = c_dUndefined; ///< lower limit
    double zmin = c_dUndefined; ///< lower limit
    double xmax = c_dUndefined; ///< upper limit
    double ymax = c_dUndefined; ///< upper limit
    double zmax = c_dUndefined; ///< upper limit

    /// An undefined box.
    RECT_3D() = default;

    /// The box of six limits, taken as they are.
    RECT_3D(double dXMin, double dYMin, double dZMin, double dXMax, double dYMax, double dZMax)
        : xmin(dXMin), ymin(dYMin), zmin(dZMin), xmax(dXMax), ymax(dYMax), zmax(dZMax)
    {
    }
};

} // namespace zor::geom

#endif
