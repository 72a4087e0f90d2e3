#ifndef ZOR3GEOM_ADDORIENTATION_H
#define ZOR3GEOM_ADDORIENTATION_H

#include <zor3geom/PNT_2D.h>

namespace zor::geom
{

/// Adds the products whose sum is above 0 where p lies to the left of a to b, to a sum that rounds nothing.
/// No difference is taken beforehand: that would round.
template <class TSum>
void AddOrientation(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p, TSum& sum) noexcept
{
    sum.AddProduct(b.x, p.y);
    sum.AddProduct(-b.x, a.y);
    sum.AddProduct(-a.x, p.y);
    sum.AddProduct(-b.y, p.x);
    sum.AddProduct(b.y, a.x);
    sum.AddProduct(a.y, p.x);
}

} // namespace zor::geom

#endif
