#include <octree/contour/CPolygonTracker.h>

#include <octree/contour/EdgeCrossing.h>
#include <zor3geom/IsUsableRing.h>

using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;
using zor::geom::TPlanBox;

/// Puts the rings of one frame on its stack, in their order, and leaves out what the square is clear of.
class CPolygonTracker::CFrameMaker
{
public:
    CFrameMaker(CStack& stack, const TBox& box, const PNT_2D& place, std::size_t nStack)
        : m_stack(stack), m_nFirstEdge(stack.vecEdges.size()), m_nFirstPart(stack.vecParts.size()),
          m_nPolygon(m_nFirstPart)
    {
        m_frame.box = box;
        m_frame.place = place;
        m_frame.nStack = nStack;
        m_frame.nBegin = m_nFirstPart;
    }

    const TBox& GetBox() const noexcept { return m_frame.box; }

    /// Makes room for the edges of the next ring. @return where they go.
    std::uint32_t* BeginRing(std::size_t nMaxEdges)
    {
        m_nRingEdges = m_stack.vecEdges.size();
        m_stack.vecEdges.resize(m_nRingEdges + nMaxEdges);
        return m_stack.vecEdges.data() + m_nRingEdges;
    }

    /// @param pEnd     where its last edge ends.
    /// @param bInside  whether the frame's place lies in the ring.
    void EndRing(std::size_t nRing, bool bHole, bool bInside, const std::uint32_t* pEnd)
    {
        const std::size_t nEnd = static_cast<std::size_t>(pEnd - m_stack.vecEdges.data());
        m_stack.vecEdges.resize(nEnd);
        if (!bHole)
            EndPolygon();
        m_bInPolygon = bHole ? m_bInPolygon && !bInside : bInside;
        m_bEdges = m_bEdges || nEnd > m_nRingEdges;
        if (!bHole || bInside || nEnd > m_nRingEdges) // other holes have no say in this square
            m_stack.vecParts.push_back({nRing, m_nRingEdges, nEnd, bInside});
    }

    CFrame Finish()
    {
        EndPolygon();
        if (m_bInside)
        {
            m_stack.vecParts.resize(m_nFirstPart);
            m_stack.vecEdges.resize(m_nFirstEdge);
        }
        m_frame.nEnd = m_stack.vecParts.size();
        const bool bClear = m_frame.nEnd == m_frame.nBegin;
        m_frame.eSide = m_bInside ? enumSide::Inside : bClear ? enumSide::Outside : enumSide::Straddling;
        return m_frame;
    }

private:
    /// A polygon without an edge here holds the whole square or nothing of it.
    void EndPolygon()
    {
        if (!m_bEdges)
        {
            m_bInside = m_bInside || m_bInPolygon;
            m_stack.vecParts.resize(m_nPolygon);
        }
        m_nPolygon = m_stack.vecParts.size();
        m_bInPolygon = false;
        m_bEdges = false;
    }

    CStack& m_stack;
    CFrame m_frame;
    std::size_t m_nFirstEdge;
    std::size_t m_nFirstPart;
    std::size_t m_nPolygon;       // the first part of the polygon that is being put there
    std::size_t m_nRingEdges = 0; // the first edge of the ring
    bool m_bInPolygon = false;    // the polygon holds the place
    bool m_bEdges = false;        // it has edges here
    bool m_bInside = false;       // a polygon holds the whole square
};

/// Distributes the rings of a frame to the quarters of its square.
///
/// The frame's place lies in one of the quarters and is that one's place too. The places of the others are
/// next to it: beyond the cut in x, in y, in both. One pass over the edges tells who gets which and
/// which of these three ways each of them crosses.
class CPolygonTracker::CSplitter
{
public:
    CSplitter(CPolygonTracker& tracker, const CFrame& frame, const CCut& cut)
        : m_tracker(tracker), m_frame(frame), m_cut(cut), m_nHomeX(frame.place.x <= cut.dLowMaxX ? 0U : 2U),
          m_nHomeY(frame.place.y <= cut.dLowMaxY ? 0U : 1U),
          m_dOtherX(m_nHomeX == 0 ? cut.dHighMinX : cut.dLowMaxX),
          m_dOtherY(m_nHomeY == 0 ? cut.dHighMinY : cut.dLowMaxY), m_makers{MakeMaker(0), MakeMaker(1),
                                                                            MakeMaker(2), MakeMaker(3)}
    {
    }

