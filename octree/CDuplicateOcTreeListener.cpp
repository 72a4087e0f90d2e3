#include <octree/CDuplicateOcTreeListener.h>

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <utility>

namespace
{

constexpr std::int32_t c_nMaxByPairs = 24; // up to here comparing every pair is the cheaper way
constexpr std::size_t c_nMinSlots = 64;    // a power of two, as every size of the table

template <class T>
bool HasSamePlace(const T& pntA, const T& pntB) noexcept
{
    return pntA.m_nX == pntB.m_nX && pntA.m_nY == pntB.m_nY;
}

/// Mixes both coordinates into every bit (the finalizer of the splitmix64 generator).
template <class T>
std::size_t CalcHash(const T& pnt) noexcept
{
    std::uint64_t n = static_cast<std::uint64_t>(static_cast<std::uint32_t>(pnt.m_nX)) << 32U |
                      static_cast<std::uint32_t>(pnt.m_nY);
    n = (n ^ (n >> 30U)) * 0xbf58476d1ce4e5b9ULL;
    n = (n ^ (n >> 27U)) * 0x94d049bb133111ebULL;
    return static_cast<std::size_t>(n ^ (n >> 31U));
}

} // namespace

// A point is a duplicate exactly when an earlier point of the leaf has its place: both ways below mark
// those, whatever order they compare in.
template <class T>
void CDuplicateOcTreeListener<T>::FindDuplicates()
{
    if (m_nCount <= c_nMaxByPairs)
        FindByPairs();
    else
        FindByHash();
}

template <class T>
void CDuplicateOcTreeListener<T>::FindByPairs()
{
    const T* const pLeaf = m_store.m_pPnts.get() + m_nFirst;
    for (std::int32_t b = 1; b < m_nCount; ++b)
    {
        for (std::int32_t a = 0; a < b; ++a)
        {
            if (HasSamePlace(pLeaf[a], pLeaf[b]))
            {
                m_store.MarkDeleted(m_nFirst + b);
                break;
            }
        }
    }
}

/// The hash table uses open addressing and is at most half full: time grows with the points of the leaf,
/// memory with their places. A point at the place of the one before it, as slots announced and never filled
/// are, needs no look into the table.
template <class T>
void CDuplicateOcTreeListener<T>::FindByHash()
{
    m_vecSlots.assign(c_nMinSlots, -1);
    std::size_t nNumPlaces = 0;
    const T* const pPnts = m_store.m_pPnts.get();
    for (std::int32_t i = 0; i < m_nCount; ++i)
    {
        const std::int32_t nIndex = m_nFirst + i;
        if (i > 0 && HasSamePlace(pPnts[nIndex - 1], pPnts[nIndex]))
        {
            m_store.MarkDeleted(nIndex);
            continue;
        }
        std::int32_t& nSlot = FindSlot(nIndex);
        if (nSlot != -1)
        {
            m_store.MarkDeleted(nIndex);
            continue;
        }
        nSlot = nIndex;
        if (2 * ++nNumPlaces > m_vecSlots.size())
            GrowSlots();
    }
}

/// @return the slot of a point's place: it holds the first point there, or is free.
template <class T>
std::int32_t& CDuplicateOcTreeListener<T>::FindSlot(std::int32_t nIndex)
{
    const T* const pPnts = m_store.m_pPnts.get();
    std::size_t nSlot = CalcHash(pPnts[nIndex]) & (m_vecSlots.size() - 1);
    while (m_vecSlots[nSlot] != -1 && !HasSamePlace(pPnts[m_vecSlots[nSlot]], pPnts[nIndex]))
        nSlot = (nSlot + 1) & (m_vecSlots.size() - 1);
    return m_vecSlots[nSlot];
}

template <class T>
void CDuplicateOcTreeListener<T>::GrowSlots()
{
    const std::vector<std::int32_t> vecOld = std::move(m_vecSlots);
    m_vecSlots.assign(4 * vecOld.size(), -1);
    for (const std::int32_t nIndex : vecOld)
        if (nIndex != -1)
            FindSlot(nIndex) = nIndex;
}

template class CDuplicateOcTreeListener<CTruncPnt>;
template class CDuplicateOcTreeListener<CTruncPnt_Color>;
