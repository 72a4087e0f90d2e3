#include <octree/contour/CContourEdge.h>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double c_dSurelyFar = 0.34; // its square is above the squared distance that counts as near

/// Does a place on a side from dMin to dMax lie far from both its ends?
bool IsFarFromEnds(double d, double dMin, double dMax) noexcept
{
    return d > dMin + c_dSurelyFar && d < dMax - c_dSurelyFar;
}

/// Does the edge a → b cross the line at `d` of its first coordinate, far from the ends of the side there?
bool CrossesSide(double dA, double dB, double dOtherA, double dOtherB, double d, double dMin,
                 double dMax) noexcept
{
    if (!((dA < d && dB > d) || (dA > d && dB < d)))
        return false;
    return IsFarFromEnds(dOtherA + (dOtherB - dOtherA) * ((d - dA) / (dB - dA)), dMin, dMax);
}

bool CrossesASide(const CContourEdge& e, const CContourEdge::TBox& box) noexcept
{
    return CrossesSide(e.a.x, e.b.x, e.a.y, e.b.y, box.xmin, box.ymin, box.ymax) ||
           CrossesSide(e.a.x, e.b.x, e.a.y, e.b.y, box.xmax, box.ymin, box.ymax) ||
           CrossesSide(e.a.y, e.b.y, e.a.x, e.b.x, box.ymin, box.xmin, box.xmax) ||
           CrossesSide(e.a.y, e.b.y, e.a.x, e.b.x, box.ymax, box.xmin, box.xmax);
}

bool IsInAndFarFromCorners(const CContourEdge::PNT_2D& pnt, const CContourEdge::TBox& box) noexcept
{
    const bool bIn = pnt.x > box.xmin && pnt.x < box.xmax && pnt.y > box.ymin && pnt.y < box.ymax;
    return bIn && (IsFarFromEnds(pnt.x, box.xmin, box.xmax) || IsFarFromEnds(pnt.y, box.ymin, box.ymax));
}

} // namespace

// Boxes first, then the line against the box's corners: all on one side, by more than rounding can err.
bool CContourEdge::MayMeet(const TBox& box) const noexcept
{
    if (std::max(a.x, b.x) < box.xmin || std::min(a.x, b.x) > box.xmax || std::max(a.y, b.y) < box.ymin ||
        std::min(a.y, b.y) > box.ymax)
        return false;
    const double dX = b.x - a.x;
    const double dY = b.y - a.y;
    const double dLow = dX * ((dX > 0.0 ? box.ymin : box.ymax) - a.y);
    const double dHigh = dX * ((dX > 0.0 ? box.ymax : box.ymin) - a.y);
    const double dLow2 = dY * ((dY > 0.0 ? box.xmax : box.xmin) - a.x);
    const double dHigh2 = dY * ((dY > 0.0 ? box.xmin : box.xmax) - a.x);
    constexpr double c_dVanished = 1e-300; // far above what a product loses where it comes near to nothing
    const double dError =
        1e-14 * (std::fabs(dLow) + std::fabs(dHigh) + std::fabs(dLow2) + std::fabs(dHigh2)) + c_dVanished;
    return !(dLow - dLow2 > dError || dHigh - dHigh2 < -dError);
}

bool CContourEdge::CutsFarFromCorners(const TBox& box) const noexcept
{
    return CrossesASide(*this, box) || IsInAndFarFromCorners(a, box);
}

bool CContourEdge::PassesClosely(const PNT_2D& pnt) const noexcept
{
    constexpr double c_dMargin = 1e-12; // of the largest number that takes part; roundings come to 1e-15
    const double dX = b.x - a.x;
    const double dY = b.y - a.y;
    const double dLargest = std::max({std::fabs(a.x), std::fabs(a.y), std::fabs(b.x), std::fabs(b.y)});
    const double dAcross = dX * (pnt.y - a.y) - dY * (pnt.x - a.x);
    return !(std::fabs(dAcross) > c_dMargin * dLargest * (std::fabs(dX) + std::fabs(dY)));
}
