#include <analysis/ground/CErodedHeights.h>

#include <algorithm>
#include <limits>

using zor::geom::TPlanBox;

namespace
{

// It takes less time to look at up to so many points of a cell without a branch than to sort them.
constexpr std::uint32_t c_nFewPnts = 4;

} // namespace

CErodedHeights::CErodedHeights(CWindowCells& cells, CBlockMin& blocks, CMorphBuffers& buffers)
    : m_cells(cells), m_blocks(blocks), m_vecDone(cells.GetNumCells(), 0),
      m_pHeights(buffers.heights.Provide(cells.GetNumPnts()))
{
    blocks.AddLines();
}

float CErodedHeights::CalcCell(std::size_t nCell)
{
    // The order of the points must not change after their heights are noted.
    m_cells.SortByHeight(nCell);
    m_vecDone[nCell] = 1;
    float fMax = -std::numeric_limits<float>::infinity();
    for (std::uint32_t i = m_cells.GetStart(nCell); i < m_cells.GetStart(nCell + 1); ++i)
    {
        m_pHeights[i] = CalcHeight(m_cells.GetPnt(i));
        fMax = std::max(fMax, m_pHeights[i]);
    }
    return fMax;
}

// The cells inside the window give their minimum at once. Of the ring of cells around them, a side that has
// nothing lower is dropped as a whole, then a cell, and only what is left is looked at point by point.
float CErodedHeights::CalcHeight(const CCellPnt& pnt)
{
    const TPlanBox<float> box = m_cells.CalcBox(pnt.x, pnt.y);
    const CWindowRing ring = m_cells.CalcRing(box);
    float fMin = pnt.z;
    if (ring.nRowMax - ring.nRowMin < 2 || ring.nColMax - ring.nColMin < 2) // nothing but ring
    {
        ScanCells(box, ring, fMin);
        return fMin;
    }
    const CWindowRing core{ring.nColMin + 1, ring.nColMax - 1, ring.nRowMin + 1, ring.nRowMax - 1};
    fMin = std::min(fMin, m_blocks.CalcRectMin(core.nRowMin, core.nRowMax, core.nColMin, core.nColMax));
    for (const int nRow : {ring.nRowMin, ring.nRowMax})
        if (m_blocks.CalcRowMin(nRow, ring.nColMin, ring.nColMax) < fMin)
            ScanCells(box, {ring.nColMin, ring.nColMax, nRow, nRow}, fMin);
    for (const int nCol : {ring.nColMin, ring.nColMax})
        if (m_blocks.CalcColMin(nCol, core.nRowMin, core.nRowMax) < fMin)
            ScanCells(box, {nCol, nCol, core.nRowMin, core.nRowMax}, fMin);
    return fMin;
}

void CErodedHeights::ScanCells(const TPlanBox<float>& box, const CWindowRing& ring, float& fMin)
{
    for (int nRow = ring.nRowMin; nRow <= ring.nRowMax; ++nRow)
        for (int nCol = ring.nColMin; nCol <= ring.nColMax; ++nCol)
        {
            const std::size_t nCell = m_cells.GetCell(nRow, nCol);
            if (m_cells.GetMin(nCell) < fMin)
                ScanPnts(box, nCell, fMin);
        }
}

void CErodedHeights::ScanPnts(const TPlanBox<float>& box, std::size_t nCell, float& fMin)
{
    std::uint32_t i = m_cells.GetStart(nCell);
    const std::uint32_t nEnd = m_cells.GetStart(nCell + 1);
    if (nEnd - i <= c_nFewPnts)
    {
        for (; i < nEnd; ++i)
            fMin = std::min(fMin, box.Contains(m_cells.GetPnt(i)) ? m_cells.GetPnt(i).z : fMin);
        return;
    }
    // In the order of their heights the first point inside the window is the lowest one inside.
    m_cells.SortByHeight(nCell);
    while (i < nEnd && m_cells.GetPnt(i).z < fMin && !box.Contains(m_cells.GetPnt(i)))
        ++i;
    if (i < nEnd)
        fMin = std::min(fMin, m_cells.GetPnt(i).z);
}
