#ifndef OCTREE_CCADPNTBATCH_H
#define OCTREE_CCADPNTBATCH_H

#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

/// The buffer of one query: gathers records and hands them to the host's listener batch by batch.
///
/// KEPT: a record starts from its defaults at its first use and from what it held before at every later one
/// (Records_AreNotResetBetweenBatches_Kept). Records are made when they are first used, so that a query of
/// few points with a large batch does not pay for the whole buffer.
class CCadPntBatch
{
public:
    /// @param nBatch  records a batch; below 1 counts as 1. Throws std::bad_alloc.
    CCadPntBatch(IPntCldListener* pListener, std::int32_t nBatch)
        : m_pListener(pListener), m_nCapacity(nBatch < 1 ? 1 : nBatch),
          m_pBytes(new TRecord[static_cast<std::size_t>(m_nCapacity)])
    {
    }

    /// @return the record to fill next; `Commit` counts it.
    CCldCadPnt& GetNext()
    {
        if (m_nNumMade == m_nNumFilled)
        {
            new (m_pBytes.get() + m_nNumMade) CCldCadPnt;
            ++m_nNumMade;
        }
        return *GetRecord(m_nNumFilled);
    }

    /// Counts the record that was filled and hands the batch over when it is full.
    void Commit()
    {
        if (++m_nNumFilled == m_nCapacity)
            Flush();
    }

    /// Hands over what has been gathered, if anything.
    void Flush()
    {
        if (m_nNumFilled == 0)
            return;
        const std::int32_t nNumPnts = m_nNumFilled;
        m_nNumFilled = 0;
        if (m_pListener != nullptr)
            m_pListener->OnPnts(nNumPnts, GetRecord(0));
    }

private:
    static_assert(std::is_trivially_destructible_v<CCldCadPnt>, "records are dropped with their buffer");
    using TRecord = std::aligned_storage_t<sizeof(CCldCadPnt), alignof(CCldCadPnt)>;

    CCldCadPnt* GetRecord(std::int32_t n) noexcept
    {
        return std::launder(static_cast<CCldCadPnt*>(static_cast<void*>(m_pBytes.get() + n)));
    }

    IPntCldListener* m_pListener;
    std::int32_t m_nCapacity;
    std::int32_t m_nNumFilled = 0; // records gathered since the last hand-over
    std::int32_t m_nNumMade = 0;   // records constructed so far
    std::unique_ptr<TRecord[]> m_pBytes;
};

#endif
