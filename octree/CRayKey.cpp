#include <octree/CRayKey.h>

#include <cmath>

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

namespace
{

bool IsCoord(double d) noexcept
{
    return std::fabs(d) <= CRayKey::c_dMaxCoord;
}

/// @return false for a direction that is none; `dir` is then of no use.
bool CalcUnit(const PNT_3D& direction, PNT_3D& dir) noexcept
{
    if (!std::isfinite(direction.x) || !std::isfinite(direction.y) || !std::isfinite(direction.z))
        return false;
    const double dLargest =
        std::max({std::fabs(direction.x), std::fabs(direction.y), std::fabs(direction.z)});
    if (dLargest == 0.0)
        return false;
    const PNT_3D scaled(direction.x / dLargest, direction.y / dLargest, direction.z / dLargest);
    const double dLength = std::sqrt(scaled.x * scaled.x + scaled.y * scaled.y + scaled.z * scaled.z);
    dir = PNT_3D(scaled.x / dLength, scaled.y / dLength, scaled.z / dLength);
    return true;
}

/// @return whether no product or sum can overflow, so that values of the plane grow with the coordinates as
///         computed. A coordinate of a cloud is a float and less than 2^18.
bool IsMonotone(const PLANE_3D& plane) noexcept
{
    constexpr double c_dReach = 4e38;
    const double dBound =
        (std::fabs(plane.a) + std::fabs(plane.b) + std::fabs(plane.c)) * c_dReach + std::fabs(plane.d);
    return std::isfinite(dBound * 4.0);
}

/// @return whether all of the box is in front of the plane, as `IsInFrontOf` would say of each of its places.
bool IsBoxInFrontOf(const PLANE_3D& plane, const CCoordBox& box) noexcept
{
    return plane.IsInFrontOf(plane.a < 0.0 ? box.x.dHi : box.x.dLo, plane.b < 0.0 ? box.y.dHi : box.y.dLo,
                             plane.c < 0.0 ? box.z.dHi : box.z.dLo);
}

} // namespace

CRayKey::CRayKey(const PNT_3D& from, const PNT_3D& direction, double dTan,
                 const std::vector<PLANE_3D>& planes)
    : m_from(from), m_dTan(dTan), m_bValid(IsCoord(from.x) && IsCoord(from.y) && IsCoord(from.z) &&
                                           CalcUnit(direction, m_dir) && dTan >= 0.0),
      m_planes(planes)
{
    for (const PLANE_3D& plane : planes)
        if (IsMonotone(plane))
            m_vecBoundingPlanes.push_back(plane);
}

bool CRayKey::IsWanted(const PNT_3D& pnt, double dKey) const noexcept
{
    if (!(dKey > 0.0))
        return false;
    const PNT_3D v(pnt.x - m_from.x, pnt.y - m_from.y, pnt.z - m_from.z);
    const double dX = v.y * m_dir.z - v.z * m_dir.y;
    const double dY = v.z * m_dir.x - v.x * m_dir.z;
    const double dZ = v.x * m_dir.y - v.y * m_dir.x;
    if (IsBesideCone(dX * dX + dY * dY + dZ * dZ, dKey))
        return false;
    for (const PLANE_3D& plane : m_planes)
        if (plane.IsInFrontOf(pnt.x, pnt.y, pnt.z))
            return false;
    return true;
}

// The same operations as for a point, in the same order: see CCoordRange.
bool CRayKey::CalcBound(const CCoordBox& box, double& dBound) const noexcept
{
    const CCoordRange x = box.x - m_from.x;
    const CCoordRange y = box.y - m_from.y;
    const CCoordRange z = box.z - m_from.z;
    const CCoordRange key = x * m_dir.x + y * m_dir.y + z * m_dir.z;
    if (!(key.dHi > 0.0))
        return false;
    const double dX = (y * m_dir.z - z * m_dir.y).GetMinSquare();
    const double dY = (z * m_dir.x - x * m_dir.z).GetMinSquare();
    const double dZ = (x * m_dir.y - y * m_dir.x).GetMinSquare();
    if (IsBesideCone(dX + dY + dZ, key.dHi))
        return false;
    for (const PLANE_3D& plane : m_vecBoundingPlanes)
        if (IsBoxInFrontOf(plane, box))
            return false;
    dBound = key.dLo;
    return true;
}
