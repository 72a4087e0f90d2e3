#include <host/CPlanRegion.h>

#include <algorithm>
#include <limits>

using zor::geom::PNT_2D;
using zor::geom::RECT_2D;
using zor::geom::TMultiPartPolygon;

namespace
{

constexpr std::size_t c_nMaxPerEdge = 8; // entries in bands that an edge may have on average

/// Positive left of a → b. Differences of coordinates are exact in long double, and their products nearly.
long double CalcSide(const PNT_2D& a, const PNT_2D& b, const PNT_2D& pnt)
{
    using TWide = long double;
    return (TWide(b.x) - a.x) * (TWide(pnt.y) - a.y) - (TWide(b.y) - a.y) * (TWide(pnt.x) - a.x);
}

RECT_2D Join(const RECT_2D& a, const RECT_2D& b)
{
    return {std::min(a.xmin, b.xmin), std::min(a.ymin, b.ymin), std::max(a.xmax, b.xmax),
            std::max(a.ymax, b.ymax)};
}

} // namespace

CPlanRing::CPlanRing(const std::vector<PNT_2D>& ring)
{
    if (ring.size() < 3)
        return;
    PNT_2D start = ring.back();
    m_box = RECT_2D(start.x, start.y, start.x, start.y);
    for (const PNT_2D& end : ring)
    {
        m_box = Join(m_box, RECT_2D(end.x, end.y, end.x, end.y));
        m_vecEdges.push_back({start, end});
        start = end;
    }
    SortIntoBands();
}

std::size_t CPlanRing::FindBand(double y) const
{
    const long double dHeight = static_cast<long double>(m_box.ymax) - m_box.ymin;
    if (!(dHeight > 0.0L))
        return 0;
    const long double dBand =
        (static_cast<long double>(y) - m_box.ymin) / dHeight * static_cast<long double>(m_nNumBands);
    return std::min(static_cast<std::size_t>(dBand), m_nNumBands - 1);
}

/// As many bands as edges, or fewer where many edges reach through many bands.
void CPlanRing::SortIntoBands()
{
    const auto first = [this](const CEdge& edge) { return FindBand(std::min(edge.a.y, edge.b.y)); };
    const auto last = [this](const CEdge& edge) { return FindBand(std::max(edge.a.y, edge.b.y)); };
    std::size_t nTotal = 0;
    for (m_nNumBands = m_vecEdges.size();; m_nNumBands = (m_nNumBands + 1) / 2)
    {
        nTotal = 0;
        for (const CEdge& edge : m_vecEdges)
            nTotal += last(edge) - first(edge) + 1;
        if (nTotal <= c_nMaxPerEdge * m_vecEdges.size() || m_nNumBands == 1)
            break;
    }
    m_vecBegin.assign(m_nNumBands + 1, 0);
    for (const CEdge& edge : m_vecEdges)
        for (std::size_t n = first(edge); n <= last(edge); ++n)
            ++m_vecBegin[n + 1];
    for (std::size_t n = 0; n < m_nNumBands; ++n)
        m_vecBegin[n + 1] += m_vecBegin[n];
    m_vecInBand.resize(nTotal);
    std::vector<std::uint32_t> vecNext(m_vecBegin.begin(), m_vecBegin.end() - 1);
    for (std::size_t i = 0; i < m_vecEdges.size(); ++i)
        for (std::size_t n = first(m_vecEdges[i]); n <= last(m_vecEdges[i]); ++n)
            m_vecInBand[vecNext[n]++] = static_cast<std::uint32_t>(i);
}

CPlanRing::enumPlace CPlanRing::Find(const PNT_2D& pnt) const
{
    if (m_vecEdges.empty() || !(pnt.x >= m_box.xmin && pnt.x <= m_box.xmax) ||
        !(pnt.y >= m_box.ymin && pnt.y <= m_box.ymax))
        return enumPlace::Outside;
    bool bInside = false;
    const std::size_t nBand = FindBand(pnt.y);
    for (std::uint32_t i = m_vecBegin[nBand]; i < m_vecBegin[nBand + 1]; ++i)
    {
        const CEdge& edge = m_vecEdges[m_vecInBand[i]];
        if (pnt.y < std::min(edge.a.y, edge.b.y) || pnt.y > std::max(edge.a.y, edge.b.y) ||
            pnt.x > std::max(edge.a.x, edge.b.x))
            continue;
        const long double dSide = CalcSide(edge.a, edge.b, pnt);
        if (dSide == 0.0L && pnt.x >= std::min(edge.a.x, edge.b.x))
            return enumPlace::OnEdge;
        const bool bAcross = (edge.a.y <= pnt.y) != (edge.b.y <= pnt.y);
        if (bAcross && (edge.b.y > edge.a.y) == (dSide > 0.0L))
            bInside = !bInside; // the edge lies to the right
    }
    return bInside ? enumPlace::Inside : enumPlace::Outside;
}

CPlanRegion::CPlanRegion(const std::vector<TMultiPartPolygon>& vecPolygons)
{
    for (const TMultiPartPolygon& polygon : vecPolygons)
    {
        CPart part{CPlanRing(polygon.outer), {}};
        for (const std::vector<PNT_2D>& hole : polygon.holes)
            part.vecHoles.emplace_back(hole);
        m_vecParts.push_back(std::move(part));
    }
}

bool CPlanRegion::Contains(const PNT_2D& pnt) const
{
    using enumPlace = CPlanRing::enumPlace;
    return std::any_of(m_vecParts.begin(), m_vecParts.end(),
                       [&](const CPart& part)
                       {
                           return part.outer.Find(pnt) != enumPlace::Outside &&
                                  std::none_of(part.vecHoles.begin(), part.vecHoles.end(),
                                               [&](const CPlanRing& hole)
                                               { return hole.Find(pnt) == enumPlace::Inside; });
                       });
}

RECT_2D CPlanRegion::GetBox() const
{
    constexpr double c_dMax = std::numeric_limits<double>::max();
    RECT_2D box(c_dMax, c_dMax, -c_dMax, -c_dMax);
    for (const CPart& part : m_vecParts)
        if (part.outer.GetBox().xmin <= part.outer.GetBox().xmax &&
            part.outer.GetBox().xmin != RECT_2D().xmin)
            box = Join(box, part.outer.GetBox());
    return box;
}
