#include <analysis/ground/CWindowCells.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

// Half a window is this many cells where the points are dense enough. Finer cells decide more points
// without looking at single ones, and cost more to go through.
constexpr int c_nCellsPerHalf = 12;

// More points a cell than this, for the average point, is crowded. Evenly spread points have 3.
constexpr double c_dCrowd = 24.0;

struct CExtent
{
    double dX;
    double dY;
};

// Cells along one axis; the empty ones before and behind that CWindowAxis adds, at most that many again.
double CalcNumCells(double dExtent, double dCellSize, double dHalf) noexcept
{
    const double dNum = std::floor(dExtent / dCellSize) + 1.0;
    return dNum + 2.0 * std::min(dNum, std::max(dHalf / dCellSize, 1.0) + 1.5);
}

// Edge of the cells: that part of half the window, but about three points a cell on the average.
double CalcCellSize(const CExtent& extent, double dNumPnts, double dHalf)
{
    const double dMaxCells = dNumPnts / 3.0 + 64.0;
    double dMinSize = std::sqrt(extent.dX / dMaxCells * extent.dY);
    dMinSize = std::max({dMinSize, extent.dX / dMaxCells, extent.dY / dMaxCells});

    double dSize = std::max(std::min(dHalf, 1.0e40) / c_nCellsPerHalf, dMinSize);
    if (!(dSize > 1.0e-60))
        return 1.0; // no extent and no window: one cell
    // A narrow cloud has mostly empty cells around it. Few cells, whatever they hold, are no burden.
    while (CalcNumCells(extent.dX, dSize, dHalf) * CalcNumCells(extent.dY, dSize, dHalf) >
           1.1 * dMaxCells + 4096.0)
        dSize *= 1.02;
    // Half the window in whole cells: most windows of one cell then reach the same cells.
    const double dCells = std::floor(dHalf / dSize);
    return dCells >= 1.0 && dCells < 1.0e6 ? dHalf / dCells : dSize;
}

} // namespace

CWindowCells::CWindowCells(const CMorphRegion& region, float fHalf)
{
    const zor::geom::TPlanBox<float>& box = region.GetBox();
    const CExtent extent{static_cast<double>(box.xmax) - static_cast<double>(box.xmin),
                         static_cast<double>(box.ymax) - static_cast<double>(box.ymin)};
    const double dHalf = static_cast<double>(fHalf);
    const double dSize = CalcCellSize(extent, static_cast<double>(region.GetNumPnts()), dHalf);
    m_bCoarse = dSize > 1.01 * dHalf / c_nCellsPerHalf;
    m_axisX = CWindowAxis(box.xmin, box.xmax, dSize, fHalf);
    m_axisY = CWindowAxis(box.ymin, box.ymax, dSize, fHalf);
    CountPnts(region);
}

// Leaves in m_vecStart[i + 1] the end of cell i's points.
void CWindowCells::CountPnts(const CMorphRegion& region)
{
    m_vecStart.resize(GetCell(GetNumRows(), 0) + 1);
    region.ForEachPnt(
        [this](const pcl::PointXYZ& pnt, std::uint32_t)
        {
            const int nCol = m_axisX.GetCell(pnt.x);
            const int nRow = m_axisY.GetCell(pnt.y);
            m_axisX.AddCoordinate(nCol, pnt.x);
            m_axisY.AddCoordinate(nRow, pnt.y);
            ++m_vecStart[GetCell(nRow, nCol) + 1];
        });
    m_axisX.CalcReaches();
    m_axisY.CalcReaches();

    double dSquares = 0.0;
    std::uint32_t nSum = 0;
    for (std::uint32_t& nStart : m_vecStart)
    {
        dSquares += static_cast<double>(nStart) * static_cast<double>(nStart);
        nSum += nStart;
        nStart = nSum;
    }
    m_bCrowded = m_bCoarse && dSquares > c_dCrowd * static_cast<double>(nSum);
}

void CWindowCells::SortPnts(const CMorphRegion& region, CMorphBuffers& buffers)
{
    m_pPnts = buffers.pnts.Provide(GetNumPnts());
    m_vecMin.assign(GetNumCells(), std::numeric_limits<float>::infinity());
    m_vecSorted.assign(GetNumCells(), 0);

    // Each start runs to the end of its cell while the cell fills, and is the next one's start then:
    // shifted by one cell, the array is as before.
    region.ForEachPnt(
        [this](const pcl::PointXYZ& pnt, std::uint32_t nPos)
        {
            const std::size_t nCell = GetCell(m_axisY.GetCell(pnt.y), m_axisX.GetCell(pnt.x));
            m_pPnts[m_vecStart[nCell]++] = {pnt.x, pnt.y, pnt.z, nPos};
            m_vecMin[nCell] = std::min(m_vecMin[nCell], pnt.z);
        });
    for (std::size_t nCell = GetNumCells(); nCell > 0; --nCell)
        m_vecStart[nCell] = m_vecStart[nCell - 1];
    m_vecStart[0] = 0;
}

void CWindowCells::SortCell(std::size_t nCell)
{
    m_vecSorted[nCell] = 1;
    std::sort(m_pPnts + m_vecStart[nCell], m_pPnts + m_vecStart[nCell + 1],
              [](const CCellPnt& a, const CCellPnt& b) { return a.z < b.z; });
}
