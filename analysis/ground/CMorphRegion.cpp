#include <analysis/ground/CMorphRegion.h>

namespace
{

// A float in [fMin, fMax): both halves of the division there have a point.
float CalcMiddle(float fMin, float fMax) noexcept
{
    const auto fMiddle = static_cast<float>((static_cast<double>(fMin) + static_cast<double>(fMax)) / 2.0);
    return fMiddle < fMax ? fMiddle : fMin;
}

// What windows of points in the box reach, and windows of points there. Float addition and subtraction are
// monotone: rounding included, no window of a point inside ends outside.
CMorphRegion::TBox CalcReached(const CMorphRegion::TBox& box, float fHalf) noexcept
{
    return box.GetGrown(fHalf).GetGrown(fHalf);
}

} // namespace

CMorphRegion::CMorphRegion(const CMorphPnts& pnts) : m_pPnts(&pnts)
{
    TBox box = TBox::GetEmpty(); // a variable of its own can stay in registers
    std::uint32_t nNumPnts = 0;
    ForEachPnt(
        [&](const pcl::PointXYZ& pnt, std::uint32_t)
        {
            box.Add(pnt.x, pnt.y);
            ++nNumPnts;
        });
    m_box = box;
    m_boxOwn = box;
    m_nNumPnts = nNumPnts;
}

CMorphRegion::CMorphRegion(const CMorphRegion& parent, const TBox& boxOwn, float fHalf)
    : m_pPnts(parent.m_pPnts), m_bAll(false), m_nDepth(parent.m_nDepth + 1)
{
    // The given box covers half the parent; the points inside say how much of it is used.
    parent.ForEachPnt(
        [&](const pcl::PointXYZ& pnt, std::uint32_t)
        {
            if (boxOwn.Contains(pnt))
                m_boxOwn.Add(pnt.x, pnt.y);
        });
    const TBox boxReached = CalcReached(m_boxOwn, fHalf);
    const auto isReached = [&](const pcl::PointXYZ& pnt) { return boxReached.Contains(pnt); };
    parent.ForEachPnt([&](const pcl::PointXYZ& pnt, std::uint32_t)
                      { m_nNumPnts += isReached(pnt) ? 1U : 0U; });
    m_vecPos.reserve(m_nNumPnts);
    parent.ForEachPnt(
        [&](const pcl::PointXYZ& pnt, std::uint32_t nPos)
        {
            if (!isReached(pnt))
                return;
            m_vecPos.push_back(nPos);
            m_box.Add(pnt.x, pnt.y);
        });
}

std::pair<CMorphRegion, CMorphRegion> CMorphRegion::Divide(float fHalf) const
{
    TBox boxLow = m_boxOwn;
    TBox boxHigh = m_boxOwn;
    const double dWidth = static_cast<double>(m_boxOwn.xmax) - static_cast<double>(m_boxOwn.xmin);
    const double dHeight = static_cast<double>(m_boxOwn.ymax) - static_cast<double>(m_boxOwn.ymin);
    if (dWidth >= dHeight)
    {
        boxLow.xmax = CalcMiddle(m_boxOwn.xmin, m_boxOwn.xmax);
        boxHigh.xmin = std::nextafter(boxLow.xmax, m_boxOwn.xmax);
    }
    else
    {
        boxLow.ymax = CalcMiddle(m_boxOwn.ymin, m_boxOwn.ymax);
        boxHigh.ymin = std::nextafter(boxLow.ymax, m_boxOwn.ymax);
    }
    return {CMorphRegion(*this, boxLow, fHalf), CMorphRegion(*this, boxHigh, fHalf)};
}
