#include <octree/contour/CContourRegion.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

using zor::geom::CGeos;
using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;

namespace
{

// KEPT: a squared distance, coordinate units squared (Cnts_CutNearTheCornersCountsAsNone_Kept,
// Cnts_SmallCloudIsOutsideWhateverIsCut_Kept)
constexpr double c_dNearSquared = 0.1;
constexpr double c_dSurelyFar = 0.34;      // farther than its root, with room for rounding
constexpr std::size_t c_nSmallRegion = 64; // points up to which clipping a region down does not pay

/// Pairs of an edge and a place that are looked at for each point of the whole region: with it GEOS does
/// more.
constexpr std::size_t c_nPairsAnEdge = 100;

/// Does a place on a side from dMin to dMax lie far from both its ends?
bool IsFarFromEnds(double d, double dMin, double dMax) noexcept
{
    return d > dMin + c_dSurelyFar && d < dMax - c_dSurelyFar;
}

/// Does the edge a → b cross the line at `d` of its first coordinate, far from the ends of the side there?
bool CrossesSide(double dA, double dB, double dOtherA, double dOtherB, double d, double dMin,
                 double dMax) noexcept
{
    if (!((dA < d && dB > d) || (dA > d && dB < d)))
        return false;
    return IsFarFromEnds(dOtherA + (dOtherB - dOtherA) * ((d - dA) / (dB - dA)), dMin, dMax);
}

bool CrossesASide(const CEdgeTracker::Edge& e, const CPlanBox& box) noexcept
{
    return CrossesSide(e.a.x, e.b.x, e.a.y, e.b.y, box.m_dXMin, box.m_dYMin, box.m_dYMax) ||
           CrossesSide(e.a.x, e.b.x, e.a.y, e.b.y, box.m_dXMax, box.m_dYMin, box.m_dYMax) ||
           CrossesSide(e.a.y, e.b.y, e.a.x, e.b.x, box.m_dYMin, box.m_dXMin, box.m_dXMax) ||
           CrossesSide(e.a.y, e.b.y, e.a.x, e.b.x, box.m_dYMax, box.m_dXMin, box.m_dXMax);
}

bool IsNear(const PNT_2D& pnt, const std::vector<PNT_2D>& square) noexcept
{
    return std::any_of(square.begin(), square.end(),
                       [&](const PNT_2D& corner) { return pnt.dist_square(corner) < c_dNearSquared; });
}

bool IsInAndFarFromCorners(const PNT_2D& pnt, const CPlanBox& box) noexcept
{
    const bool bIn = pnt.x > box.m_dXMin && pnt.x < box.m_dXMax && pnt.y > box.m_dYMin && pnt.y < box.m_dYMax;
    return bIn &&
           (IsFarFromEnds(pnt.x, box.m_dXMin, box.m_dXMax) || IsFarFromEnds(pnt.y, box.m_dYMin, box.m_dYMax));
}

/// The frame that the region around a square is cut down to. Its sides keep off those of other squares of the
/// tree, where contours may run.
CPlanBox GetFrame(const CPlanBox& box) noexcept
{
    return box.GetGrown((box.m_dXMax - box.m_dXMin) * 0.4673);
}

zor::geom::RECT_2D GetFrameRect(const CPlanBox& box) noexcept
{
    const CPlanBox frame = GetFrame(box);
    return {frame.m_dXMin, frame.m_dYMin, frame.m_dXMax, frame.m_dYMax};
}

/// May the edge turn by a rounding when it is cut at the frame?
bool IsBentByCut(const CEdgeTracker::Edge& e, const CPlanBox& frame) noexcept
{
    return e.a.x != e.b.x && e.a.y != e.b.y && !(frame.Contains(e.a) && frame.Contains(e.b));
}

/// Does the edge's line pass the place so closely that a rounding may decide on which side?
bool PassesClosely(const CEdgeTracker::Edge& e, const PNT_2D& pnt) noexcept
{
    constexpr double c_dMargin = 1e-12; // of the largest number that takes part; roundings come to 1e-15
    const double dX = e.b.x - e.a.x;
    const double dY = e.b.y - e.a.y;
    const double dLargest =
        std::max({std::fabs(e.a.x), std::fabs(e.a.y), std::fabs(e.b.x), std::fabs(e.b.y)});
    const double dAcross = dX * (pnt.y - e.a.y) - dY * (pnt.x - e.a.x);
    return !(std::fabs(dAcross) > c_dMargin * dLargest * (std::fabs(dX) + std::fabs(dY)));
}

bool IsEnd(const CEdgeTracker::Edge& e, const PNT_2D& pnt) noexcept
{
    return (pnt.x == e.a.x && pnt.y == e.a.y) || (pnt.x == e.b.x && pnt.y == e.b.y);
}

} // namespace

