#ifndef TESTS_ANALYSIS_OUTLINELISTENERS_H
#define TESTS_ANALYSIS_OUTLINELISTENERS_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/ICldColorListener.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPntCldListener.h>

#include <utility>
#include <vector>

/// Records the height ranges it is told.
class CRangeColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override { ++m_nNumColors; }
    void SetZRange(double zMin, double zMax) override { m_vecRanges.emplace_back(zMin, zMax); }

    std::vector<std::pair<double, double>> m_vecRanges;
    int m_nNumColors = 0;
};

/// Records the points of an outline and the sizes of the batches in which they come.
class COutlineRecorder final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        m_vecBatches.push_back(nNumPnts);
        m_vecPnts.insert(m_vecPnts.end(), pPnts, pPnts + nNumPnts);
        for (int i = 0; i < nNumPnts; ++i)
            m_vecIndices.push_back(pPnts[i].m_nIndex);
    }

    std::vector<int> m_vecBatches;
    std::vector<int> m_vecIndices;
    std::vector<CCldCadPnt> m_vecPnts;
};

/// Records the calls; the library is to make no other than SetPos.
class CProgressRecorder final : public IDlgProgress
{
public:
    void Start() override { ++m_nNumOthers; }
    void Stop() override { ++m_nNumOthers; }
    bool SetPos(int nPos) override
    {
        m_vecPos.push_back(nPos);
        return false; // "cancel", which nobody looks at
    }

    std::vector<int> m_vecPos;
    int m_nNumOthers = 0;
};

#endif
