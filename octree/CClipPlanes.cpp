#include <octree/CClipPlanes.h>

#include <formats/Compact.h>
#include <formats/MaxDepth.h>

#include <cmath>

CClipPlane::CClipPlane(const zor::geom::PLANE_3D& plane, float fOrgX, float fOrgY, float fOrgZ) noexcept
    : m_plane(plane)
{
    const double dAtOrigin = plane.a * static_cast<double>(fOrgX) + plane.b * static_cast<double>(fOrgY) +
                             plane.c * static_cast<double>(fOrgZ);
    m_plane.d = (plane.d + dAtOrigin) * c_dCompactScale;

    constexpr double c_dReach = 17179869184.0; // 2^34: no corner lies farther out on any axis
    const double dBound = (std::fabs(m_plane.a) + std::fabs(m_plane.b) + std::fabs(m_plane.c)) * c_dReach +
                          std::fabs(m_plane.d);
    m_bMonotone = std::isfinite(dBound * 4.0);
}

// Rounded sums and products grow with their arguments: the value at the farthest corner along the normal
// is the largest of the eight as computed, the value at the opposite corner the smallest.
enumSide CClipPlane::ClassifyCube(const COcTreeCube& cube) const noexcept
{
    if (!m_bMonotone)
        return ClassifyByAllCorners(cube);
    const std::int64_t nHalf = cube.GetHalfEdge();
    const std::int64_t nX = m_plane.a < 0.0 ? -nHalf : nHalf;
    const std::int64_t nY = m_plane.b < 0.0 ? -nHalf : nHalf;
    const std::int64_t nZ = m_plane.c < 0.0 ? -nHalf : nHalf;
    if (!IsInFrontOf(static_cast<double>(cube.nX + nX), static_cast<double>(cube.nY + nY),
                     static_cast<double>(cube.nZ + nZ)))
        return enumSide::Inside;
    if (IsInFrontOf(static_cast<double>(cube.nX - nX), static_cast<double>(cube.nY - nY),
                    static_cast<double>(cube.nZ - nZ)))
        return enumSide::Outside;
    return enumSide::Straddling;
}

enumSide CClipPlane::ClassifyByAllCorners(const COcTreeCube& cube) const noexcept
{
    const std::int64_t nHalf = cube.GetHalfEdge();
    int nNumInFront = 0;
    for (int k = 0; k < 8; ++k)
    {
        const double x = static_cast<double>(cube.nX + ((k & 4) != 0 ? nHalf : -nHalf));
        const double y = static_cast<double>(cube.nY + ((k & 2) != 0 ? nHalf : -nHalf));
        const double z = static_cast<double>(cube.nZ + ((k & 1) != 0 ? nHalf : -nHalf));
        nNumInFront += IsInFrontOf(x, y, z) ? 1 : 0;
    }
    if (nNumInFront == 0)
        return enumSide::Inside;
    return nNumInFront == 8 ? enumSide::Outside : enumSide::Straddling;
}

CClipPlanes::CClipPlanes(const std::vector<zor::geom::PLANE_3D>& vecPlanes, float fOrgX, float fOrgY,
                         float fOrgZ)
{
    m_vecPlanes.reserve(vecPlanes.size());
    // Room for all planes and, L8, at the most all of them again for every level of the tree and its leaves.
    m_vecStack.reserve(vecPlanes.size() * (c_nMaxDepth + 3));
    for (const zor::geom::PLANE_3D& plane : vecPlanes)
    {
        m_vecStack.push_back(static_cast<std::uint32_t>(m_vecPlanes.size()));
        m_vecPlanes.emplace_back(plane, fOrgX, fOrgY, fOrgZ);
    }
}

CStraddling::CStraddling(CClipPlanes& stack, CPlaneRange planes, const COcTreeCube& cube)
    : m_stack(stack), m_nBegin(stack.m_vecStack.size())
{
    for (std::size_t i = planes.nBegin; i < planes.nEnd; ++i)
    {
        const std::uint32_t nPlane = stack.m_vecStack[i];
        const enumSide eSide = stack.m_vecPlanes[nPlane].ClassifyCube(cube);
        if (eSide == enumSide::Outside)
        {
            m_bOutside = true;
            return;
        }
        if (eSide == enumSide::Straddling)
            stack.m_vecStack.push_back(nPlane);
    }
}
