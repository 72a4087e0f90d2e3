#ifndef OCTREE_CRUNLIST_H
#define OCTREE_CRUNLIST_H

#include <zor4data/CPntRun.h>

#include <cstdint>
#include <vector>

/// Notes indices as runs, no two of which could be one: what `CIndexBatch` is for a host that wants them one
/// by one.
class CRunList
{
public:
    using IHost = std::vector<CPntRun>; ///< what they are noted in

    /// @param pRuns  kept; what it holds stays before what is added.
    explicit CRunList(IHost* pRuns) : m_pRuns(pRuns) {}

    void Add(std::int32_t nIndex) { AddRun(nIndex, 1); }

    /// Adds `nCount` indices from `nFirst` on; at least one.
    void AddRun(std::int32_t nFirst, std::int32_t nCount)
    {
        if (!m_pRuns->empty() && m_pRuns->back().nFirst + m_pRuns->back().nCount == nFirst)
            m_pRuns->back().nCount += nCount;
        else
            m_pRuns->push_back({nFirst, nCount});
    }

    /// Nothing is kept back.
    void Flush() const noexcept {}

private:
    IHost* m_pRuns;
};

#endif
