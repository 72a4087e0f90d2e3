#ifndef OCTREE_CCLIPPLANES_H
#define OCTREE_CCLIPPLANES_H

#include <octree/COcTreeCube.h>
#include <zor3geom/PLANE_3D.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// How a cube lies to a plane, or to all planes of a query.
enum class enumSide
{
    Inside,     ///< no corner is in front
    Straddling, ///< some corners are in front
    Outside     ///< all corners are in front
};

/// A plane in the frame of a store: compact units, relative to the store's origin.
class CClipPlane
{
public:
    CClipPlane(const zor::geom::PLANE_3D& plane, float fOrgX, float fOrgY, float fOrgZ) noexcept;

    /// @return whether a point lies in front of the plane, which keeps it away. Compact units.
    bool IsInFrontOf(double x, double y, double z) const noexcept { return m_plane.IsInFrontOf(x, y, z); }

    /// @return how the cube lies to the plane, as its eight corners tell.
    enumSide ClassifyCube(const COcTreeCube& cube) const noexcept;

private:
    enumSide ClassifyByAllCorners(const COcTreeCube& cube) const noexcept;

    zor::geom::PLANE_3D m_plane;
    bool m_bMonotone; // no product or sum can overflow, so two corners give the answer of all eight
};

/// A part of the stack of planes: those that the current cube still has to be tested against.
struct CPlaneRange
{
    std::size_t nBegin;
    std::size_t nEnd;

    bool IsEmpty() const noexcept { return nBegin == nEnd; }
};

/// The planes of one clipped query, and the stack on which a walk narrows them down.
///
/// Each node pushes the planes that straddle its cube for its children and pops them on return. The
/// stack keeps its memory, so that a walk does not allocate per node.
class CClipPlanes
{
public:
    CClipPlanes(const std::vector<zor::geom::PLANE_3D>& vecPlanes, float fOrgX, float fOrgY, float fOrgZ);

    /// All planes, in the caller's order.
    CPlaneRange GetAll() const noexcept { return {0, m_vecPlanes.size()}; }

    /// @return whether a point is in front of one of the planes, tested in order. Compact units.
    template <class T>
    bool IsOutside(const T& pnt, CPlaneRange planes) const noexcept
    {
        const double x = static_cast<double>(pnt.m_nX);
        const double y = static_cast<double>(pnt.m_nY);
        const double z = static_cast<double>(pnt.m_nZ);
        for (std::size_t i = planes.nBegin; i < planes.nEnd; ++i)
            if (m_vecPlanes[m_vecStack[i]].IsInFrontOf(x, y, z))
                return true;
        return false;
    }

private:
    friend class CStraddling;

    std::vector<CClipPlane> m_vecPlanes;
    std::vector<std::uint32_t> m_vecStack; // indices of planes; the first ones are all of them, in order
};

/// The planes that straddle one cube, on the stack as long as this object lives.
class CStraddling
{
public:
    CStraddling(CClipPlanes& stack, CPlaneRange planes, const COcTreeCube& cube);
    ~CStraddling() { m_stack.m_vecStack.resize(m_nBegin); }

    CStraddling(const CStraddling&) = delete;
    CStraddling& operator=(const CStraddling&) = delete;

    /// @return whether the cube lies wholly in front of one of the planes.
    bool IsOutside() const noexcept { return m_bOutside; }

    /// The planes left for what lies in the cube; empty when it lies inside all of them.
    CPlaneRange GetRange() const noexcept { return {m_nBegin, m_stack.m_vecStack.size()}; }

private:
    CClipPlanes& m_stack;
    std::size_t m_nBegin;
    bool m_bOutside = false;
};

#endif
