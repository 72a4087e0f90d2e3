#ifndef ANALYSIS_GROUND_CWINDOWRING_H
#define ANALYSIS_GROUND_CWINDOWRING_H

/// The columns and rows of cells that the window of one point touches, all limits included. Cells strictly
/// between the limits are wholly inside the window.
struct CWindowRing
{
    int nColMin;
    int nColMax;
    int nRowMin;
    int nRowMax;
};

#endif
