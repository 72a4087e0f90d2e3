#ifndef ANALYSIS_GROUND_CMORPHREGION_H
#define ANALYSIS_GROUND_CMORPHREGION_H

#include <analysis/ground/CMorphPnts.h>

#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

/// Closed rectangle of floats; empty until points are added.
struct CMorphRect
{
    float fMinX = std::numeric_limits<float>::infinity();
    float fMinY = std::numeric_limits<float>::infinity();
    float fMaxX = -std::numeric_limits<float>::infinity();
    float fMaxY = -std::numeric_limits<float>::infinity();

    void Add(float x, float y) noexcept
    {
        fMinX = x < fMinX ? x : fMinX;
        fMinY = y < fMinY ? y : fMinY;
        fMaxX = x > fMaxX ? x : fMaxX;
        fMaxY = y > fMaxY ? y : fMaxY;
    }
    bool IsEmpty() const noexcept { return !(fMinX <= fMaxX); }
    bool IsInside(float x, float y) const noexcept
    {
        return x >= fMinX && x <= fMaxX && y >= fMinY && y <= fMaxY;
    }
};

/// A part of the plane that is filtered in one piece: its own points, which are decided about, and the
/// points around it that their windows, and the windows of the points in these, reach.
class CMorphRegion
{
public:
    /// All finite points of `pnts`, which must outlive the region.
    explicit CMorphRegion(const CMorphPnts& pnts);

    const CMorphRect& GetOwnRect() const noexcept { return m_rectOwn; } ///< bounds of its own points
    const CMorphRect& GetRect() const noexcept { return m_rect; }       ///< bounds of all its points
    std::uint32_t GetNumPnts() const noexcept { return m_nNumPnts; }    ///< all its points
    bool HasAll() const noexcept { return m_nNumPnts == m_pPnts->GetNumPnts(); }
    int GetDepth() const noexcept { return m_nDepth; } ///< divisions that led to it

    /// Divides at the middle of the longer edge of its own rectangle. Neither half is without points.
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
    CMorphRegion(const CMorphRegion& parent, const CMorphRect& rectOwn, float fHalf);

    const CMorphPnts* m_pPnts;
    bool m_bAll = true;                  // all finite points: no list
    std::vector<std::uint32_t> m_vecPos; // finite points of the region, ascending
    CMorphRect m_rectOwn;
    CMorphRect m_rect;
    std::uint32_t m_nNumPnts = 0;
    int m_nDepth = 0;
};

#endif
