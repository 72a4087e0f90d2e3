#ifndef PYTHON_BIND_CINDEXBUFFER_H
#define PYTHON_BIND_CINDEXBUFFER_H

#include <python/bind/AllocLargePages.h>
#include <python/bind/CProgress.h>
#include <zor4data/IPntIndexListener.h>

#include <pybind11/numpy.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace zorpy
{

/// Gathers the indices that a query delivers. What signal handlers raise leaves the query on the way.
///
/// Memory doubles while it is small. Then room is taken for as many indices as there can be, of which only
/// what is written is memory, and in large pages: getting pages takes longer than writing them.
class CIndexBuffer final : public IPntIndexListener
{
public:
    /// @param nMost  indices that a query delivers at most; more would be no fault, but slower.
    explicit CIndexBuffer(std::int64_t nMost) : m_nMost(static_cast<std::size_t>(nMost)) {}

    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        m_watch.PollClock();
        const auto nNum = static_cast<std::size_t>(nNumPnts);
        if (m_nCapacity - m_nNum < nNum)
            Grow(m_nNum + nNum);
        std::memcpy(m_pIndices.get() + m_nNum, pIndices, nNum * sizeof *pIndices);
        m_nNum += nNum;
    }

    void OnWork() override { m_watch.PollClock(); }

    /// @return the indices as an array, which takes over their memory. The buffer is then empty.
    pybind11::array_t<std::int32_t> MakeArray()
    {
        if (m_nNum == 0)
            return pybind11::array_t<std::int32_t>(0);
        if (m_nNum < m_nCapacity)
            Resize(m_nNum);
        const pybind11::capsule keeper(m_pIndices.get(), [](void* p) { std::free(p); });
        const std::int32_t* const pIndices = m_pIndices.release();
        return pybind11::array_t<std::int32_t>(static_cast<pybind11::ssize_t>(m_nNum), pIndices, keeper);
    }

private:
    struct CFree
    {
        void operator()(std::int32_t* p) const noexcept { std::free(p); }
    };

    void Grow(std::size_t nLeast)
    {
        constexpr std::size_t c_nSmall = std::size_t{1} << 20U; // 4 MiB: that much is kept at hand when freed
        const std::size_t nDouble = nLeast + m_nCapacity;
        if (nDouble <= c_nSmall || nLeast > m_nMost || !TryTakeMost())
            Resize(nDouble);
    }

    /// What has been gathered is copied, and its pages serve the next query.
    bool TryTakeMost()
    {
        const std::size_t nBytes = m_nMost * sizeof(std::int32_t);
        std::unique_ptr<std::int32_t[], CFree> pMost(static_cast<std::int32_t*>(AllocLargePages(nBytes)));
        if (pMost == nullptr)
            return false;
        std::memcpy(pMost.get(), m_pIndices.get(), m_nNum * sizeof(std::int32_t));
        m_pIndices = std::move(pMost);
        m_nCapacity = m_nMost;
        return true;
    }

    void Resize(std::size_t nNum)
    {
        void* const p = std::realloc(m_pIndices.get(), nNum * sizeof(std::int32_t));
        if (p == nullptr)
            throw std::bad_alloc();
        static_cast<void>(m_pIndices.release());
        m_pIndices.reset(static_cast<std::int32_t*>(p));
        m_nCapacity = nNum;
    }

    std::unique_ptr<std::int32_t[], CFree> m_pIndices;
    std::size_t m_nMost;
    std::size_t m_nNum = 0;
    std::size_t m_nCapacity = 0;
    CSignalWatch m_watch;
};

} // namespace zorpy

#endif
