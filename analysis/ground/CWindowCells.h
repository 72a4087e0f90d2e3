#ifndef ANALYSIS_GROUND_CWINDOWCELLS_H
#define ANALYSIS_GROUND_CWINDOWCELLS_H

#include <analysis/ground/CCellPnt.h>
#include <analysis/ground/CMorphBuffers.h>
#include <analysis/ground/CMorphRegion.h>
#include <analysis/ground/CWindowAxis.h>
#include <analysis/ground/CWindowRing.h>
#include <zor3geom/TPlanBox.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// The points of a region sorted into square cells, made for one size of window.
///
/// Cells lie row by row, at `nRow * GetNumCols() + nCol`. The cell edge divides half the window where
/// the points are dense enough; there are never many more cells than a third of the points.
/// Memory: 16 bytes a point and 9 bytes a cell.
class CWindowCells
{
public:
    /// @param region  not empty.
    /// @param fHalf   half the window, not below 0; may be infinite.
    CWindowCells(const CMorphRegion& region, float fHalf);

    /// Sorts the points in. Before it, only `IsCrowded` and the axes may be asked.
    ///
    /// @param buffers  holds the points; must outlive the object, which has them to itself.
    void SortPnts(const CMorphRegion& region, CMorphBuffers& buffers);

    /// Do the cells hold far more points than cells of the wanted size would, because the points cover
    /// little of their rectangle? Then the halves of the region may have finer ones.
    bool IsCrowded() const noexcept { return m_bCrowded; }

    const CWindowAxis& GetAxisX() const noexcept { return m_axisX; }
    const CWindowAxis& GetAxisY() const noexcept { return m_axisY; }
    int GetNumCols() const noexcept { return m_axisX.GetNumCells(); }
    int GetNumRows() const noexcept { return m_axisY.GetNumCells(); }
    std::size_t GetNumCells() const noexcept { return m_vecStart.size() - 1; }
    std::size_t GetNumPnts() const noexcept { return m_vecStart.back(); }

    std::size_t GetCell(int nRow, int nCol) const noexcept
    {
        return static_cast<std::size_t>(nRow) * static_cast<std::size_t>(GetNumCols()) +
               static_cast<std::size_t>(nCol);
    }
    bool IsEmpty(std::size_t nCell) const noexcept { return m_vecStart[nCell] == m_vecStart[nCell + 1]; }

    /// The points of a cell are [GetStart(nCell), GetStart(nCell + 1)).
    std::uint32_t GetStart(std::size_t nCell) const noexcept { return m_vecStart[nCell]; }
    const CCellPnt& GetPnt(std::uint32_t i) const noexcept { return m_pPnts[i]; }

    /// The window of a point at this place.
    zor::geom::TPlanBox<float> CalcBox(float x, float y) const noexcept
    {
        return {m_axisX.GetWindowMin(x), m_axisY.GetWindowMin(y), m_axisX.GetWindowMax(x),
                m_axisY.GetWindowMax(y)};
    }
    CWindowRing CalcRing(const zor::geom::TPlanBox<float>& box) const noexcept
    {
        return {m_axisX.GetCell(box.xmin), m_axisX.GetCell(box.xmax), m_axisY.GetCell(box.ymin),
                m_axisY.GetCell(box.ymax)};
    }

    /// Least height of a cell; +infinity without points.
    float GetMin(std::size_t nCell) const noexcept { return m_vecMin[nCell]; }
    const std::vector<float>& GetMins() const noexcept { return m_vecMin; }

    /// Brings the points of a cell into the order of their heights, with the first call: later calls leave
    /// the order as it is.
    void SortByHeight(std::size_t nCell)
    {
        if (m_vecSorted[nCell] == 0)
            SortCell(nCell);
    }

private:
    void SortCell(std::size_t nCell);
    void CountPnts(const CMorphRegion& region);

    CWindowAxis m_axisX;
    CWindowAxis m_axisY;
    bool m_bCoarse = false; // coarser than windows of this size would like
    bool m_bCrowded = false;
    std::vector<std::uint32_t> m_vecStart;
    std::vector<float> m_vecMin;
    std::vector<unsigned char> m_vecSorted; // by height
    CCellPnt* m_pPnts = nullptr;
};

#endif
