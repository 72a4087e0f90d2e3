#ifndef ANALYSIS_GROUND_COPENINGBOUNDS_H
#define ANALYSIS_GROUND_COPENINGBOUNDS_H

#include <analysis/ground/CBlockMin.h>
#include <analysis/ground/CWindowCells.h>

#include <cstddef>
#include <vector>

/// Bounds of the opened height, for all points of a cell at once, from whole cells alone.
///
/// The opened height of a point is the greatest eroded height in its window, an eroded height the least
/// height in a window. For the points of a cell, the cells that all their windows hold and the cells
/// that some window touches bound the one and the other from both sides.
class COpeningBounds
{
public:
    /// @param cells   sorted; must outlive the object.
    COpeningBounds(const CWindowCells& cells, const CBlockMin& blocks);

    /// Bounds of the opened height, by column of a row; -infinity for cells without points.
    struct CRow
    {
        std::vector<float> vecLow;  ///< never above any opened height of the cell
        std::vector<float> vecHigh; ///< never below
    };
    void CalcRow(int nRow, CRow& row) const;

    /// No eroded height of the cell is greater; -infinity for a cell without points.
    float GetErodedMax(std::size_t nCell) const noexcept { return m_vecErodedMax[nCell]; }
    void LowerErodedMax(std::size_t nCell, float fMax) noexcept { m_vecErodedMax[nCell] = fMax; }

    /// Greatest `GetErodedMax` of a row over the columns that windows from column `nCol` touch.
    float GetReachedMax(int nRow, int nCol) const noexcept
    {
        return m_vecReachedMax[m_cells.GetCell(nRow, nCol)];
    }
    void LowerReachedMax(int nRow, int nCol, float fMax) noexcept
    {
        m_vecReachedMax[m_cells.GetCell(nRow, nCol)] = fMax;
    }

private:
    void CalcEroded(const CBlockMin& blocks);
    void CalcReached();

    const CWindowCells& m_cells;
    std::vector<float> m_vecErodedMin;  // -infinity without points
    std::vector<float> m_vecErodedMax;  // the same
    std::vector<float> m_vecCoreMax;    // greatest eroded minimum over the columns in all windows
    std::vector<float> m_vecReachedMax; // greatest eroded maximum over the columns that windows touch
};

#endif
