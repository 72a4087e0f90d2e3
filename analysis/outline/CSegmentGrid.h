#ifndef ANALYSIS_OUTLINE_CSEGMENTGRID_H
#define ANALYSIS_OUTLINE_CSEGMENTGRID_H

#include <zor3geom/LINE_2D.h>
#include <zor3geom/TPlanBox.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Segments of a path by their place in plan view, added and taken away at the end of the path only.
///
/// A grid of cells, above it one with cells four times as wide, and so on up to a single cell. A segment is
/// listed in the cells that its box meets, in the finest grid where these are few; the newest segment of a
/// cell comes first in its list, so that taking the last one away is taking the first one off some lists.
class CSegmentGrid
{
public:
    using TBox = zor::geom::TPlanBox<std::int32_t>; // compact units

    /// @param box        holds all segments to come; not empty.
    /// @param nNumCells  of the finest grid, about; at least 1. 4 bytes each. Throws std::bad_alloc.
    CSegmentGrid(const TBox& box, std::size_t nNumCells);

    /// Adds the next segment, whose number is the one before's and one more; the first one has 0.
    /// Throws std::bad_alloc; the grid is then good for nothing.
    void Push(const TBox& box);

    /// Takes the last one away. @param box  the box that it came with.
    void Pop(const TBox& box) noexcept;

    /// Shows `onSegment(i)` segments, among them all those that a line meets, some more than once, until
    /// `onSegment` returns true.
    ///
    /// @return whether it did.
    template <class OnSegment>
    bool FindAlong(const zor::geom::LINE_2D& line, OnSegment onSegment) const
    {
        const zor::geom::LINE_2D rel(line.x1 - m_dMinX, line.y1 - m_dMinY, line.x2 - m_dMinX,
                                     line.y2 - m_dMinY);
        return std::any_of(m_vecGrids.begin(), m_vecGrids.end(),
                           [&](const CGrid& grid)
                           { return grid.nNum > 0 && FindInGrid(grid, rel, onSegment); });
    }

    /// Shows `onSegment(i)` the segments of the cells that lie so many cells away from a place, of any of a
    /// cell the newest first: of rings 0, 1, 2... all segments nearer than n cells have come after ring n,
    /// but for long ones farther than a few cells. Some come more than once.
    ///
    /// @param isHidden  `isHidden(box)`: the segments of a cell are left out. The cells of ring 0 are not
    /// asked for.
    template <class IsHidden, class OnSegment>
    void VisitRing(double x, double y, std::int32_t nRing, IsHidden isHidden, OnSegment onSegment) const;

    double GetEdge() const noexcept { return m_vecGrids.front().dEdge; } ///< of the finest cells

private:
    struct CGrid
    {
        double dEdge;
        std::int32_t nNumCols;
        std::int32_t nNumRows;
        std::int64_t nNum;                  // segments
        std::vector<std::int32_t> vecFirst; // entry of each cell, row by row; -1: none

        std::size_t GetCell(std::int32_t nCol, std::int32_t nRow) const noexcept
        {
            return static_cast<std::size_t>(nRow) * static_cast<std::size_t>(nNumCols) +
                   static_cast<std::size_t>(nCol);
        }
    };

    struct CEntry
    {
        std::int32_t nSegment;
        std::int32_t nNext; // entry of the same cell; -1: none
    };

    struct CCells
    {
        std::int32_t nColFirst;
        std::int32_t nRowFirst;
        std::int32_t nColLast;
        std::int32_t nRowLast;
    };

    static std::int32_t ToCell(double d, double dEdge, std::int32_t nNum) noexcept
    {
        return static_cast<std::int32_t>(std::clamp(d / dEdge, 0.0, nNum - 1.0));
    }

    CCells FindCells(const CGrid& grid, const TBox& box) const noexcept;
    CGrid& ChooseGrid(const TBox& box, CCells& cells) noexcept;

    template <class OnSegment>
    bool FindInGrid(const CGrid& grid, const zor::geom::LINE_2D& line, OnSegment& onSegment) const;
    template <class OnSegment>
    bool FindInCell(const CGrid& grid, std::int32_t nCol, std::int32_t nRow, OnSegment& onSegment) const;

    template <class Show>
    void VisitLong(double x, double y, Show& show) const;

    double m_dMinX;
    double m_dMinY;
    std::vector<CGrid> m_vecGrids; // finest first
    std::vector<CEntry> m_vecEntries;
    std::int32_t m_nNum = 0;
    double m_dSlack; // far more than rounding does to a place
};

