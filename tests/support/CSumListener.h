#ifndef SUPPORT_CSUMLISTENER_H
#define SUPPORT_CSUMLISTENER_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <cstdint>

/// Counts points and adds up their indices and heights, so that a delivery cannot be left out; allocates
/// nothing.
class CSumListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            m_nSum += static_cast<std::uint64_t>(pPnts[i].m_nIndex) + 1U;
            m_dSumZ += pPnts[i].m_pnt.z;
        }
        m_nNumPnts += nNumPnts;
    }

    std::int64_t m_nNumPnts = 0;
    std::uint64_t m_nSum = 0;
    double m_dSumZ = 0.0;
};

#endif
