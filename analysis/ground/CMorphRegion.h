#ifndef ANALYSIS_GROUND_CMORPHREGION_H
#define ANALYSIS_GROUND_CMORPHREGION_H

#include <analysis/ground/CMorphPnts.h>
#include <zor3geom/TPlanBox.h>

#include <cstdint>
#include <utility>
#include <vector>

/// A part of the plane that is filtered in one piece: its own points, which are decided about, and the
/// points around it that their windows, and the windows of the points in these, reach.
class CMorphRegion
{
public:
    using TBox = zor::geom::TPlanBox<float>; ///< empty where there is no point

    /// All finite points of `pnts`, which must outlive the region.
    explicit CMorphRegion(const CMorphPnts& pnts);

    const TBox& GetOwnBox() const noexcept { return m_boxOwn; }      ///< bounds of its own points
    const TBox& GetBox() const noexcept { return m_box; }            ///< bounds of all its points
    std::uint32_t GetNumPnts() const noexcept { return m_nNumPnts; } ///< all its points
    bool HasAll() const noexcept { return m_nNumPnts == m_pPnts->GetNumPnts(); }
    int GetDepth() const noexcept { return m_nDepth; } ///< divisions that led to it

    /// Divides at the middle of the longer edge of its own box. Neither half is without points.
    ///
    /// @param fHalf  half the window.
    /// REQUIRES: own points at two places at least.
    std::pair<CMorphRegion, CMorphRegion> Divide(float fHalf) const;

    /// `fn(const pcl::PointXYZ&, position)` for every finite point of the region, positions ascending.
    template <class TFn>
    void ForEachPnt(TFn&& fn) const
    {
        const std::uint32_t nNum =
            m_bAll ? m_pPnts->GetNumPnts() : static_cast<std::uint32_t>(m_vecPos.size());
        for (std::uint32_t i = 0; i < nNum; ++i)
        {
            const std::uint32_t nPos = m_bAll ? i : m_vecPos[i];
            const pcl::PointXYZ& pnt = m_pPnts->GetPnt(nPos);
            if (!m_bAll || CMorphPnts::IsFinite(pnt))
                fn(pnt, nPos);
        }
    }

private:
    CMorphRegion(const CMorphRegion& parent, const TBox& boxOwn, float fHalf);

    const CMorphPnts* m_pPnts;
    bool m_bAll = true;                  // all finite points: no list
    std::vector<std::uint32_t> m_vecPos; // finite points of the region, ascending
    TBox m_boxOwn = TBox::GetEmpty();
    TBox m_box = TBox::GetEmpty();
    std::uint32_t m_nNumPnts = 0;
    int m_nDepth = 0;
};

#endif
