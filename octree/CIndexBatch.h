#ifndef OCTREE_CINDEXBATCH_H
#define OCTREE_CINDEXBATCH_H

#include <zor4data/IPntIndexListener.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>

/// The buffer of one query that delivers indices: gathers them and hands them to the host's listener batch by
/// batch.
class CIndexBatch
{
public:
    using IHost = IPntIndexListener; ///< whom it delivers to

    /// @param nBatch  indices a batch; below 1 counts as 1. Throws std::bad_alloc.
    CIndexBatch(IHost* pListener, std::int32_t nBatch)
        : m_pListener(pListener), m_nCapacity(std::max(nBatch, 1)),
          m_pIndices(new std::int32_t[static_cast<std::size_t>(m_nCapacity)])
    {
    }

    void Add(std::int32_t nIndex)
    {
        m_pIndices[static_cast<std::size_t>(m_nNumFilled)] = nIndex;
        if (++m_nNumFilled == m_nCapacity)
            Flush();
    }

    /// Adds `nCount` indices from `nFirst` on.
    void AddRun(std::int32_t nFirst, std::int32_t nCount)
    {
        while (nCount > 0)
        {
            const std::int32_t nPart = std::min(nCount, m_nCapacity - m_nNumFilled);
            std::iota(m_pIndices.get() + m_nNumFilled, m_pIndices.get() + m_nNumFilled + nPart, nFirst);
            m_nNumFilled += nPart;
            nFirst += nPart;
            nCount -= nPart;
            if (m_nNumFilled == m_nCapacity)
                Flush();
        }
    }

    /// Tells the listener now and then that the query is at work. @param nNumSteps  comparisons of a point or
    /// a cube with a plane or an edge.
    void CountWork(std::size_t nNumSteps)
    {
        constexpr std::size_t c_nStepsPerCall = std::size_t{1} << 16U;
        m_nNumSteps += nNumSteps;
        if (m_nNumSteps < c_nStepsPerCall)
            return;
        m_nNumSteps = 0;
        if (m_pListener != nullptr)
            m_pListener->OnWork();
    }

    /// Hands over what has been gathered, if anything.
    void Flush()
    {
        if (m_nNumFilled == 0)
            return;
        const std::int32_t nNumPnts = m_nNumFilled;
        m_nNumFilled = 0;
        if (m_pListener != nullptr)
            m_pListener->OnIndices(nNumPnts, m_pIndices.get());
    }

private:
    IHost* m_pListener;
    std::int32_t m_nCapacity;
    std::int32_t m_nNumFilled = 0;
    std::size_t m_nNumSteps = 0;
    std::unique_ptr<std::int32_t[]> m_pIndices;
};

#endif
