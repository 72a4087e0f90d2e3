#ifndef ANALYSIS_GROUND_CGROUNDDECISION_H
#define ANALYSIS_GROUND_CGROUNDDECISION_H

#include <analysis/ground/CBlockMin.h>
#include <analysis/ground/CErodedHeights.h>
#include <analysis/ground/CMorphProgress.h>
#include <analysis/ground/COpeningBounds.h>
#include <analysis/ground/CWindowCells.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Decides for the own points of a region which of them stay: those less than a given height above the
/// opened surface.
///
/// The bounds of its cell decide most points. Another point stays if its window holds support, a point
/// whose eroded height is close enough below. The search for support makes the eroded heights of a cell
/// only where the bound of the cell leaves the answer open.
class CGroundDecision
{
public:
    /// @param cells     the points, sorted; must outlive the object.
    /// @param boxOwn    points outside it are not decided about.
    /// @param fMaxDiff  points with height minus opened height below this stay.
    /// @param buffers   must outlive the object.
    CGroundDecision(CWindowCells& cells, const zor::geom::TPlanBox<float>& boxOwn, float fMaxDiff,
                    CMorphBuffers& buffers);

    /// Sets `vecStays` to 1 at the positions of the points that stay. Others are left as they are.
    void Decide(std::vector<unsigned char>& vecStays, CMorphProgress& progress);

private:
    // The published filter's comparison; not below for anything that is not a number. Subtraction being
    // monotone, it holds for the greatest of some heights when it holds for one of them.
    bool IsBelow(float z, float fOpened) const noexcept { return z - fOpened < m_fMaxDiff; }

    /// @return how many of the cell's points it decided about.
    std::uint32_t DecideCell(std::size_t nCell, int nCol, float fLow, float fHigh,
                             std::vector<unsigned char>& vecStays);
    /// Do the bounds of its cell leave the point undecided?
    bool IsOpen(const CCellPnt& pnt, float fLow, float fHigh) const noexcept;

    /// Makes sure of the eroded heights of a cell. After it the points of the cell keep their order, and
    /// `m_bounds` has the greatest of their eroded heights instead of a bound of it.
    void EnsureHeights(std::size_t nCell);

    /// @param nCol  column of the point's cell.
    bool FindSupport(const CCellPnt& pnt, int nCol);
    bool FindSupportInRow(const CCellPnt& pnt, const zor::geom::TPlanBox<float>& box, const CWindowRing& ring,
                          int nRow, int nCol);
    /// @param bInside  whether the whole cell is in the window.
    bool FindSupportInCell(const CCellPnt& pnt, const zor::geom::TPlanBox<float>& box, bool bInside,
                           std::size_t nCell);

    CWindowCells& m_cells;
    zor::geom::TPlanBox<float> m_boxOwn;
    float m_fMaxDiff;
    CMorphBuffers& m_buffers;
    CBlockMin m_blocks;
    COpeningBounds m_bounds;
    std::optional<CErodedHeights> m_heights; // from the first point on that the bounds leave open
};

#endif
