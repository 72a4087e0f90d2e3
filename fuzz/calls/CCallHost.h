#ifndef FUZZ_CALLS_CCALLHOST_H
#define FUZZ_CALLS_CCALLHOST_H

#include <fuzz/Check.h>
#include <tests/support/CRefQuery.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/ICldColorListener.h>
#include <zor4data/IDlgProgress.h>
#include <zor4data/IPclProgressListener.h>
#include <zor4data/IPntCldListener.h>
#include <zor4data/IPntIndexListener.h>

#include <cstdint>
#include <vector>

/// What the host throws to stop an operation: nothing that the library could know.
struct CHostStop
{
};

/// A host with all of its listeners. It writes down what it is given, compares records with the model, and
/// throws at one call of its slots, whichever that is. It allocates nothing while it is called.
class CCallHost final : public IPntCldListener,
                        public ICldColorListener,
                        public IDlgProgress,
                        public IPclProgressListener,
                        public IPntIndexListener
{
public:
    CCallHost() { m_vecIndices.reserve(c_nMaxDelivered); }

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        Check(nNumPnts >= 1, "a batch has a point");
        Call();
        for (int i = 0; i < nNumPnts; ++i)
        {
            Take(pPnts[i].m_nIndex);
            CompareRecord(pPnts[i]);
        }
    }
    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        Check(nNumPnts >= 1, "a batch has an index");
        Call();
        for (int i = 0; i < nNumPnts; ++i)
            Take(pIndices[i]);
    }
    void OnWork() override { Call(); }
    void GetColor(double, float& r, float& g, float& b) override
    {
        Check(r >= 0.0F && r <= 1.0F && g >= 0.0F && g <= 1.0F && b >= 0.0F && b <= 1.0F,
              "colours are 0 to 1");
        Call();
    }
    void SetZRange(double, double) override
    {
        ++m_nNumZRanges;
        Call();
    }
    void Start() override {}
    void Stop() override {}
    bool SetPos(int nPos) override
    {
        Check(nPos >= 0, "progress is not negative");
        Call();
        return false;
    }
    void OnProgress(int nPos) override
    {
        Check(nPos >= m_nPos && nPos <= 100, "the filter's progress never falls");
        m_nPos = nPos;
        Call();
    }

    /// To be called by each slot. Throws at the one that was set.
    void Call()
    {
        if (m_nNumLeft >= 0 && m_nNumLeft-- == 0)
            throw CHostStop();
    }

    /// Has the call behind `nNumGood` others stop what runs; below 0: none does.
    void SetStop(int nNumGood) { m_nNumLeft = nNumGood; }

    /// Forgets what came. @param pStore  what records are compared with; null: nothing.
    void Forget(const Ref::CStore* pStore)
    {
        m_vecIndices.clear();
        m_pStore = pStore;
        m_nNumZRanges = 0;
        m_nPos = 0;
    }

    const std::vector<int>& GetIndices() const { return m_vecIndices; }
    int GetNumZRanges() const { return m_nNumZRanges; }

private:
    static constexpr std::size_t c_nMaxDelivered = 8192;

    void Take(int nIndex)
    {
        Check(m_vecIndices.size() < c_nMaxDelivered, "no more points than there are");
        m_vecIndices.push_back(nIndex);
    }

    void CompareRecord(const CCldCadPnt& rec) const
    {
        if (m_pStore == nullptr)
            return;
        const std::size_t i = static_cast<std::size_t>(rec.m_nIndex);
        Check(rec.m_nIndex >= 0 && i < m_pStore->pnts.size(), "an index is one of the cloud");
        const Ref::CPnt& pnt = m_pStore->pnts[i];
        const bool bPlace = rec.m_pnt.x == pnt.x / 10000.0 + static_cast<double>(m_pStore->org[0]) &&
                            rec.m_pnt.y == pnt.y / 10000.0 + static_cast<double>(m_pStore->org[1]) &&
                            rec.m_pnt.z == pnt.z / 10000.0 + static_cast<double>(m_pStore->org[2]);
        Check(bPlace, "a record has its point's place");
        Check(rec.m_bSel == m_pStore->selected[i], "a record tells whether its point is selected");
    }

    std::vector<int> m_vecIndices;
    const Ref::CStore* m_pStore = nullptr;
    int m_nNumLeft = -1;
    int m_nNumZRanges = 0;
    int m_nPos = 0;
};

#endif