    void SplitRing(const CPart& part);

    CFrame Finish(std::size_t nQuarter) { return m_makers[nQuarter].Finish(); }

private:
    /// Ways to the other places that were crossed oddly.
    struct CCrossings
    {
        bool bX = false;       ///< to the one beyond the cut in x
        bool bY = false;       ///< in y
        bool bBehindX = false; ///< from the first one on in y
    };

    CFrameMaker MakeMaker(std::size_t nQuarter);
    unsigned FindQuarters(const CContourEdge& edge) const noexcept;
    void Cross(const CContourEdge& edge, CCrossings& crossings) const noexcept;

    CPolygonTracker& m_tracker;
    const CFrame m_frame;
    const CCut m_cut;
    std::size_t m_nHomeX; // the frame's place lies in the quarter m_nHomeX + m_nHomeY
    std::size_t m_nHomeY;
    double m_dOtherX; // of the places beyond the cut
    double m_dOtherY;
    std::array<CFrameMaker, 4> m_makers;
};

CPolygonTracker::CFrameMaker CPolygonTracker::CSplitter::MakeMaker(std::size_t nQuarter)
{
    const bool bHighX = (nQuarter & 2U) != 0;
    const bool bHighY = (nQuarter & 1U) != 0;
    const TBox& box = m_frame.box;
    const TBox quarter{bHighX ? m_cut.dHighMinX : box.xmin, bHighY ? m_cut.dHighMinY : box.ymin,
                       bHighX ? box.xmax : m_cut.dLowMaxX, bHighY ? box.ymax : m_cut.dLowMaxY};
    const PNT_2D place((nQuarter & 2U) == m_nHomeX ? m_frame.place.x : m_dOtherX,
                       (nQuarter & 1U) == m_nHomeY ? m_frame.place.y : m_dOtherY);
    return CFrameMaker(m_tracker.m_stacks[nQuarter], quarter, place, nQuarter);
}

/// @return the quarters that an edge of the frame may meet, as a mask of bits. It meets the frame's
///         square, so where its box leaves but one quarter, that is where.
unsigned CPolygonTracker::CSplitter::FindQuarters(const CContourEdge& edge) const noexcept
{
    const unsigned nInX = (std::min(edge.a.x, edge.b.x) <= m_cut.dLowMaxX ? 3U : 0U) |
                          (std::max(edge.a.x, edge.b.x) >= m_cut.dHighMinX ? 12U : 0U);
    const unsigned nInY = (std::min(edge.a.y, edge.b.y) <= m_cut.dLowMaxY ? 5U : 0U) |
                          (std::max(edge.a.y, edge.b.y) >= m_cut.dHighMinY ? 10U : 0U);
    const unsigned nMask = nInX & nInY;
    if ((nMask & (nMask - 1U)) == 0)
        return nMask;
    unsigned nMet = 0;
    for (std::size_t i = 0; i < 4; ++i)
        if (edge.MayMeet(m_makers[i].GetBox()))
            nMet |= 1U << i;
    return nMet;
}

void CPolygonTracker::CSplitter::Cross(const CContourEdge& edge, CCrossings& crossings) const noexcept
{
    crossings.bX ^= IsCrossedAlongX(edge, m_frame.place, m_dOtherX);
    crossings.bY ^= IsCrossedAlongY(edge, m_frame.place, m_dOtherY);
    crossings.bBehindX ^= IsCrossedAlongY(edge, PNT_2D(m_dOtherX, m_frame.place.y), m_dOtherY);
}

void CPolygonTracker::CSplitter::SplitRing(const CPart& part)
{
    const CRing& ring = m_tracker.m_vecRings[part.nRing];
    std::array<std::uint32_t*, 4> pNext;
    for (std::size_t i = 0; i < 4; ++i)
        pNext[i] = m_makers[i].BeginRing(part.nEnd - part.nBegin);
    const std::uint32_t* const pEdges = m_tracker.m_stacks[m_frame.nStack].vecEdges.data();
    CCrossings crossings;
    for (std::size_t n = part.nBegin; n < part.nEnd; ++n)
    {
        const CContourEdge edge = ring.GetEdge(pEdges[n]);
        const unsigned nMask = FindQuarters(edge);
        for (std::size_t i = 0; i < 4; ++i) // written to all of them, kept where the bit is set
        {
            *pNext[i] = pEdges[n];
            pNext[i] += (nMask >> i) & 1U;
        }
        Cross(edge, crossings);
    }
    for (std::size_t i = 0; i < 4; ++i)
    {
        const bool bBeyondX = (i & 2U) != m_nHomeX;
        const bool bBeyondY = (i & 1U) != m_nHomeY;
        const bool bOdd =
            (bBeyondX && crossings.bX) != (bBeyondY && (bBeyondX ? crossings.bBehindX : crossings.bY));
        m_makers[i].EndRing(part.nRing, ring.bHole, part.bInside != bOdd, pNext[i]);
    }
}

