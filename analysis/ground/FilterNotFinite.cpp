#include <analysis/ground/FilterNotFinite.h>

#include <analysis/ground/CMorphRegion.h>
#include <analysis/ground/CWindowCells.h>

#include <cmath>
#include <optional>

namespace
{

bool HasPlanPosition(const pcl::PointXYZ& pnt) noexcept
{
    return std::isfinite(pnt.x) && std::isfinite(pnt.y);
}

bool HasPntInWindow(const CWindowCells& cells, float x, float y)
{
    const zor::geom::TPlanBox<float> box = cells.CalcBox(x, y);
    const CWindowRing ring = cells.CalcRing(box);
    for (int nRow = ring.nRowMin; nRow <= ring.nRowMax; ++nRow)
        for (int nCol = ring.nColMin; nCol <= ring.nColMax; ++nCol)
        {
            const std::size_t nCell = cells.GetCell(nRow, nCol);
            for (std::uint32_t i = cells.GetStart(nCell); i < cells.GetStart(nCell + 1); ++i)
                if (box.Contains(cells.GetPnt(i)))
                    return true;
        }
    return false;
}

// Whether the window of a point at minus infinity holds a finite point; the cells are made when first asked.
class CWindowProbe
{
public:
    CWindowProbe(const CMorphPnts& pnts, float fHalf) : m_region(pnts), m_fHalf(fHalf) {}

    bool HasPnt(float x, float y)
    {
        if (!(m_fHalf >= 0.0F) || m_region.GetNumPnts() == 0)
            return false;
        if (!m_cells)
        {
            m_cells.emplace(m_region, m_fHalf);
            m_cells->SortPnts(m_region, m_buffers);
        }
        return HasPntInWindow(*m_cells, x, y);
    }

private:
    CMorphRegion m_region;
    float m_fHalf;
    CMorphBuffers m_buffers;
    std::optional<CWindowCells> m_cells;
};

} // namespace

void FilterNotFinite(const CMorphPnts& pnts, const CMorphWindow& window, std::vector<unsigned char>& vecStays)
{
    std::optional<CWindowProbe> probe;
    for (std::uint32_t i = 0; i < pnts.GetNumPnts(); ++i)
    {
        const pcl::PointXYZ& pnt = pnts.GetPnt(i);
        if (CMorphPnts::IsFinite(pnt))
            continue;
        bool bStays = pnt.z - pnt.z < window.fMaxDiff; // empty window: the point keeps its height
        // Of the heights that are not finite, minus infinity alone lies below a finite surface. Where the
        // window holds no finite point, the difference is not a number.
        if (HasPlanPosition(pnt))
        {
            bStays = pnt.z < 0.0F && pnt.z < window.fMaxDiff;
            if (bStays && !probe)
                probe.emplace(pnts, window.fSize / 2.0F);
            bStays = bStays && probe->HasPnt(pnt.x, pnt.y);
        }
        vecStays[i] = bStays ? 1 : 0;
    }
}
