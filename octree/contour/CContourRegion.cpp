#include <octree/contour/CContourRegion.h>

#include <algorithm>

using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;
using zor::geom::TPlanBox;

namespace
{

// KEPT: a squared distance, coordinate units squared (Cnts_CutNearTheCornersCountsAsNone_Kept,
// Cnts_SmallCloudIsOutsideWhateverIsCut_Kept)
constexpr double c_dNearSquared = 0.1;

/// Pairs of an edge and a place that are looked at for each point of the whole region: beyond that,
/// subtracting the whole region costs less.
constexpr std::size_t c_nPairsAPnt = 100;

bool IsNear(const PNT_2D& pnt, const std::vector<PNT_2D>& square) noexcept
{
    return std::any_of(square.begin(), square.end(),
                       [&](const PNT_2D& corner) { return pnt.dist_square(corner) < c_dNearSquared; });
}

/// The rule, for what is left of a square given by its corners.
enumSide GetSide(const std::vector<TMultiPartPolygon>& vecRest, const std::vector<PNT_2D>& square)
{
    if (vecRest.empty())
        return enumSide::Inside;
    const TMultiPartPolygon& part = vecRest.front();
    const bool bWhole = vecRest.size() == 1 && part.holes.empty() && part.outer.size() == 4 &&
                        std::all_of(part.outer.begin(), part.outer.end(),
                                    [&](const PNT_2D& pnt) { return IsNear(pnt, square); });
    return bWhole ? enumSide::Outside : enumSide::Straddling;
}

} // namespace

CContourRegion::CContourRegion(const TMultiPartPolygon& polygon) : m_regions(polygon)
{
    for (const TMultiPartPolygon& part : m_regions.GetParts())
    {
        m_edges.AddRing(part.outer);
        for (const std::vector<PNT_2D>& hole : part.holes)
            m_edges.AddRing(hole);
    }
}

CContourRegion::CPlace CContourRegion::EnterRoot(const CContourSquare& square)
{
    return {m_edges.EnterRoot(square), m_regions.EnterRoot()};
}

CContourRegion::CPlace CContourRegion::Enter(const CPlace& parent, const CContourSquare& square)
{
    const CEdgeTracker::CFrame frame = m_edges.Enter(parent.frame, square);
    return {frame, m_regions.Enter(square, frame.bInside)};
}

void CContourRegion::Leave(const CPlace& place) noexcept
{
    m_edges.Leave(place.frame);
    m_regions.Leave(place.nLevel);
}

enumSide CContourRegion::ClassifySquare(const CContourSquare& square, const CPlace& place)
{
    if (!square.HasArea())
        return enumSide::Inside; // nothing is left of a square without area
    const TPlanBox<double>& box = square.box;
    if (!m_edges.AnyEdge(place.frame, [&](const CContourEdge& edge) { return edge.MayMeet(box); }))
        return place.frame.bInside ? enumSide::Inside : enumSide::Outside;
    if (m_edges.AnyEdge(place.frame, [&](const CContourEdge& edge) { return edge.CutsFarFromCorners(box); }))
        return enumSide::Straddling;
    const std::vector<PNT_2D> ring = square.GetRing();
    const bool bWhole = m_regions.IsSmall() || MayTurnWhenCut(square, place);
    return GetSide(bWhole ? m_regions.SubtractWhole(ring) : m_regions.SubtractLocal(ring, place.nLevel),
                   ring);
}

/// Might the answer change when the region is cut down to the square's frame? An edge that is cut there may
/// turn by a rounding. That matters where it passes through a corner of the square, or through an end of
/// another edge in the square.
/// @return true also where looking would cost more than subtracting the whole region, which is always right.
bool CContourRegion::MayTurnWhenCut(const CContourSquare& square, const CPlace& place) const
{
    const TPlanBox<double> frame = CLocalRegions::GetFrame(square.box);
    const auto isCutNear = [&](const CContourEdge& edge)
    { return edge.MayTurnWhenCut(frame) && edge.MayMeet(square.around); };
    std::vector<PNT_2D> vecPlaces = square.GetRing();
    std::size_t nNumCut = 0;
    const auto look = [&](const CContourEdge& edge)
    {
        nNumCut += isCutNear(edge) ? 1 : 0;
        for (const PNT_2D& pnt : {edge.a, edge.b})
            if (square.around.Contains(pnt))
                vecPlaces.push_back(pnt);
        return false;
    };
    m_edges.AnyEdge(place.frame, look);
    if (nNumCut * vecPlaces.size() > c_nPairsAPnt * m_regions.GetNumPnts())
        return true;
    const auto turnsAtAPlace = [&](const CContourEdge& edge)
    {
        return isCutNear(edge) &&
               std::any_of(vecPlaces.begin(), vecPlaces.end(),
                           [&](const PNT_2D& pnt) { return edge.PassesClosely(pnt) && !edge.EndsAt(pnt); });
    };
    return m_edges.AnyEdge(place.frame, turnsAtAPlace);
}
