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
/// Most are decided by the bounds of their cell. For the others the question is whether the window has a
/// point whose eroded height is close enough below; eroded heights are made cell by cell where the answer
/// can depend on them.
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

    std::uint32_t DecideCell(std::size_t nCell, int nCol, float fLow, float fHigh,
                             std::vector<unsigned char>& vecStays);
    bool IsOpen(const CCellPnt& pnt, float fLow, float fHigh) const noexcept;
    bool FindSupport(const CCellPnt& pnt, int nCol);
    bool FindSupportInRow(const CCellPnt& pnt, const zor::geom::TPlanBox<float>& box, const CWindowRing& ring,
                          int nRow, int nCol);
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
