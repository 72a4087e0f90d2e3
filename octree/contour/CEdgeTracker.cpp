#include <octree/contour/CEdgeTracker.h>

#include <zor3geom/CalcOrientation.h>
#include <zor3geom/IsFiniteRing.h>

#include <algorithm>
#include <cmath>

using zor::geom::CalcOrientation;
using zor::geom::PNT_2D;

namespace
{

/// Side of a place, moved up and then right by less than any number, to the directed edge: 1 left, -1 right.
int CalcSide(const CEdgeTracker::Edge& edge, const PNT_2D& pnt) noexcept
{
    const int nSide = CalcOrientation(edge.a, edge.b, pnt);
    if (nSide != 0)
        return nSide;
    if (edge.b.x != edge.a.x)
        return edge.b.x > edge.a.x ? 1 : -1; // up is left of an edge that runs right
    return edge.b.y > edge.a.y ? -1 : 1;     // right is right of an edge that runs up
}

/// Does the moved place's horizontal line meet the edge?
bool IsAcross(double dA, double dB, double d) noexcept
{
    return (dA <= d) != (dB <= d);
}

/// Is the edge crossed on the horizontal way from one moved place to another at the same height?
bool IsCrossedAlongX(const CEdgeTracker::Edge& edge, const PNT_2D& from, double dToX) noexcept
{
    if (!IsAcross(edge.a.y, edge.b.y, from.y) || std::max(edge.a.x, edge.b.x) < std::min(from.x, dToX) ||
        std::min(edge.a.x, edge.b.x) > std::max(from.x, dToX))
        return false;
    return CalcSide(edge, from) != CalcSide(edge, PNT_2D(dToX, from.y));
}

/// The same on the vertical way.
bool IsCrossedAlongY(const CEdgeTracker::Edge& edge, const PNT_2D& from, double dToY) noexcept
{
    if (!IsAcross(edge.a.x, edge.b.x, from.x) || std::max(edge.a.y, edge.b.y) < std::min(from.y, dToY) ||
        std::min(edge.a.y, edge.b.y) > std::max(from.y, dToY))
        return false;
    return CalcSide(edge, from) != CalcSide(edge, PNT_2D(from.x, dToY));
}

bool IsOnEdge(const CEdgeTracker::Edge& edge, const PNT_2D& pnt) noexcept
{
    return pnt.x >= std::min(edge.a.x, edge.b.x) && pnt.x <= std::max(edge.a.x, edge.b.x) &&
           pnt.y >= std::min(edge.a.y, edge.b.y) && pnt.y <= std::max(edge.a.y, edge.b.y) &&
           CalcOrientation(edge.a, edge.b, pnt) == 0;
}

} // namespace

void CEdgeTracker::AddRing(const std::vector<PNT_2D>& ring)
{
    if (ring.size() < 3 || !zor::geom::IsFiniteRing(ring))
        return;
    PNT_2D start = ring.back();
    for (const PNT_2D& end : ring)
    {
        if (start.x != end.x || start.y != end.y)
            m_vecEdges.push_back({start, end});
        start = end;
    }
}

// What lies left of a place decides: the edges between it and a place far out on the left.
CEdgeTracker::Frame CEdgeTracker::EnterRoot(const PNT_2D& place)
{
    m_vecStack.clear();
    bool bInside = false;
    for (const Edge& edge : m_vecEdges)
    {
        m_vecStack.push_back(static_cast<std::uint32_t>(m_vecStack.size()));
        const bool bUp = edge.b.y > edge.a.y;
        if (IsAcross(edge.a.y, edge.b.y, place.y) && CalcSide(edge, place) == (bUp ? -1 : 1))
            bInside = !bInside;
    }
    return {0, m_vecStack.size(), place, bInside};
}

bool CEdgeTracker::IsCrossedOddly(const Frame& frame, const PNT_2D& pnt) const noexcept
{
    const PNT_2D corner(pnt.x, frame.m_place.y);
    bool bOdd = false;
    for (std::size_t i = frame.m_nBegin; i < frame.m_nEnd; ++i)
    {
        const Edge& edge = m_vecEdges[m_vecStack[i]];
        bOdd ^= IsCrossedAlongX(edge, frame.m_place, pnt.x);
        bOdd ^= IsCrossedAlongY(edge, corner, pnt.y);
    }
    return bOdd;
}

CEdgeTracker::Frame CEdgeTracker::Enter(const Frame& frame, const PNT_2D& place, const CPlanBox& box)
{
    const bool bInside = frame.m_bInside != IsCrossedOddly(frame, place);
    const std::size_t nBegin = m_vecStack.size();
    for (std::size_t i = frame.m_nBegin; i < frame.m_nEnd; ++i)
    {
        const std::uint32_t nEdge = m_vecStack[i];
        if (MayMeet(m_vecEdges[nEdge], box))
            m_vecStack.push_back(nEdge);
    }
    return {nBegin, m_vecStack.size(), place, bInside};
}

bool CEdgeTracker::IsInsideOrOn(const Frame& frame, const PNT_2D& pnt) const noexcept
{
    return AnyEdge(frame, [&](const Edge& edge) { return IsOnEdge(edge, pnt); }) ||
           frame.m_bInside != IsCrossedOddly(frame, pnt);
}

// Boxes first, then the line against the box's corners: all on one side, by more than rounding can err.
bool CEdgeTracker::MayMeet(const Edge& edge, const CPlanBox& box) noexcept
{
    if (std::max(edge.a.x, edge.b.x) < box.m_dXMin || std::min(edge.a.x, edge.b.x) > box.m_dXMax ||
        std::max(edge.a.y, edge.b.y) < box.m_dYMin || std::min(edge.a.y, edge.b.y) > box.m_dYMax)
        return false;
    const double dX = edge.b.x - edge.a.x;
    const double dY = edge.b.y - edge.a.y;
    const double dLow = dX * ((dX > 0.0 ? box.m_dYMin : box.m_dYMax) - edge.a.y);
    const double dHigh = dX * ((dX > 0.0 ? box.m_dYMax : box.m_dYMin) - edge.a.y);
    const double dLow2 = dY * ((dY > 0.0 ? box.m_dXMax : box.m_dXMin) - edge.a.x);
    const double dHigh2 = dY * ((dY > 0.0 ? box.m_dXMin : box.m_dXMax) - edge.a.x);
    const double dError = 1e-14 * (std::fabs(dLow) + std::fabs(dHigh) + std::fabs(dLow2) + std::fabs(dHigh2));
    return !(dLow - dLow2 > dError || dHigh - dHigh2 < -dError);
}
