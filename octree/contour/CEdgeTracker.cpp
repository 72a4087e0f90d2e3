#include <octree/contour/CEdgeTracker.h>

#include <octree/contour/EdgeCrossing.h>
#include <zor3geom/IsUsableRing.h>

using zor::geom::PNT_2D;

void CEdgeTracker::AddRing(const std::vector<PNT_2D>& ring)
{
    if (!zor::geom::IsUsableRing(ring))
        return;
    PNT_2D start = ring.back();
    for (const PNT_2D& end : ring)
    {
        if (start.x != end.x || start.y != end.y)
            m_vecEdges.push_back({start, end});
        start = end;
    }
}

CEdgeTracker::CFrame CEdgeTracker::EnterRoot(const CContourSquare& square)
{
    const PNT_2D& place = square.centre;
    m_vecStack.clear();
    bool bInside = false;
    for (const CContourEdge& edge : m_vecEdges)
    {
        m_vecStack.push_back(static_cast<std::uint32_t>(m_vecStack.size()));
        bInside ^= IsCrossedFromFarLeft(edge, place);
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
