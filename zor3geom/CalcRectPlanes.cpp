#include <zor3geom/CalcRectPlanes.h>

#include <zor3geom/PNT_2D.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace zor::geom
{
namespace
{

/// A side of a rectangle: where it begins, its direction, of length 1, and its length.
struct CSide
{
    PNT_3D start;
    PNT_2D along;
    double dLength;
};

using TSides = std::array<CSide, 4>;

CSide MakeSide(const PNT_3D& from, const PNT_3D& to)
{
    const PNT_2D way(to.x - from.x, to.y - from.y);
    const double dLength = std::hypot(way.x, way.y);
    return {from, PNT_2D(way.x / dLength, way.y / dLength), dLength};
}

/// Do the corners follow each other with the rectangle on their left? It is on the same side of all its
/// sides; the longest tells best.
bool IsLeft(const TSides& sides, std::size_t nLongest)
{
    const CSide& side = sides[nLongest];
    const PNT_3D& before = sides[(nLongest + 3) % 4].start;
    return side.along.x * (before.y - side.start.y) - side.along.y * (before.x - side.start.x) >= 0.0;
}

/// Is a side mere rounding, or near it? Its corners then tell no direction.
bool IsBlurred(const TSides& sides)
{
    constexpr double c_dBlur = 1e6 * std::numeric_limits<double>::epsilon();
    double dLargest = 0.0;
    double dShortest = sides[0].dLength;
    for (const CSide& side : sides)
    {
        dLargest = std::max({dLargest, std::fabs(side.start.x), std::fabs(side.start.y)});
        dShortest = std::min(dShortest, side.dLength);
    }
    return !(dShortest > c_dBlur * dLargest);
}

/// Gives all sides the direction of the longest, a quarter turn a corner: opposite sides stay opposite.
void SquareUp(TSides& sides, std::size_t nLongest, bool bLeft)
{
    for (std::size_t n = 1; n < sides.size(); ++n)
    {
        const PNT_2D& before = sides[(nLongest + n - 1) % 4].along;
        sides[(nLongest + n) % 4].along = bLeft ? PNT_2D(-before.y, before.x) : PNT_2D(before.y, -before.x);
    }
}

/// The plane through a side, its normal pointing to the right of it, or to the left.
PLANE_3D CalcPlane(const CSide& side, bool bRight)
{
    const double dSign = bRight ? 1.0 : -1.0;
    const PNT_2D normal(dSign * side.along.y, -dSign * side.along.x);
    return {normal.x, normal.y, 0.0, -(normal.x * side.start.x + normal.y * side.start.y)};
}

} // namespace

void CalcRectPlanes(const PNT_3D& a, const PNT_3D& b, const PNT_3D& c, const PNT_3D& d,
                    std::vector<PLANE_3D>& vecPlanes)
{
    TSides sides{MakeSide(a, b), MakeSide(b, c), MakeSide(c, d), MakeSide(d, a)};
    const auto isShorter = [](const CSide& one, const CSide& other) { return one.dLength < other.dLength; };
    const auto longest = std::max_element(sides.begin(), sides.end(), isShorter);
    const bool bFinite = std::all_of(sides.begin(), sides.end(),
                                     [](const CSide& side) { return std::isfinite(side.dLength); });
    if (!bFinite || !(longest->dLength > 0.0))
    {
        vecPlanes.assign(4, PLANE_3D(0.0, 0.0, 0.0, 1.0));
        return;
    }
    const std::size_t nLongest = static_cast<std::size_t>(longest - sides.begin());
    const bool bLeft = IsLeft(sides, nLongest);
    if (IsBlurred(sides))
        SquareUp(sides, nLongest, bLeft);
    vecPlanes.clear();
    for (const CSide& side : sides)
        vecPlanes.push_back(CalcPlane(side, bLeft));
}

} // namespace zor::geom
