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
int CalcSide(const CContourEdge& edge, const PNT_2D& pnt) noexcept
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
bool IsCrossedAlongX(const CContourEdge& edge, const PNT_2D& from, double dToX) noexcept
{
    if (!IsAcross(edge.a.y, edge.b.y, from.y) || std::max(edge.a.x, edge.b.x) < std::min(from.x, dToX) ||
        std::min(edge.a.x, edge.b.x) > std::max(from.x, dToX))
        return false;
    return CalcSide(edge, from) != CalcSide(edge, PNT_2D(dToX, from.y));
}

/// The same on the vertical way.
bool IsCrossedAlongY(const CContourEdge& edge, const PNT_2D& from, double dToY) noexcept
{
    if (!IsAcross(edge.a.x, edge.b.x, from.x) || std::max(edge.a.y, edge.b.y) < std::min(from.y, dToY) ||
        std::min(edge.a.y, edge.b.y) > std::max(from.y, dToY))
        return false;
    return CalcSide(edge, from) != CalcSide(edge, PNT_2D(from.x, dToY));
}

bool IsOnEdge(const CContourEdge& edge, const PNT_2D& pnt) noexcept
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
CEdgeTracker::CFrame CEdgeTracker::EnterRoot(const CContourSquare& square)
{
    const PNT_2D& place = square.centre;
    m_vecStack.clear();
    bool bInside = false;
    for (const CContourEdge& edge : m_vecEdges)
    {
        m_vecStack.push_back(static_cast<std::uint32_t>(m_vecStack.size()));
        const bool bUp = edge.b.y > edge.a.y;
        if (IsAcross(edge.a.y, edge.b.y, place.y) && CalcSide(edge, place) == (bUp ? -1 : 1))
            bInside = !bInside;
    }
    return {0, m_vecStack.size(), place, bInside};
}

bool CEdgeTracker::IsCrossedOddly(const CFrame& frame, const PNT_2D& pnt) const noexcept
{
    const PNT_2D corner(pnt.x, frame.place.y);
    bool bOdd = false;
    for (std::size_t i = frame.nBegin; i < frame.nEnd; ++i)
    {
        const CContourEdge& edge = m_vecEdges[m_vecStack[i]];
        bOdd ^= IsCrossedAlongX(edge, frame.place, pnt.x);
        bOdd ^= IsCrossedAlongY(edge, corner, pnt.y);
    }
    return bOdd;
}

CEdgeTracker::CFrame CEdgeTracker::Enter(const CFrame& frame, const CContourSquare& square)
{
    const bool bInside = frame.bInside != IsCrossedOddly(frame, square.centre);
    const std::size_t nBegin = m_vecStack.size();
    for (std::size_t i = frame.nBegin; i < frame.nEnd; ++i)
    {
        const std::uint32_t nEdge = m_vecStack[i];
        if (m_vecEdges[nEdge].MayMeet(square.around))
            m_vecStack.push_back(nEdge);
    }
    return {nBegin, m_vecStack.size(), square.centre, bInside};
}

bool CEdgeTracker::IsInsideOrOn(const CFrame& frame, const PNT_2D& pnt) const noexcept
{
    return AnyEdge(frame, [&](const CContourEdge& edge) { return IsOnEdge(edge, pnt); }) ||
           frame.bInside != IsCrossedOddly(frame, pnt);
}
