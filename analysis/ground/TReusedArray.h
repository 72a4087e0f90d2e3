#ifndef ANALYSIS_GROUND_TREUSEDARRAY_H
#define ANALYSIS_GROUND_TREUSEDARRAY_H

#include <cstddef>
#include <memory>

/// An array that is used again and again, each time for other contents. Its elements are not zeroed.
template <class T>
class TReusedArray
{
public:
    /// @return room for `nNum` elements, good until the next call. Throws std::bad_alloc.
    T* Provide(std::size_t nNum)
    {
        if (nNum > m_nNum)
        {
            m_nNum = 0;
            m_pData.reset(); // before the new one: not both at a time
            m_pData.reset(new T[nNum]);
            m_nNum = nNum;
        }
        return m_pData.get();
    }

private:
    std::unique_ptr<T[]> m_pData;
    std::size_t m_nNum = 0;
};

#endif
