#ifndef ANALYSIS_GROUND_CWINDOWBOX_H
#define ANALYSIS_GROUND_CWINDOWBOX_H

#include <cstdint>

/// A point sorted into a cell.
struct CCellPnt
{
    float x;
    float y;
    float z;
    std::uint32_t nPos; ///< its position in `CMorphPnts`
};

/// Closed box of the window of one point.
struct CWindowBox
{
    float fMinX;
    float fMaxX;
    float fMinY;
    float fMaxY;

    bool IsInside(const CCellPnt& pnt) const noexcept
    {
        // Without branches: which side a point fails on is anybody's guess.
        const unsigned nInX = static_cast<unsigned>(pnt.x >= fMinX) & static_cast<unsigned>(pnt.x <= fMaxX);
        const unsigned nInY = static_cast<unsigned>(pnt.y >= fMinY) & static_cast<unsigned>(pnt.y <= fMaxY);
        return (nInX & nInY) != 0;
    }
};

/// Cells that the window of one point touches: those strictly between are wholly inside it.
struct CWindowRing
{
    int nColMin;
    int nColMax;
    int nRowMin;
    int nRowMax;
};

#endif