template <class IsHidden, class OnSegment>
void CSegmentGrid::VisitRing(double x, double y, std::int32_t nRing, IsHidden isHidden,
                             OnSegment onSegment) const
{
    const auto show = [&](std::int32_t i)
    {
        onSegment(i);
        return false;
    };
    const CGrid& finest = m_vecGrids.front();
    const std::int32_t nMidCol = ToCell(x - m_dMinX, finest.dEdge, finest.nNumCols);
    const std::int32_t nMidRow = ToCell(y - m_dMinY, finest.dEdge, finest.nNumRows);
    const std::int32_t nLastRow = std::min(nMidRow + nRing, finest.nNumRows - 1);
    const std::int32_t nLastCol = std::min(nMidCol + nRing, finest.nNumCols - 1);
    for (std::int32_t nRow = std::max(nMidRow - nRing, 0); nRow <= nLastRow; ++nRow)
    {
        const bool bWholeRow = nRow == nMidRow - nRing || nRow == nMidRow + nRing;
        for (std::int32_t nCol = bWholeRow ? std::max(nMidCol - nRing, 0) : nMidCol - nRing; nCol <= nLastCol;
             nCol += bWholeRow || nRing == 0 ? 1 : 2 * nRing)
        {
            if (nCol < 0 || finest.vecFirst[finest.GetCell(nCol, nRow)] == -1)
                continue;
            const double dCellX = m_dMinX + nCol * finest.dEdge;
            const double dCellY = m_dMinY + nRow * finest.dEdge;
            if (nRing == 0 || !isHidden({dCellX, dCellY, dCellX + finest.dEdge, dCellY + finest.dEdge}))
                FindInCell(finest, nCol, nRow, show);
        }
    }
    if (nRing == 0)
        VisitLong(x, y, show);
}

/// Shows the long segments around a place: those of the cells next to its own in all but the finest grid.
template <class Show>
void CSegmentGrid::VisitLong(double x, double y, Show& show) const
{
    for (std::size_t i = 1; i < m_vecGrids.size(); ++i) // of the long segments those around
    {
        const CGrid& grid = m_vecGrids[i];
        if (grid.nNum == 0)
            continue;
        const std::int32_t nCol = ToCell(x - m_dMinX, grid.dEdge, grid.nNumCols);
        const std::int32_t nRow = ToCell(y - m_dMinY, grid.dEdge, grid.nNumRows);
        for (std::int32_t r = std::max(nRow - 1, 0); r <= std::min(nRow + 1, grid.nNumRows - 1); ++r)
            for (std::int32_t c = std::max(nCol - 1, 0); c <= std::min(nCol + 1, grid.nNumCols - 1); ++c)
                FindInCell(grid, c, r, show);
    }
}

template <class OnSegment>
bool CSegmentGrid::FindInCell(const CGrid& grid, std::int32_t nCol, std::int32_t nRow,
                              OnSegment& onSegment) const
{
    std::int32_t nEntry = grid.vecFirst[grid.GetCell(nCol, nRow)];
    while (nEntry != -1)
    {
        const CEntry& entry = m_vecEntries[static_cast<std::size_t>(nEntry)];
        if (onSegment(entry.nSegment))
            return true;
        nEntry = entry.nNext;
    }
    return false;
}

// Row by row from the line's beginning: in each, the cells between the places where the line enters and
// leaves it.
template <class OnSegment>
bool CSegmentGrid::FindInGrid(const CGrid& grid, const zor::geom::LINE_2D& line, OnSegment& onSegment) const
{
    const std::int32_t nLastRow = ToCell(line.y2, grid.dEdge, grid.nNumRows);
    const bool bUp = line.y2 >= line.y1;
    const bool bEast = line.x2 >= line.x1;
    const double dSlope = line.y1 == line.y2 ? 0.0 : (line.x2 - line.x1) / (line.y2 - line.y1);
    const double dWest = std::min(line.x1, line.x2);
    const double dEast = std::max(line.x1, line.x2);
    for (std::int32_t nRow = ToCell(line.y1, grid.dEdge, grid.nNumRows);; nRow += bUp ? 1 : -1)
    {
        const double dEnterY = bUp ? nRow * grid.dEdge - m_dSlack : (nRow + 1) * grid.dEdge + m_dSlack;
        const double dLeaveY = bUp ? (nRow + 1) * grid.dEdge + m_dSlack : nRow * grid.dEdge - m_dSlack;
        double dEnter = line.x1 + (dEnterY - line.y1) * dSlope;
        double dLeave = line.x1 + (dLeaveY - line.y1) * dSlope;
        if (line.y1 == line.y2)
        {
            dEnter = line.x1;
            dLeave = line.x2;
        }
        const double dSlack = bEast ? m_dSlack : -m_dSlack;
        dEnter = std::clamp(dEnter - dSlack, dWest, dEast);
        dLeave = std::clamp(dLeave + dSlack, dWest, dEast);
        const std::int32_t nLastCol = ToCell(dLeave, grid.dEdge, grid.nNumCols);
        for (std::int32_t nCol = ToCell(dEnter, grid.dEdge, grid.nNumCols);; nCol += bEast ? 1 : -1)
        {
            if (FindInCell(grid, nCol, nRow, onSegment))
                return true;
            if (nCol == nLastCol)
                break;
        }
        if (nRow == nLastRow)
            return false;
    }
}

#endif
