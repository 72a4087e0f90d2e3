#include <analysis/ground/CMorphRegion.h>

namespace
{

// A float in [fMin, fMax): both halves of the division there have a point.
float CalcMiddle(float fMin, float fMax) noexcept
{
    const auto fMiddle = static_cast<float>((static_cast<double>(fMin) + static_cast<double>(fMax)) / 2.0);
    return fMiddle < fMax ? fMiddle : fMin;
}

// What windows reach from the rectangle, and windows from there. Float subtraction is monotone: rounding
// included, no window of a point inside ends outside.
CMorphRect CalcReached(const CMorphRect& rect, float fHalf) noexcept
{
    return {rect.fMinX - fHalf - fHalf, rect.fMinY - fHalf - fHalf, rect.fMaxX + fHalf + fHalf,
            rect.fMaxY + fHalf + fHalf};
}

} // namespace

CMorphRegion::CMorphRegion(const CMorphPnts& pnts) : m_pPnts(&pnts)
{
    ForEachPnt(
        [this](const pcl::PointXYZ& pnt, std::uint32_t)
        {
            m_rect.Add(pnt.x, pnt.y);
            ++m_nNumPnts;
        });
    m_rectOwn = m_rect;
}

CMorphRegion::CMorphRegion(const CMorphRegion& parent, const CMorphRect& rectOwn, float fHalf)
    : m_pPnts(parent.m_pPnts), m_bAll(false), m_nDepth(parent.m_nDepth + 1)
{
    // The given rectangle covers half the parent; the points inside say how much of it is used.
    parent.ForEachPnt(
        [&](const pcl::PointXYZ& pnt, std::uint32_t)
        {
            if (rectOwn.IsInside(pnt.x, pnt.y))
                m_rectOwn.Add(pnt.x, pnt.y);
        });
    const CMorphRect rectReached = CalcReached(m_rectOwn, fHalf);
    const auto isReached = [&](const pcl::PointXYZ& pnt) { return rectReached.IsInside(pnt.x, pnt.y); };
    parent.ForEachPnt([&](const pcl::PointXYZ& pnt, std::uint32_t)
                      { m_nNumPnts += isReached(pnt) ? 1U : 0U; });
    m_vecPos.reserve(m_nNumPnts);
    parent.ForEachPnt(
        [&](const pcl::PointXYZ& pnt, std::uint32_t nPos)
        {
            if (!isReached(pnt))
                return;
            m_vecPos.push_back(nPos);
            m_rect.Add(pnt.x, pnt.y);
        });
}

std::pair<CMorphRegion, CMorphRegion> CMorphRegion::Divide(float fHalf) const
{
    CMorphRect rectLow = m_rectOwn;
    CMorphRect rectHigh = m_rectOwn;
    const double dWidth = static_cast<double>(m_rectOwn.fMaxX) - static_cast<double>(m_rectOwn.fMinX);
    const double dHeight = static_cast<double>(m_rectOwn.fMaxY) - static_cast<double>(m_rectOwn.fMinY);
    if (dWidth >= dHeight)
    {
        rectLow.fMaxX = CalcMiddle(m_rectOwn.fMinX, m_rectOwn.fMaxX);
        rectHigh.fMinX = std::nextafter(rectLow.fMaxX, m_rectOwn.fMaxX);
    }
    else
    {
        rectLow.fMaxY = CalcMiddle(m_rectOwn.fMinY, m_rectOwn.fMaxY);
        rectHigh.fMinY = std::nextafter(rectLow.fMaxY, m_rectOwn.fMaxY);
    }
    return {CMorphRegion(*this, rectLow, fHalf), CMorphRegion(*this, rectHigh, fHalf)};
}
