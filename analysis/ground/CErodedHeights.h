#ifndef ANALYSIS_GROUND_CERODEDHEIGHTS_H
#define ANALYSIS_GROUND_CERODEDHEIGHTS_H

#include <analysis/ground/CBlockMin.h>
#include <analysis/ground/CMorphBuffers.h>
#include <analysis/ground/CWindowCells.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// Eroded heights, exact: for each point of the cells that are asked for, the least height in its window.
class CErodedHeights
{
public:
    /// @param cells   sorted; points change their order inside their cells. Must outlive the object.
    /// @param blocks  of these cells; must outlive the object.
    /// @param buffers holds the heights; must outlive the object, which has them to itself.
    CErodedHeights(CWindowCells& cells, CBlockMin& blocks, CMorphBuffers& buffers);

    /// Sorts a cell by height and makes the eroded heights of all its points.
    /// @return the greatest of them; -infinity without points. REQUIRES: not IsDone(nCell).
    float CalcCell(std::size_t nCell);

    bool IsDone(std::size_t nCell) const noexcept { return m_vecDone[nCell] != 0; }

    /// REQUIRES: the cell of point `i` is done.
    float GetHeight(std::uint32_t i) const noexcept { return m_pHeights[i]; }

private:
    float CalcHeight(const CCellPnt& pnt);
    void ScanCells(const zor::geom::TPlanBox<float>& box, const CWindowRing& ring, float& fMin);
    void ScanPnts(const zor::geom::TPlanBox<float>& box, std::size_t nCell, float& fMin);

    CWindowCells& m_cells;
    const CBlockMin& m_blocks;
    std::vector<unsigned char> m_vecDone; // by cell
    float* m_pHeights;                    // by point, as sorted
};

#endif