std::vector<PNT_2D> MakeRing(const CPlanBox& box)
{
    return {PNT_2D(box.m_dXMin, box.m_dYMin), PNT_2D(box.m_dXMin, box.m_dYMax),
            PNT_2D(box.m_dXMax, box.m_dYMax), PNT_2D(box.m_dXMax, box.m_dYMin)};
}

CPlanBox GetNeighbourhood(const CPlanBox& box) noexcept
{
    const double dFarthest = std::max(
        {std::fabs(box.m_dXMin), std::fabs(box.m_dXMax), std::fabs(box.m_dYMin), std::fabs(box.m_dYMax)});
    return box.GetGrown(0.01 + dFarthest * 1e-14);
}

CContourRegion::CContourRegion(const TMultiPartPolygon& polygon)
{
    m_vecLevels.push_back({{}, {}, false, enumState::Valid, m_geos.MakeRegion(polygon)});
    for (const TMultiPartPolygon& part : m_geos.GetParts(m_vecLevels.front().m_region.get()))
    {
        m_edges.AddRing(part.outer);
        for (const std::vector<PNT_2D>& hole : part.holes)
            m_edges.AddRing(hole);
    }
}

CContourRegion::Square CContourRegion::EnterRoot(const CPlanBox& box)
{
    m_vecLevels.resize(1);
    return {box,
            m_edges.EnterRoot(PNT_2D((box.m_dXMin + box.m_dXMax) / 2.0, (box.m_dYMin + box.m_dYMax) / 2.0)),
            0};
}

CContourRegion::Square CContourRegion::Enter(const Square& parent, const CPlanBox& box)
{
    const PNT_2D centre((box.m_dXMin + box.m_dXMax) / 2.0, (box.m_dYMin + box.m_dYMax) / 2.0);
    const CEdgeTracker::Frame frame = m_edges.Enter(parent.m_frame, centre, GetNeighbourhood(box));
    m_vecLevels.push_back({box, centre, frame.m_bInside, enumState::NotMade, nullptr});
    return {box, frame, parent.m_nLevel + 1};
}

void CContourRegion::Leave(const Square& square) noexcept
{
    m_edges.Leave(square.m_frame);
    m_vecLevels.pop_back();
}

/// An edge that goes through the square gives what is left of it a corner far from the square's own: that
/// cannot be the whole square, nor nothing.
bool CContourRegion::IsCutInside(const Square& square) const
{
    return m_edges.AnyEdge(
        square.m_frame, [&](const CEdgeTracker::Edge& edge)
        { return CrossesASide(edge, square.m_box) || IsInAndFarFromCorners(edge.a, square.m_box); });
}

/// The part of the region that is subtracted from the square instead of all of it, where the answer cannot
/// differ.
const GEOSGeometry* CContourRegion::ChooseRegion(const Square& square, const std::vector<PNT_2D>& ring)
{
    const GEOSGeometry* const pWhole = m_vecLevels.front().m_region.get();
    if (m_geos.GetNumPnts(pWhole) <= c_nSmallRegion || MayTurnOnCut(square, ring))
        return pWhole;
    return MakeLocalRegion(square);
}

