#ifndef PYTHON_BIND_CINDEXBUFFER_H
#define PYTHON_BIND_CINDEXBUFFER_H

#include <python/bind/CProgress.h>
#include <zor4data/IPntIndexListener.h>

#include <pybind11/numpy.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace zorpy
{

/// Gathers the indices that a query delivers. Memory grows by reallocation, which moves pages and copies
/// nothing where there is much of it. What signal handlers raise leaves the query on the way.
class CIndexBuffer final : public IPntIndexListener
{
public:
    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        m_watch.PollClock();
        const auto nNum = static_cast<std::size_t>(nNumPnts);
        if (m_nCapacity - m_nNum < nNum)
            Resize(m_nNum + nNum + m_nCapacity);
        std::memcpy(m_pIndices.get() + m_nNum, pIndices, nNum * sizeof *pIndices);
        m_nNum += nNum;
    }

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
    std::size_t m_nNum = 0;
    std::size_t m_nCapacity = 0;
    CSignalWatch m_watch;
};

} // namespace zorpy

#endif
