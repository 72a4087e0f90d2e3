#ifndef ANALYSIS_GROUND_CWINDOWAXIS_H
#define ANALYSIS_GROUND_CWINDOWAXIS_H

#include <limits>
#include <vector>

/// The cells along one axis that the windows of the points of one cell reach. Both intervals are closed;
/// Min above Max: empty.
struct CWindowReach
{
    int nOuterMin = 0; ///< every cell that some window touches
    int nOuterMax = -1;
    int nCoreMin = 0; ///< cells strictly inside every window: all their points are in it
    int nCoreMax = -1;
};

/// Cells of one size along one axis, and how windows lie over them.
///
/// The window of a coordinate f is the closed interval [f - half, f + half], both ends rounded to float.
/// The cell of a coordinate never falls as the coordinate grows, so points of the cells strictly between
/// the cells of both ends are in the window, points of the two end cells may be in it, all others are not,
/// whatever the rounding does.
///
/// There are empty cells before the first and after the last; what lies beyond belongs to them.
class CWindowAxis
{
public:
    CWindowAxis() = default;

    /// @param fMin, fMax  least and greatest coordinate of the points; finite.
    /// @param dCellSize   above 0, finite, and such that the cells can be counted in an int.
    /// @param fHalf       half the window, not below 0; may be infinite.
    CWindowAxis(float fMin, float fMax, double dCellSize, float fHalf);

    int GetNumCells() const noexcept { return m_nNumCells + 2 * m_nPad; } ///< empty ones counted

    int GetCell(float f) const noexcept
    {
        const double dCell = (static_cast<double>(f) - m_dOrg) * m_dCellsPerUnit + m_nPad;
        if (!(dCell >= 0.0))
            return 0;
        return dCell < m_dEnd ? static_cast<int>(dCell) : m_nEnd;
    }

    float GetWindowMin(float f) const noexcept { return f - m_fHalf; }
    float GetWindowMax(float f) const noexcept { return f + m_fHalf; }

    /// Tells that a point with this coordinate is in cell `nCell`.
    void AddCoordinate(int nCell, float f) noexcept
    {
        CSpan& span = m_vecSpans[static_cast<std::size_t>(nCell)];
        span.fMin = f < span.fMin ? f : span.fMin;
        span.fMax = f > span.fMax ? f : span.fMax;
    }

    /// To be called after the last `AddCoordinate` and before the first `GetReach`.
    void CalcReaches();

    const CWindowReach& GetReach(int nCell) const noexcept
    {
        return m_vecReaches[static_cast<std::size_t>(nCell)];
    }

    /// Largest power of two of cells that fits into the core of any cell, unless float steps are coarse.
    int GetBlock() const noexcept { return m_nBlock; }

private:
    struct CSpan
    {
        float fMin = std::numeric_limits<float>::infinity();
        float fMax = -std::numeric_limits<float>::infinity();
    };

    double m_dOrg = 0.0;
    double m_dCellsPerUnit = 1.0;
    double m_dEnd = 0.0;
    float m_fHalf = 0.0F;
    int m_nNumCells = 0;
    int m_nPad = 1; // empty cells at either end
    int m_nEnd = 0; // last cell, an empty one
    int m_nBlock = 1;
    std::vector<CSpan> m_vecSpans;
    std::vector<CWindowReach> m_vecReaches;
};

#endif
