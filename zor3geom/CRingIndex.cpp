#include <zor3geom/CRingIndex.h>

#include <zor3geom/CalcOrientation.h>
#include <zor3geom/IsUsableRing.h>

#include <algorithm>

namespace zor::geom
{
namespace
{

constexpr std::size_t c_nMaxPerEdge = 8; // bands that an edge may be in on average

} // namespace

CRingIndex::CRingIndex(const std::vector<PNT_2D>& ring) : m_box(1.0, 1.0, -1.0, -1.0)
{
    if (!IsUsableRing(ring))
        return;
    PNT_2D start = ring.back();
    m_box = RECT_2D(start.x, start.y, start.x, start.y);
    m_vecEdges.reserve(ring.size());
    for (const PNT_2D& end : ring)
    {
        m_box.Add(end.x, end.y);
        m_vecEdges.push_back({start, end});
        start = end;
    }
    m_vecInBands.resize(ChooseNumBands());
    m_vecBegin.assign(m_nNumBands + 1, 0);
    for (const CEdge& edge : m_vecEdges)
        for (std::size_t n = FindFirst(edge); n <= FindLast(edge); ++n)
            ++m_vecBegin[n + 1];
    for (std::size_t n = 0; n < m_nNumBands; ++n)
        m_vecBegin[n + 1] += m_vecBegin[n];
    std::vector<std::size_t> vecNext(m_vecBegin.begin(), m_vecBegin.end() - 1);
    for (std::size_t i = 0; i < m_vecEdges.size(); ++i)
        for (std::size_t n = FindFirst(m_vecEdges[i]); n <= FindLast(m_vecEdges[i]); ++n)
            m_vecInBands[vecNext[n]++] = static_cast<std::uint32_t>(i);
}

/// @return the band of a height. The heights are halved, so that no difference overflows.
std::size_t CRingIndex::FindBand(double y) const noexcept
{
    const double dHeight = m_box.ymax / 2.0 - m_box.ymin / 2.0;
    if (!(dHeight > 0.0))
        return 0;
    const double dShare = std::min((y / 2.0 - m_box.ymin / 2.0) / dHeight, 1.0);
    return std::min(static_cast<std::size_t>(dShare * static_cast<double>(m_nNumBands)), m_nNumBands - 1);
}

std::size_t CRingIndex::FindFirst(const CEdge& edge) const noexcept
{
    return FindBand(std::min(edge.a.y, edge.b.y));
}

std::size_t CRingIndex::FindLast(const CEdge& edge) const noexcept
{
    return FindBand(std::max(edge.a.y, edge.b.y));
}

/// Chooses as many bands as edges, or fewer where many edges reach through many bands.
/// @return how many entries the bands have together.
std::size_t CRingIndex::ChooseNumBands()
{
    for (m_nNumBands = m_vecEdges.size();; m_nNumBands = (m_nNumBands + 1) / 2)
    {
        std::size_t nTotal = 0;
        for (const CEdge& edge : m_vecEdges)
            nTotal += FindLast(edge) - FindFirst(edge) + 1;
        if (nTotal <= c_nMaxPerEdge * m_vecEdges.size() || m_nNumBands == 1)
            return nTotal;
    }
}

CRingIndex::enumPlace CRingIndex::Find(const PNT_2D& pnt) const noexcept
{
    if (!m_box.Contains(pnt))
        return enumPlace::Outside;
    bool bInside = false;
    const std::size_t nBand = FindBand(pnt.y);
    for (std::size_t i = m_vecBegin[nBand]; i < m_vecBegin[nBand + 1]; ++i)
    {
        const CEdge& edge = m_vecEdges[m_vecInBands[i]];
        if (pnt.y < std::min(edge.a.y, edge.b.y) || pnt.y > std::max(edge.a.y, edge.b.y) ||
            pnt.x > std::max(edge.a.x, edge.b.x))
            continue;
        const int nSide = CalcOrientation(edge.a, edge.b, pnt);
        if (nSide == 0 && pnt.x >= std::min(edge.a.x, edge.b.x))
            return enumPlace::OnEdge;
        const bool bAcross = (edge.a.y <= pnt.y) != (edge.b.y <= pnt.y);
        if (bAcross && (edge.b.y > edge.a.y) == (nSide > 0))
            bInside = !bInside; // the edge lies to the right
    }
    return bInside ? enumPlace::Inside : enumPlace::Outside;
}

} // namespace zor::geom
