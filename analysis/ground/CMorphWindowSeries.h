#ifndef ANALYSIS_GROUND_CMORPHWINDOWSERIES_H
#define ANALYSIS_GROUND_CMORPHWINDOWSERIES_H

/// One step of the ground filter.
struct CMorphWindow
{
    float fSize = 0.0F;    ///< edge of the square window, coordinate units
    float fMaxDiff = 0.0F; ///< a point less than this above the opened surface stays
};

/// The parameters of the ground filter that decide about its windows, as its setters name them.
struct CMorphParams
{
    int nMaxWindowSize = 0;
    float fSlope = 0.0F;
    float fMaxDistance = 0.0F;
    float fInitialDistance = 0.0F;
    float fCellSize = 0.0F;
    float fBase = 0.0F;
    bool bExponential = false;
};

/// The windows of the ground filter one by one, growing until one reaches the largest size.
///
/// Sizes and heights come from the same float operations in the same order as in the published filter.
/// Parameters with which that one would go on for ever (a base that does not grow, a cell size of 0)
/// end the series before the first window that is not larger than the one before it.
class CMorphWindowSeries
{
public:
    explicit CMorphWindowSeries(const CMorphParams& params) noexcept;

    /// The next window.
    /// @return false, and nothing is written, when there is none.
    bool FindNext(CMorphWindow& window) noexcept;

private:
    float CalcSize() const noexcept;

    CMorphParams m_params;
    bool m_bEnds;         // reaches the largest size in the end, whatever it does on the way
    int m_nStep = 0;      // windows given so far
    float m_fSize = 0.0F; // of the last one
};

#endif
