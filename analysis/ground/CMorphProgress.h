#ifndef ANALYSIS_GROUND_CMORPHPROGRESS_H
#define ANALYSIS_GROUND_CMORPHPROGRESS_H

#include <zor4data/IPclProgressListener.h>

#include <cstdint>

/// Tells a listener how far the ground filter is: every percent once, from 0 to 100.
///
/// Each window counts the same, and each of its points the same within it. What is done in one go passes
/// several percent at once; the listener still hears each of them.
class CMorphProgress
{
public:
    /// @param pListener     null: nobody is told.
    /// @param nNumWindows   windows to come; at least 1.
    CMorphProgress(IPclProgressListener* pListener, int nNumWindows)
        : m_pListener(pListener), m_nNumWindows(nNumWindows)
    {
        TellUpTo(0);
    }

    /// @param nNumPnts  points that this window decides about.
    void StartWindow(int nWindow, std::uint32_t nNumPnts)
    {
        m_nWindow = nWindow;
        m_nNumPnts = nNumPnts;
        m_nNumDone = 0;
        SetNextCheck();
    }

    void AddPnts(std::uint32_t nNumPnts)
    {
        m_nNumDone += nNumPnts;
        if (m_nNumDone >= m_nNextCheck)
            Check();
    }

    void Finish() { TellUpTo(100); }

private:
    // A check costs a division: there are about 256 of them a window.
    void SetNextCheck() { m_nNextCheck = m_nNumDone + 1 + m_nNumPnts / 256; }

    void Check()
    {
        SetNextCheck();
        if (m_nNumPnts == 0)
            return;
        const double dDone = static_cast<double>(m_nWindow) +
                             static_cast<double>(m_nNumDone) / static_cast<double>(m_nNumPnts);
        const double dPercent = 100.0 * dDone / static_cast<double>(m_nNumWindows);
        TellUpTo(dPercent < 100.0 ? static_cast<int>(dPercent) : 100);
    }

    void TellUpTo(int nPercent)
    {
        if (m_pListener == nullptr)
            return;
        while (m_nNextPercent <= nPercent)
            m_pListener->OnProgress(m_nNextPercent++);
    }

    IPclProgressListener* m_pListener;
    int m_nNumWindows;
    int m_nNextPercent = 0;
    int m_nWindow = 0;
    std::uint64_t m_nNumPnts = 0;
    std::uint64_t m_nNumDone = 0;
    std::uint64_t m_nNextCheck = 0;
};

#endif
