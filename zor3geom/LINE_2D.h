#ifndef ZOR3GEOM_LINE_2D_H
#define ZOR3GEOM_LINE_2D_H

#include <zor0lang/Export.h>
#include <zor3geom/PNT_2D.h>

namespace zor::geom
{

/// Segment between two points in plan view; one of zero length is a point.
struct LINE_2D
{
    double x1 = c_dUndefined; ///< start
    double y1 = c_dUndefined; ///< start
    double x2 = c_dUndefined; ///< end
    double y2 = c_dUndefined; ///< end

    /// An undefined segment.
    LINE_2D() = default;

    /// The segment from (dX1, dY1) to (dX2, dY2).
    LINE_2D(double dX1, double dY1, double dX2, double dY2) : x1(dX1), y1(dY1), x2(dX2), y2(dY2) {}

    /// @return whether the segments have a point in common; touching at an end and lying on each other
    ///         count. A segment with a coordinate that is infinite or not a number meets nothing.
    ///
    /// Exact for whole numbers of up to 52 bits, and wherever the differences of coordinates are exact
    /// and their products neither overflow nor vanish. Symmetric, and the same with ends exchanged.
    ZOR_API bool intersect(const LINE_2D& line) const noexcept;
};

} // namespace zor::geom

#endif
