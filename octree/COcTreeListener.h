#ifndef OCTREE_COCTREELISTENER_H
#define OCTREE_COCTREELISTENER_H

#include <octree/CCadPntBatch.h>
#include <octree/COcTreeData.h>
#include <octree/FindLivePnt.h>
#include <octree/IOcTreeListener.h>
#include <octree/SetCadPnt.h>

/// Visitor of the queries: turns point indices into delivered records.
template <class T>
class COcTreeListener final : public IOcTreeListener<T>
{
public:
    using IHost = IPntCldListener; ///< whom it delivers to

    /// Makes the buffer, then tells the colour listener the height range of the store's box (undefined
    /// without a tree).
    COcTreeListener(IPntCldListener* pListener, const COcTreeData<T>& store, std::int32_t nBatch);

    void OnPnt(std::int32_t nIndex) override
    {
        CCldCadPnt& cadPnt = m_batch.GetNext();
        SetCadPnt(cadPnt, m_pPnts[nIndex], m_store.m_fOrgX, m_store.m_fOrgY, m_store.m_fOrgZ, nIndex,
                  m_store.m_pColorListener);
        cadPnt.m_bSel = m_store.IsSelected(nIndex);
        m_batch.Commit();
    }

    void OnLeafEnd() override { m_batch.Flush(); }

    /// Nobody asks for it.
    void CountWork(std::size_t) const noexcept {}

    void GetPnt(std::int32_t nIndex, T& pnt) const override { pnt = m_pPnts[nIndex]; }

    bool IsDeleted(std::int32_t nIndex) const override { return m_store.IsDeleted(nIndex); }

    const T& GetRecord(std::int32_t nIndex) const noexcept { return m_pPnts[nIndex]; }

    /// Fetches a point's record ahead, for a call that will soon ask for it.
    void Prefetch(std::int32_t nIndex) const noexcept { __builtin_prefetch(m_pPnts + nIndex); }

    /// Delivers the live points of a run, in index order. @return how many there were.
    std::int32_t OnRun(std::int32_t nFirst, std::int32_t nCount)
    {
        std::int32_t nNumLive = 0;
        for (std::int32_t i = nFirst; i < nFirst + nCount; ++i)
        {
            if (IsDeleted(i))
                continue;
            OnPnt(i);
            ++nNumLive;
        }
        return nNumLive;
    }

    std::int32_t FindLivePnt(const COcTreeLeaf& leaf) const noexcept { return ::FindLivePnt(m_store, leaf); }

private:
    const COcTreeData<T>& m_store;
    const T* m_pPnts;
    CCadPntBatch m_batch;
};

extern template class COcTreeListener<CTruncPnt>;
extern template class COcTreeListener<CTruncPnt_Color>;

#endif
