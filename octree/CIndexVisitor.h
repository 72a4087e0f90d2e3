#ifndef OCTREE_CINDEXVISITOR_H
#define OCTREE_CINDEXVISITOR_H

#include <octree/CIndexBatch.h>
#include <octree/COcTreeData.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/FindLivePnt.h>

/// Visitor of the queries that deliver indices alone: what `COcTreeListener` is for records, for the same
/// walks.
template <class T>
class CIndexVisitor
{
public:
    using IHost = IPntIndexListener; ///< whom it delivers to

    /// Makes the buffer. Throws std::bad_alloc.
    CIndexVisitor(IPntIndexListener* pListener, const COcTreeData<T>& store, std::int32_t nBatch)
        : m_store(store), m_pPnts(store.m_pPnts.get()), m_batch(pListener, nBatch)
    {
    }

    void OnPnt(std::int32_t nIndex) { m_batch.Add(nIndex); }

    void OnLeafEnd() { m_batch.Flush(); }

    bool IsDeleted(std::int32_t nIndex) const noexcept { return m_store.IsDeleted(nIndex); }

    const T& GetRecord(std::int32_t nIndex) const noexcept { return m_pPnts[nIndex]; }

    /// Nothing of the record is read.
    void Prefetch(std::int32_t) const noexcept {}

    /// Delivers the live points of a run, in index order. @return how many there were.
    std::int32_t OnRun(std::int32_t nFirst, std::int32_t nCount)
    {
        const std::int32_t nEnd = nFirst + nCount;
        std::int32_t nNumLive = 0;
        // Live points that follow one another are one run of the delivery, too.
        for (std::int32_t i = SkipDeleted(nFirst, nEnd); i < nEnd;)
        {
            const std::int32_t nLiveEnd = SkipLive(i, nEnd);
            m_batch.AddRun(i, nLiveEnd - i);
            nNumLive += nLiveEnd - i;
            i = SkipDeleted(nLiveEnd, nEnd);
        }
        return nNumLive;
    }

    std::int32_t FindLivePnt(const COcTreeLeaf& leaf) const noexcept { return ::FindLivePnt(m_store, leaf); }

private:
    std::int32_t SkipDeleted(std::int32_t i, std::int32_t nEnd) const noexcept
    {
        while (i < nEnd && m_store.IsDeleted(i))
            ++i;
        return i;
    }

    /// L7: eight points a byte.
    std::int32_t SkipLive(std::int32_t i, std::int32_t nEnd) const noexcept
    {
        const unsigned char* const pBits = m_store.m_pDelBits.get();
        while (i < nEnd)
        {
            if ((i & 7) == 0 && nEnd - i >= 8 && pBits[i >> 3] == 0)
                i += 8;
            else if (CPntBits::IsSet(pBits, i))
                break;
            else
                ++i;
        }
        return i;
    }

    const COcTreeData<T>& m_store;
    const T* m_pPnts;
    CIndexBatch m_batch;
};

#endif
