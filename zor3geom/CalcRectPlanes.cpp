#include <zor3geom/CalcRectPlanes.h>

#include <cmath>

namespace zor::geom
{
namespace
{

/// The plane through p and q whose normal points away from `inner`.
PLANE_3D CalcEdgePlane(const PNT_3D& p, const PNT_3D& q, const PNT_3D& inner)
{
    const double dLength = std::hypot(q.x - p.x, q.y - p.y);
    if (!(dLength > 0.0))
        return {};
    const double a = (q.y - p.y) / dLength;
    const double b = -(q.x - p.x) / dLength;
    const double d = -(a * p.x + b * p.y);
    return a * inner.x + b * inner.y + d > 0.0 ? PLANE_3D(-a, -b, 0.0, -d) : PLANE_3D(a, b, 0.0, d);
}

} // namespace

void CalcRectPlanes(const PNT_3D& a, const PNT_3D& b, const PNT_3D& c, const PNT_3D& d,
                    std::vector<PLANE_3D>& vecPlanes)
{
    const PNT_3D centre((a.x + c.x) / 2.0, (a.y + c.y) / 2.0, 0.0);
    vecPlanes = {CalcEdgePlane(a, b, centre), CalcEdgePlane(b, c, centre), CalcEdgePlane(c, d, centre),
                 CalcEdgePlane(d, a, centre)};
}

} // namespace zor::geom
