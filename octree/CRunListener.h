#ifndef OCTREE_CRUNLISTENER_H
#define OCTREE_CRUNLISTENER_H

#include <octree/COcTreeData.h>
#include <octree/COcTreeNode.h>
#include <octree/FindLivePnt.h>
#include <zor4data/CPntRun.h>

#include <vector>

/// Visitor that notes which points a walk delivers, as runs, instead of delivering them.
template <class T>
class CRunListener
{
public:
    CRunListener(const COcTreeData<T>& store, std::vector<CPntRun>& vecRuns)
        : m_store(store), m_vecRuns(vecRuns)
    {
    }

    void OnPnt(std::int32_t nIndex) { Add(nIndex, 1); }

    /// The live points of a run. @return how many there are.
    std::int32_t OnRun(std::int32_t nFirst, std::int32_t nCount)
    {
        if (nCount <= 0 || !HasDeleted(nFirst, nCount))
        {
            Add(nFirst, nCount);
            return nCount;
        }
        std::int32_t nNumLive = 0;
        for (std::int32_t i = nFirst; i < nFirst + nCount; ++i)
        {
            if (m_store.IsDeleted(i))
                continue;
            OnPnt(i);
            ++nNumLive;
        }
        return nNumLive;
    }

    /// @return the first live point of a leaf, or -1.
    std::int32_t FindLivePnt(const COcTreeLeaf& leaf) const noexcept { return ::FindLivePnt(m_store, leaf); }

    /// The points are not read.
    void Prefetch(std::int32_t) const noexcept {}

private:
    /// Looks at the marks by eights: a point beside the run may be one of them.
    bool HasDeleted(std::int32_t nFirst, std::int32_t nCount) const noexcept
    {
        unsigned nMarks = 0;
        for (std::int32_t i = nFirst / 8; i <= (nFirst + nCount - 1) / 8; ++i)
            nMarks |= m_store.m_pDelBits[i];
        return nMarks != 0;
    }

    void Add(std::int32_t nFirst, std::int32_t nCount)
    {
        if (nCount <= 0)
            return;
        if (!m_vecRuns.empty() && m_vecRuns.back().nFirst + m_vecRuns.back().nCount == nFirst)
            m_vecRuns.back().nCount += nCount;
        else
            m_vecRuns.push_back({nFirst, nCount});
    }

    const COcTreeData<T>& m_store;
    std::vector<CPntRun>& m_vecRuns;
};

#endif
