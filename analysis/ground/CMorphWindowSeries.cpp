#include <analysis/ground/CMorphWindowSeries.h>

#include <cmath>
#include <limits>

namespace
{

// Does some member of the series reach every size? Exponential: growing powers, and a positive one among
// them in the end. Linear: growing.
bool IsUnbounded(const CMorphParams& params) noexcept
{
    if (params.bExponential)
        return params.fBase > 1.0F ? params.fCellSize > 0.0F
                                   : params.fBase < -1.0F && params.fCellSize != 0.0F;
    return params.fCellSize * params.fBase > 0.0F;
}

} // namespace

CMorphWindowSeries::CMorphWindowSeries(const CMorphParams& params) noexcept
    : m_params(params), m_bEnds(IsUnbounded(params))
{
}

float CMorphWindowSeries::CalcSize() const noexcept
{
    // The published filter computes the power in doubles and the linear form in floats.
    if (m_params.bExponential)
        return static_cast<float>(static_cast<double>(m_params.fCellSize) *
                                  (2.0 * std::pow(static_cast<double>(m_params.fBase), m_nStep) + 1.0));
    return m_params.fCellSize * (2.0F * static_cast<float>(m_nStep + 1) * m_params.fBase + 1.0F);
}

bool CMorphWindowSeries::FindNext(CMorphWindow& window) noexcept
{
    if (!(m_fSize < static_cast<float>(m_params.nMaxWindowSize)) ||
        m_nStep == std::numeric_limits<int>::max())
        return false;
    const float fSize = CalcSize();
    if (!m_bEnds && m_nStep > 0 && fSize <= m_fSize)
        return false;

    window.fSize = fSize;
    window.fMaxDiff = m_params.fInitialDistance;
    if (m_nStep > 0)
        window.fMaxDiff =
            m_params.fSlope * (fSize - m_fSize) * m_params.fCellSize + m_params.fInitialDistance;
    if (window.fMaxDiff > m_params.fMaxDistance)
        window.fMaxDiff = m_params.fMaxDistance;

    m_fSize = fSize;
    ++m_nStep;
    return true;
}
