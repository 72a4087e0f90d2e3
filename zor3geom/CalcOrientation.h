#ifndef ZOR3GEOM_CALCORIENTATION_H
#define ZOR3GEOM_CALCORIENTATION_H

#include <zor3geom/PNT_2D.h>

namespace zor::geom
{

/// On which side of the directed line a → b does p lie?
///
/// Exact for all finite coordinates: the rounded value decides where its error bound allows (J. R. Shewchuk,
/// Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates, 1997), else the
/// products are summed without rounding.
///
/// @return 1 on the left, -1 on the right, 0 on the line; any of them for what is not finite.
int CalcOrientation(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p) noexcept;

} // namespace zor::geom

#endif
