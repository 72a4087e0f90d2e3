#ifndef OCTREE_CINDEXVISITOR_H
#define OCTREE_CINDEXVISITOR_H

#include <octree/CIndexBatch.h>
#include <octree/COcTreeData.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/FindLivePnt.h>

/// Visitor of the queries that deliver indices alone: what `COcTreeListener` is for records, for the same
/// walks.
///
/// @tparam Sink  where the indices go: `CIndexBatch` to a listener, `CRunList` into a list of runs.
template <class T, class Sink = CIndexBatch>
class CIndexVisitor
{
public:
    using IHost = typename Sink::IHost;

    /// Makes the sink from the host and whatever else it takes. Throws std::bad_alloc.
    template <class... TArgs>
    explicit CIndexVisitor(IHost* pHost, const COcTreeData<T>& store, TArgs... args)
        : m_store(store), m_pPnts(store.m_pPnts.get()), m_sink(pHost, args...)
    {
    }

    void OnPnt(std::int32_t nIndex) { m_sink.Add(nIndex); }

    void OnLeafEnd() { m_sink.Flush(); }

    void CountWork(std::size_t nNumSteps) { m_sink.CountWork(nNumSteps); }

    bool IsDeleted(std::int32_t nIndex) const noexcept { return m_store.IsDeleted(nIndex); }

    const T& GetRecord(std::int32_t nIndex) const noexcept { return m_pPnts[nIndex]; }

    /// Nothing of the record is read.
    void Prefetch(std::int32_t) const noexcept {}

    /// Delivers the live points of a run, in index order. @return how many there were.
    std::int32_t OnRun(std::int32_t nFirst, std::int32_t nCount)
    {
        if (nCount <= 0)
            return 0;
        if (HasDeleted(nFirst, nCount))
            return OnHoles(nFirst, nFirst + nCount);
        m_sink.AddRun(nFirst, nCount);
        return nCount;
    }

    std::int32_t FindLivePnt(const COcTreeLeaf& leaf) const noexcept { return ::FindLivePnt(m_store, leaf); }

private:
    /// L7: looks at the marks by eights; a point beside the run may be one of them.
    bool HasDeleted(std::int32_t nFirst, std::int32_t nCount) const noexcept
    {
        const unsigned char* const pBits = m_store.m_pDelBits.get();
        unsigned nMarks = 0;
        for (std::int32_t i = nFirst >> 3; i <= (nFirst + nCount - 1) >> 3; ++i)
            nMarks |= pBits[i];
        return nMarks != 0;
    }

    /// Live points that follow one another are one run of the delivery, too.
    [[gnu::noinline]] std::int32_t OnHoles(std::int32_t nFirst, std::int32_t nEnd)
    {
        std::int32_t nNumLive = 0;
        for (std::int32_t i = SkipDeleted(nFirst, nEnd); i < nEnd;)
        {
            const std::int32_t nLiveEnd = SkipLive(i, nEnd);
            m_sink.AddRun(i, nLiveEnd - i);
            nNumLive += nLiveEnd - i;
            i = SkipDeleted(nLiveEnd, nEnd);
        }
        return nNumLive;
    }

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
    Sink m_sink;
};

#endif