/// An edge that is cut at the frame may turn by a rounding. That matters where it passes through a corner of
/// the square, or through an end of another edge there.
/// @return true also where looking would cost more than subtracting the whole region, which is always right.
bool CContourRegion::MayTurnOnCut(const Square& square, const std::vector<PNT_2D>& ring) const
{
    const CPlanBox frame = GetFrame(square.m_box);
    const CPlanBox around = GetNeighbourhood(square.m_box);
    std::vector<PNT_2D> vecPlaces = ring;
    std::size_t nNumCut = 0;
    const auto look = [&](const CEdgeTracker::Edge& edge)
    {
        nNumCut += IsBentByCut(edge, frame) && CEdgeTracker::MayMeet(edge, around) ? 1 : 0;
        for (const PNT_2D& pnt : {edge.a, edge.b})
            if (around.Contains(pnt))
                vecPlaces.push_back(pnt);
        return false;
    };
    m_edges.AnyEdge(square.m_frame, look);
    if (nNumCut * vecPlaces.size() > c_nPairsAnEdge * m_geos.GetNumPnts(m_vecLevels.front().m_region.get()))
        return true;
    return m_edges.AnyEdge(square.m_frame,
                           [&](const CEdgeTracker::Edge& edge)
                           {
                               return IsBentByCut(edge, frame) && CEdgeTracker::MayMeet(edge, around) &&
                                      std::any_of(vecPlaces.begin(), vecPlaces.end(),
                                                  [&](const PNT_2D& pnt)
                                                  { return PassesClosely(edge, pnt) && !IsEnd(edge, pnt); });
                           });
}

/// Makes the region around the square and, on the way there, around the squares above it: each is cut out of
/// the one above, so that none costs more than the edges around its parent.
/// @return that of the square, or of one above it that is small already.
const GEOSGeometry* CContourRegion::MakeLocalRegion(const Square& square)
{
    std::size_t nLevel = square.m_nLevel;
    while (m_vecLevels[nLevel].m_eState == enumState::NotMade)
        --nLevel;
    for (; nLevel < square.m_nLevel; ++nLevel)
    {
        const GEOSGeometry* const pAbove = m_vecLevels[nLevel].m_region.get();
        if (m_geos.GetNumPnts(pAbove) <= c_nSmallRegion)
            break;
        Level& level = m_vecLevels[nLevel + 1];
        std::optional<CGeos::Geometry> clipped = m_geos.ClipQuickly(pAbove, GetFrameRect(level.m_box));
        if (!clipped)
            MakeSurely(level);
        else
        {
            level.m_region = std::move(*clipped);
            level.m_eState = enumState::Made;
        }
    }
    Level& level = m_vecLevels[nLevel];
    if (level.m_eState == enumState::Made && !IsGood(level))
        MakeSurely(level);
    level.m_eState = enumState::Valid;
    return level.m_region.get();
}

/// Has the quick way put the rings together as they should be? Else they cross, or the other side of an edge
/// is inside.
bool CContourRegion::IsGood(const Level& level) const
{
    return m_geos.IsValid(level.m_region.get()) &&
           m_geos.MayBe(level.m_region.get(), level.m_centre, level.m_bCentreInside);
}

/// Cuts the region around a square out of the whole.
void CContourRegion::MakeSurely(Level& level)
{
    level.m_region = m_geos.Clip(m_vecLevels.front().m_region.get(), GetFrameRect(level.m_box));
    level.m_eState = enumState::Valid;
}

enumSide CContourRegion::ClassifySquare(const Square& square)
{
    const CPlanBox& box = square.m_box;
    if (!(box.m_dXMax > box.m_dXMin && box.m_dYMax > box.m_dYMin))
        return enumSide::Inside; // nothing is left of a square without area
    if (!m_edges.AnyEdge(square.m_frame,
                         [&](const CEdgeTracker::Edge& edge) { return CEdgeTracker::MayMeet(edge, box); }))
        return square.m_frame.m_bInside ? enumSide::Inside : enumSide::Outside;
    if (IsCutInside(square))
        return enumSide::Straddling;
    const std::vector<PNT_2D> ring = MakeRing(box);
    const CGeos::Geometry rest =
        m_geos.CalcDifference(m_geos.MakePolygon(ring).get(), ChooseRegion(square, ring));
    return GetSide(m_geos.GetParts(rest.get()), ring);
}

enumSide CContourRegion::GetSide(const std::vector<TMultiPartPolygon>& vecRest,
                                 const std::vector<PNT_2D>& square)
{
    if (vecRest.empty())
        return enumSide::Inside;
    const TMultiPartPolygon& part = vecRest.front();
    const bool bWhole = vecRest.size() == 1 && part.holes.empty() && part.outer.size() == 4 &&
                        std::all_of(part.outer.begin(), part.outer.end(),
                                    [&](const PNT_2D& pnt) { return IsNear(pnt, square); });
    return bWhole ? enumSide::Outside : enumSide::Straddling;
}
