#ifndef IO_PLY_CPLYPROGRESS_H
#define IO_PLY_CPLYPROGRESS_H

#include <zor4data/IDlgProgress.h>

#include <cstddef>
#include <cstdint>

/// Progress of one element, within the share that each element has of the 100 percent.
///
/// KEPT: the share is whole percent, rounded down: with more than 100 elements the progress stays at 0
/// (Progress_ShareIsRoundedDown_Kept).
class CPlyProgress
{
public:
    /// @param pProgress  null: no calls.
    /// @param nElement   index of the element, of `nNumElements`.
    CPlyProgress(IDlgProgress* pProgress, std::size_t nElement, std::size_t nNumElements, std::int32_t nCount)
        : m_pProgress(pProgress), m_nCount(nCount), m_nShare(static_cast<int>(100 / nNumElements)),
          m_dBase(static_cast<double>(nElement) * m_nShare)
    {
    }

    bool IsWanted() const noexcept { return m_pProgress != nullptr; }

    /// Before each of the items `i` to `nEnd` - 1, which take no bytes of the file: of very many only some
    /// are told, since nothing but the header says how many there are.
    void ReportOfNothing(std::int32_t i, std::int32_t nEnd) const
    {
        constexpr std::int32_t c_nMaxCalls = 1000;
        const std::int64_t nStep = m_nCount / c_nMaxCalls + 1;
        for (std::int64_t k = i; k < nEnd; k += nStep)
            Report(static_cast<std::int32_t>(k));
    }

    /// Before item `i`.
    void Report(std::int32_t i) const
    {
        if (m_pProgress != nullptr)
            m_pProgress->SetPos(static_cast<int>(m_nShare * (static_cast<double>(i) / m_nCount) + m_dBase));
    }

private:
    IDlgProgress* m_pProgress;
    std::int32_t m_nCount;
    int m_nShare;
    double m_dBase;
};

#endif
