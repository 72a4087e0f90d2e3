#include <analysis/ground/FilterWindow.h>

#include <analysis/ground/CGroundDecision.h>
#include <analysis/ground/CMorphRegion.h>
#include <analysis/ground/CWindowCells.h>
#include <analysis/ground/FilterNotFinite.h>

#include <utility>

namespace
{

// So many divisions part any two floats of an axis that lie far from all others. Cells that are still
// crowded then stay so.
constexpr int c_nMaxDepth = 96;

// Below this a region is not worth dividing.
constexpr std::uint32_t c_nMinPnts = 256;

// A region worth dividing is longer than this, in halves of a window: the parts of a smaller one would
// mostly hold points around their own.
constexpr double c_dMinHalves = 16.0;

bool IsWorthDividing(const CMorphRegion& region, float fHalf) noexcept
{
    const CMorphRegion::TBox& box = region.GetOwnBox();
    const double dMin = c_dMinHalves * static_cast<double>(fHalf);
    return region.GetDepth() < c_nMaxDepth && region.GetNumPnts() >= c_nMinPnts &&
           (static_cast<double>(box.xmax) - static_cast<double>(box.xmin) > dMin ||
            static_cast<double>(box.ymax) - static_cast<double>(box.ymin) > dMin);
}

/// Filters a region, divided where that helps. Regions still to do are kept in a list, not on the call
/// stack; the bounded depth of the division bounds the list.
class CRegionFilter
{
public:
    CRegionFilter(const CMorphWindow& window, CMorphBuffers& buffers, std::vector<unsigned char>& vecStays,
                  CMorphProgress& progress)
        : m_fHalf(window.fSize / 2.0F), m_fMaxDiff(window.fMaxDiff), m_buffers(buffers), m_vecStays(vecStays),
          m_progress(progress)
    {
    }

    void Filter(CMorphRegion region)
    {
        m_vecToDo.push_back(std::move(region));
        while (!m_vecToDo.empty())
        {
            const CMorphRegion next = std::move(m_vecToDo.back());
            m_vecToDo.pop_back();
            if (next.GetNumPnts() > 0)
                FilterOrDivide(next);
        }
    }

private:
    void FilterOrDivide(const CMorphRegion& region)
    {
        CWindowCells cells(region, m_fHalf);
        if (cells.IsCrowded() && IsWorthDividing(region, m_fHalf))
        {
            std::pair<CMorphRegion, CMorphRegion> halves = region.Divide(m_fHalf);
            m_vecToDo.push_back(std::move(halves.second));
            m_vecToDo.push_back(std::move(halves.first));
            return;
        }
        cells.SortPnts(region, m_buffers);
        CGroundDecision(cells, region.GetOwnBox(), m_fMaxDiff, m_buffers).Decide(m_vecStays, m_progress);
    }

    float m_fHalf;
    float m_fMaxDiff;
    CMorphBuffers& m_buffers;
    std::vector<unsigned char>& m_vecStays;
    CMorphProgress& m_progress;
    std::vector<CMorphRegion> m_vecToDo;
};

} // namespace

std::vector<unsigned char> FilterWindow(const CMorphPnts& pnts, const CMorphWindow& window,
                                        CMorphBuffers& buffers, CMorphProgress& progress)
{
    std::vector<unsigned char> vecStays(pnts.GetNumPnts(), 0);
    // A window of negative size, or of none that is a number, is empty: every point keeps its height.
    if (!(window.fSize >= 0.0F))
    {
        for (std::uint32_t i = 0; i < pnts.GetNumPnts(); ++i)
            vecStays[i] = pnts.GetPnt(i).z - pnts.GetPnt(i).z < window.fMaxDiff ? 1 : 0;
        return vecStays;
    }
    CMorphRegion region(pnts);
    if (!region.HasAll())
        FilterNotFinite(pnts, window, vecStays);
    CRegionFilter(window, buffers, vecStays, progress).Filter(std::move(region));
    return vecStays;
}
