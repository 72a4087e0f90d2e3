#include <analysis/outline/CSegmentGrid.h>

#include <cmath>

namespace
{

constexpr double c_dWiden = 4.0;         // a grid's cells over those of the finer one
constexpr std::int32_t c_nMaxAcross = 3; // cells that a segment is listed in, each way

std::int32_t CountCells(double dLength, double dEdge) noexcept
{
    return static_cast<std::int32_t>(dLength / dEdge) + 1;
}

} // namespace

// The finest edge is bounded from below so that a long and narrow box has no more cells than asked for, twice
// over.
CSegmentGrid::CSegmentGrid(const TBox& box, std::size_t nNumCells)
    : m_dMinX(static_cast<double>(box.xmin)), m_dMinY(static_cast<double>(box.ymin))
{
    const double dWidth = static_cast<double>(box.xmax) - m_dMinX + 1.0;
    const double dHeight = static_cast<double>(box.ymax) - m_dMinY + 1.0;
    const double dNum = static_cast<double>(nNumCells);
    m_dSlack = 1.0e-9 * std::max(dWidth, dHeight);
    double dEdge = std::max({std::sqrt(dWidth * dHeight / dNum), dWidth / dNum, dHeight / dNum});
    do
    {
        const std::int32_t nNumCols = CountCells(dWidth, dEdge);
        const std::int32_t nNumRows = CountCells(dHeight, dEdge);
        const std::size_t nNum = static_cast<std::size_t>(nNumCols) * static_cast<std::size_t>(nNumRows);
        m_vecGrids.push_back({dEdge, nNumCols, nNumRows, 0, std::vector<std::int32_t>(nNum, -1)});
        dEdge *= c_dWiden;
    } while (m_vecGrids.back().vecFirst.size() > 1);
}

CSegmentGrid::CCells CSegmentGrid::FindCells(const CGrid& grid, const TBox& box) const noexcept
{
    return {ToCell(static_cast<double>(box.xmin) - m_dMinX, grid.dEdge, grid.nNumCols),
            ToCell(static_cast<double>(box.ymin) - m_dMinY, grid.dEdge, grid.nNumRows),
            ToCell(static_cast<double>(box.xmax) - m_dMinX, grid.dEdge, grid.nNumCols),
            ToCell(static_cast<double>(box.ymax) - m_dMinY, grid.dEdge, grid.nNumRows)};
}

CSegmentGrid::CGrid& CSegmentGrid::ChooseGrid(const TBox& box, CCells& cells) noexcept
{
    for (CGrid& grid : m_vecGrids)
    {
        cells = FindCells(grid, box);
        if (cells.nColLast - cells.nColFirst < c_nMaxAcross &&
            cells.nRowLast - cells.nRowFirst < c_nMaxAcross)
            return grid;
    }
    return m_vecGrids.back();
}

void CSegmentGrid::Push(const TBox& box)
{
    CCells cells{};
    CGrid& grid = ChooseGrid(box, cells);
    for (std::int32_t nRow = cells.nRowFirst; nRow <= cells.nRowLast; ++nRow)
        for (std::int32_t nCol = cells.nColFirst; nCol <= cells.nColLast; ++nCol)
        {
            std::int32_t& nFirst = grid.vecFirst[grid.GetCell(nCol, nRow)];
            m_vecEntries.push_back({m_nNum, nFirst});
            nFirst = static_cast<std::int32_t>(m_vecEntries.size() - 1);
        }
    ++grid.nNum;
    ++m_nNum;
}

void CSegmentGrid::Pop(const TBox& box) noexcept
{
    CCells cells{};
    CGrid& grid = ChooseGrid(box, cells);
    for (std::int32_t nRow = cells.nRowLast; nRow >= cells.nRowFirst; --nRow)
        for (std::int32_t nCol = cells.nColLast; nCol >= cells.nColFirst; --nCol)
        {
            grid.vecFirst[grid.GetCell(nCol, nRow)] = m_vecEntries.back().nNext;
            m_vecEntries.pop_back();
        }
    --grid.nNum;
    --m_nNum;
}
