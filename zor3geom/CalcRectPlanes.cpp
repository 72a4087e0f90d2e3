#include <zor3geom/CalcRectPlanes.h>

#include <zor3geom/PNT_2D.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zor::geom
{
namespace
{

/// The plane with this normal through a corner.
PLANE_3D CalcPlane(const PNT_2D& normal, const PNT_3D& pnt)
{
    return {normal.x, normal.y, 0.0, -(normal.x * pnt.x + normal.y * pnt.y)};
}

/// The planes of a rectangle whose side ab is not the shorter one, in order ab, bc, cd, da. The direction of
/// ab gives all four: the direction of a side almost without length would be mere rounding, and opposite
/// planes must stay opposite.
std::array<PLANE_3D, 4> CalcPlanes(const PNT_3D& a, const PNT_3D& b, const PNT_3D& c, const PNT_3D& d)
{
    const double dLength = std::hypot(b.x - a.x, b.y - a.y);
    const PNT_2D along((b.x - a.x) / dLength, (b.y - a.y) / dLength);
    PNT_2D across(along.y, -along.x); // points away from cd
    if (across.x * (d.x - a.x) + across.y * (d.y - a.y) > 0.0)
        across = PNT_2D(-across.x, -across.y);
    return {CalcPlane(across, a), CalcPlane(along, b), CalcPlane(PNT_2D(-across.x, -across.y), c),
            CalcPlane(PNT_2D(-along.x, -along.y), d)};
}

} // namespace

void CalcRectPlanes(const PNT_3D& a, const PNT_3D& b, const PNT_3D& c, const PNT_3D& d,
                    std::vector<PLANE_3D>& vecPlanes)
{
    const double dSideAB = std::hypot(b.x - a.x, b.y - a.y);
    const double dSideBC = std::hypot(c.x - b.x, c.y - b.y);
    const double dLonger = std::max(dSideAB, dSideBC);
    if (!(dLonger > 0.0 && std::isfinite(dSideAB) && std::isfinite(dSideBC)))
    {
        vecPlanes.assign(4, PLANE_3D(0.0, 0.0, 0.0, 1.0));
        return;
    }
    if (dSideAB >= dSideBC)
    {
        const auto planes = CalcPlanes(a, b, c, d);
        vecPlanes.assign(planes.begin(), planes.end());
        return;
    }
    const auto planes = CalcPlanes(b, c, d, a);
    vecPlanes = {planes[3], planes[0], planes[1], planes[2]};
}

} // namespace zor::geom
