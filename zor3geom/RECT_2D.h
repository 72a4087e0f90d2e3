#ifndef ZOR3GEOM_RECT_2D_H
#define ZOR3GEOM_RECT_2D_H

#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Axis-parallel rectangle in plan view; undefined until set. Not put in order: a minimum above its
/// maximum stays so.
struct RECT_2D
{
    double xmin = c_dUndefined;
    double ymin = c_dUndefined;
    double xmax = c_dUndefined;
    double ymax = c_dUndefined;

    RECT_2D() = default;
    RECT_2D(double dXMin, double dYMin, double dXMax, double dYMax)
        : xmin(dXMin), ymin(dYMin), xmax(dXMax), ymax(dYMax)
    {
    }
};

} // namespace zor::geom

#endif
