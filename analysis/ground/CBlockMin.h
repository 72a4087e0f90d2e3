#ifndef ANALYSIS_GROUND_CBLOCKMIN_H
#define ANALYSIS_GROUND_CBLOCKMIN_H

#include <analysis/ground/CWindowCells.h>

#include <cstddef>
#include <vector>

/// Least height in rectangles of cells, from the minima of overlapping blocks of cells: four blocks for
/// a rectangle that is at least one block and at most two blocks wide and high.
///
/// REQUIRES of every rectangle: inside the cells. An empty one has +infinity.
class CBlockMin
{
public:
    /// @param cells  sorted; must outlive the object.
    explicit CBlockMin(const CWindowCells& cells);

    float CalcRectMin(int nRowMin, int nRowMax, int nColMin, int nColMax) const noexcept;

    /// The same for one row or one column, for which `AddLines` must have been called.
    float CalcRowMin(int nRow, int nColMin, int nColMax) const noexcept;
    float CalcColMin(int nCol, int nRowMin, int nRowMax) const noexcept;

    /// Makes the blocks of single rows and of single columns, with the first call.
    void AddLines();

private:
    float ScanCells(int nRowMin, int nRowMax, int nColMin, int nColMax) const noexcept;

    const CWindowCells& m_cells;
    int m_nBlockX;
    int m_nBlockY;
    std::vector<float> m_vecRect; // at each cell, the block of which it is the first cell
    std::vector<float> m_vecRow;
    std::vector<float> m_vecCol;
};

#endif
