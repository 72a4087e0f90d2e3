#ifndef ZOR3GEOM_RECT_2D_H
#define ZOR3GEOM_RECT_2D_H

#include <zor3geom/TPlanBox.h>
#include <zor3geom/Undefined.h>

namespace zor::geom
{

/// Axis-parallel rectangle in plan view, coordinate units; undefined until set.
struct RECT_2D : TPlanBox<double>
{
    /// An undefined rectangle.
    RECT_2D() : RECT_2D(c_dUndefined, c_dUndefined, c_dUndefined, c_dUndefined) {}

    /// The rectangle of four limits, taken as they are.
    RECT_2D(double dXMin, double dYMin, double dXMax, double dYMax)
        : TPlanBox<double>{dXMin, dYMin, dXMax, dYMax}
    {
    }
};

} // namespace zor::geom

#endif
