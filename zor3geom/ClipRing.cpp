#include <zor3geom/ClipRing.h>

#include <algorithm>
#include <utility>

namespace zor::geom
{
namespace
{

/// Cuts away what lies beyond one side.
///
/// @param isInside  tells of a corner; those on the side are inside.
/// @param cut       gives the place where an edge from inside to outside, or back, meets the side.
template <class IsInside, class Cut>
void ClipSide(std::vector<PNT_2D>& ring, IsInside isInside, Cut cut)
{
    if (std::all_of(ring.begin(), ring.end(), isInside))
        return;
    std::vector<PNT_2D> vecLeft;
    vecLeft.reserve(ring.size());
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        const PNT_2D& from = i == 0 ? ring.back() : ring[i - 1];
        const PNT_2D& to = ring[i];
        const bool bTo = isInside(to);
        if (isInside(from) != bTo)
            vecLeft.push_back(cut(from, to));
        if (bTo)
            vecLeft.push_back(to);
    }
    ring = std::move(vecLeft);
}

PNT_2D CutAtX(const PNT_2D& a, const PNT_2D& b, double x) noexcept
{
    return {x, a.y + (b.y - a.y) * ((x - a.x) / (b.x - a.x))};
}

PNT_2D CutAtY(const PNT_2D& a, const PNT_2D& b, double y) noexcept
{
    return {a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y)), y};
}

} // namespace

void ClipRing(std::vector<PNT_2D>& ring, const RECT_2D& box)
{
    ClipSide(
        ring, [&](const PNT_2D& pnt) { return pnt.x >= box.xmin; },
        [&](const PNT_2D& a, const PNT_2D& b) { return CutAtX(a, b, box.xmin); });
    ClipSide(
        ring, [&](const PNT_2D& pnt) { return pnt.x <= box.xmax; },
        [&](const PNT_2D& a, const PNT_2D& b) { return CutAtX(a, b, box.xmax); });
    ClipSide(
        ring, [&](const PNT_2D& pnt) { return pnt.y >= box.ymin; },
        [&](const PNT_2D& a, const PNT_2D& b) { return CutAtY(a, b, box.ymin); });
    ClipSide(
        ring, [&](const PNT_2D& pnt) { return pnt.y <= box.ymax; },
        [&](const PNT_2D& a, const PNT_2D& b) { return CutAtY(a, b, box.ymax); });
}

} // namespace zor::geom
