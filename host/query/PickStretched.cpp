#include <host/query/PickStretched.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

constexpr double c_dMaxCoord = 1e150; // further out no distance is squared without overflow
constexpr double c_dSlack = 1e-6;     // of the pyramid's opening: the cone alone decides

double Dot(const PNT_3D& a, const PNT_3D& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

PNT_3D Cross(const PNT_3D& a, const PNT_3D& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

PNT_3D Multiply(const PNT_3D& a, const PNT_3D& b)
{
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

PNT_3D CalcUnit(const PNT_3D& pnt)
{
    const double dLargest = std::max({std::abs(pnt.x), std::abs(pnt.y), std::abs(pnt.z)});
    const PNT_3D scaled(pnt.x / dLargest, pnt.y / dLargest, pnt.z / dLargest);
    const double dLength = std::sqrt(Dot(scaled, scaled));
    return {scaled.x / dLength, scaled.y / dLength, scaled.z / dLength};
}

bool IsUsable(const PNT_3D& pnt)
{
    return std::abs(pnt.x) <= c_dMaxCoord && std::abs(pnt.y) <= c_dMaxCoord && std::abs(pnt.z) <= c_dMaxCoord;
}

bool IsUsable(const CStretchedCone& cone)
{
    const PNT_3D& stretch = cone.stretch;
    return IsUsable(cone.from) && IsUsable(cone.direction) && IsUsable(stretch) && cone.dTan >= 0.0 &&
           std::isfinite(cone.dTan) && Dot(cone.direction, cone.direction) > 0.0 && stretch.x > 0.0 &&
           stretch.y > 0.0 && stretch.z > 0.0;
}

/// The plane through the ray's beginning, in coordinate units.
PLANE_3D MakePlane(const CStretchedCone& cone, const PNT_3D& normal)
{
    const PNT_3D n = Multiply(normal, cone.stretch);
    return {n.x, n.y, n.z, -Dot(normal, cone.from)};
}

/// A pyramid that holds the cone, behind whose tip nothing is.
std::vector<PLANE_3D> MakePyramid(const CStretchedCone& cone, const PNT_3D& dir)
{
    const double dSteep = std::min({std::abs(dir.x), std::abs(dir.y), std::abs(dir.z)});
    const PNT_3D other(std::abs(dir.x) == dSteep, std::abs(dir.x) != dSteep && std::abs(dir.y) == dSteep,
                       std::abs(dir.x) != dSteep && std::abs(dir.y) != dSteep);
    const PNT_3D side = CalcUnit(Cross(dir, other));
    const PNT_3D up = Cross(dir, side);
    const double dTan = cone.dTan * (1.0 + c_dSlack) + c_dSlack * c_dSlack;
    std::vector<PLANE_3D> planes = {MakePlane(cone, {-dir.x, -dir.y, -dir.z})};
    for (const PNT_3D& axis : {side, up})
        for (const double dSign : {1.0, -1.0})
            planes.push_back(MakePlane(cone, {dSign * axis.x - dTan * dir.x, dSign * axis.y - dTan * dir.y,
                                              dSign * axis.z - dTan * dir.z}));
    return planes;
}

} // namespace

int PickStretched(const CPntCld& cloud, const CStretchedCone& cone, const CQuery& query)
{
    if (!IsUsable(cone))
        return -1;
    const PNT_3D dir = CalcUnit(cone.direction);
    CQuery within = query;
    const std::vector<PLANE_3D> planes = MakePyramid(cone, dir);
    within.vecPlanes.insert(within.vecPlanes.end(), planes.begin(), planes.end());
    int nBest = -1;
    double dBest = 0.0;
    ForEachPnt(cloud, within,
               [&](const CCldCadPnt& pnt)
               {
                   const PNT_3D at = Multiply(pnt.m_pnt, cone.stretch);
                   const PNT_3D v(at.x - cone.from.x, at.y - cone.from.y, at.z - cone.from.z);
                   const double dAlong = Dot(v, dir);
                   const PNT_3D beside = Cross(v, dir);
                   const double dReach = cone.dTan * dAlong;
                   const bool bFirst =
                       nBest < 0 || dAlong < dBest || (dAlong == dBest && pnt.m_nIndex < nBest);
                   if (!(dAlong > 0.0) || Dot(beside, beside) > dReach * dReach || !bFirst ||
                       !query.IsInside(pnt.m_pnt))
                       return;
                   nBest = pnt.m_nIndex;
                   dBest = dAlong;
               });
    return nBest;
}

} // namespace zorcld
