#include <analysis/ground/CWindowAxis.h>

#include <algorithm>
#include <cmath>

CWindowAxis::CWindowAxis(float fMin, float fMax, double dCellSize, float fHalf)
    : m_dOrg(static_cast<double>(fMin)), m_dCellsPerUnit(1.0 / dCellSize), m_fHalf(fHalf)
{
    m_nNumCells = static_cast<int>((static_cast<double>(fMax) - m_dOrg) * m_dCellsPerUnit) + 1;
    const double dHalfCells = std::min(static_cast<double>(fHalf) * m_dCellsPerUnit, 1.0e6);
    const int nHalfCells = std::max(1, static_cast<int>(std::lround(dHalfCells)));

    // As many empty cells as a window hangs over the edge, so that every core is as wide as the others;
    // not more than there are cells at all.
    m_nPad = std::min(nHalfCells + 1, m_nNumCells);
    m_nEnd = m_nNumCells + 2 * m_nPad - 1;
    m_dEnd = static_cast<double>(m_nEnd);
    const int nCore = std::min(2 * nHalfCells - 1, m_nNumCells);
    while (2 * m_nBlock <= nCore)
        m_nBlock *= 2;
    m_vecSpans.resize(static_cast<std::size_t>(m_nEnd) + 1);
}

void CWindowAxis::CalcReaches()
{
    m_vecReaches.resize(m_vecSpans.size());
    for (std::size_t i = 0; i < m_vecSpans.size(); ++i)
    {
        const CSpan& span = m_vecSpans[i];
        if (!(span.fMin <= span.fMax))
            continue; // no point: an empty reach
        CWindowReach& reach = m_vecReaches[i];
        reach.nOuterMin = GetCell(GetWindowMin(span.fMin));
        reach.nOuterMax = GetCell(GetWindowMax(span.fMax));
        reach.nCoreMin = GetCell(GetWindowMin(span.fMax)) + 1;
        reach.nCoreMax = GetCell(GetWindowMax(span.fMin)) - 1;
    }
    m_vecSpans = {};
}
