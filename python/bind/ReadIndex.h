#ifndef PYTHON_BIND_READINDEX_H
#define PYTHON_BIND_READINDEX_H

#include <pybind11/numpy.h>

#include <cstdint>
#include <string>

namespace zorpy
{

/// Indices that Python gave: int32 or int64, one dimension, C-contiguous.
class CIndexList
{
public:
    /// @param nNumPnts  points of the cloud. @throws pybind11::type_error for any other array. REQUIRES:
    /// `index` outlives the object.
    CIndexList(const pybind11::array& index, std::int64_t nNumPnts)
        : m_pIndices(index.data()), m_nNum(static_cast<std::int64_t>(index.size())), m_nNumPnts(nNumPnts),
          m_bLong(pybind11::isinstance<pybind11::array_t<std::int64_t>>(index))
    {
        if (!m_bLong && !pybind11::isinstance<pybind11::array_t<std::int32_t>>(index))
            throw pybind11::type_error("an index must be of int32 or int64");
    }

    std::int64_t GetNum() const noexcept { return m_nNum; }

    /// `fn(position in the list, index)`. @throws pybind11::index_error at one that is no point of the cloud.
    /// May be called without the interpreter's lock.
    template <class TFn>
    void ForEach(TFn fn) const
    {
        if (m_bLong)
            ForEachOf<std::int64_t>(fn);
        else
            ForEachOf<std::int32_t>(fn);
    }

private:
    template <class Number, class TFn>
    void ForEachOf(TFn& fn) const
    {
        const auto* const p = static_cast<const Number*>(m_pIndices);
        for (std::int64_t i = 0; i < m_nNum; ++i)
        {
            const std::int64_t nIndex = p[i]; // read once: somebody may be writing into the array
            if (nIndex < 0 || nIndex >= m_nNumPnts)
                throw pybind11::index_error("index " + std::to_string(nIndex) + " is not one of the " +
                                            std::to_string(m_nNumPnts) + " points");
            fn(i, nIndex);
        }
    }

    const void* m_pIndices;
    std::int64_t m_nNum;
    std::int64_t m_nNumPnts;
    bool m_bLong;
};

} // namespace zorpy

#endif