CPolygonTracker::CQuarters::CQuarters(CPolygonTracker& tracker, const CFrame& frame, const CCut& cut)
    : m_tracker(tracker)
{
    for (std::size_t i = 0; i < 4; ++i)
    {
        m_edges[i] = tracker.m_stacks[i].vecEdges.size();
        m_parts[i] = tracker.m_stacks[i].vecParts.size();
    }
    CSplitter splitter(tracker, frame, cut);
    for (std::size_t n = frame.nBegin; n < frame.nEnd; ++n)
        splitter.SplitRing(CPart(tracker.m_stacks[frame.nStack].vecParts[n]));
    for (std::size_t i = 0; i < 4; ++i)
        m_frames[i] = splitter.Finish(i);
}

CPolygonTracker::CQuarters::~CQuarters()
{
    for (std::size_t i = 0; i < 4; ++i)
    {
        m_tracker.m_stacks[i].vecEdges.resize(m_edges[i]);
        m_tracker.m_stacks[i].vecParts.resize(m_parts[i]);
    }
}

CPolygonTracker::CPolygonTracker(const std::vector<TMultiPartPolygon>& vecPolygons)
{
    for (const TMultiPartPolygon& polygon : vecPolygons)
    {
        if (!zor::geom::IsUsableRing(polygon.outer))
            continue;
        AddRing(polygon.outer, false);
        for (const std::vector<PNT_2D>& hole : polygon.holes)
            if (zor::geom::IsUsableRing(hole))
                AddRing(hole, true);
    }
}

void CPolygonTracker::AddRing(const std::vector<PNT_2D>& ring, bool bHole)
{
    m_vecRings.push_back({ring.data(), ring.size(), bHole});
}

CPolygonTracker::CFrame CPolygonTracker::EnterRoot(const TBox& box)
{
    const PNT_2D place(box.xmin, box.ymin);
    CFrameMaker maker(m_stacks[0], box, place, 0);
    for (std::size_t nRing = 0; nRing < m_vecRings.size(); ++nRing)
    {
        const CRing& ring = m_vecRings[nRing];
        std::uint32_t* pNext = maker.BeginRing(ring.nNum);
        bool bInside = false;
        for (std::size_t n = 0; n < ring.nNum; ++n)
        {
            const CContourEdge edge = ring.GetEdge(n);
            bInside ^= IsCrossedFromFarLeft(edge, place);
            *pNext = static_cast<std::uint32_t>(n);
            pNext += edge.MayMeet(box) ? 1 : 0;
        }
        maker.EndRing(nRing, ring.bHole, bInside && zor::geom::IsFinitePnt(place), pNext);
    }
    return maker.Finish();
}

bool CPolygonTracker::Contains(const CFrame& frame, const PNT_2D& pnt) const noexcept
{
    const CStack& stack = m_stacks[frame.nStack];
    const PNT_2D corner(pnt.x, frame.place.y);
    bool bInside = false;
    bool bInPolygon = false;
    for (std::size_t n = frame.nBegin; n < frame.nEnd; ++n)
    {
        const CPart& part = stack.vecParts[n];
        const CRing& ring = m_vecRings[part.nRing];
        bool bInRing = part.bInside;
        for (std::size_t i = part.nBegin; i < part.nEnd; ++i)
        {
            const CContourEdge edge = ring.GetEdge(stack.vecEdges[i]);
            if (IsOnEdge(edge, pnt))
                return true;
            bInRing ^= IsCrossedAlongX(edge, frame.place, pnt.x) ^ IsCrossedAlongY(edge, corner, pnt.y);
        }
        bInside = bInside || (bInPolygon && !ring.bHole);
        bInPolygon = ring.bHole ? bInPolygon && !bInRing : bInRing;
    }
    return bInside || bInPolygon;
}
