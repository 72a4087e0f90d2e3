#include <octree/CDuplicateOcTreeListener.h>

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

namespace
{

constexpr std::size_t c_nMaxByPairs = 24; // up to here comparing every pair is the cheaper way

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
    if (m_vecLeaf.size() <= c_nMaxByPairs)
        FindByPairs();
    else
        FindByHash();
}

template <class T>
void CDuplicateOcTreeListener<T>::FindByPairs()
{
    const T* const pPnts = m_store.m_pPnts.get();
    for (std::size_t b = 1; b < m_vecLeaf.size(); ++b)
    {
        for (std::size_t a = 0; a < b; ++a)
        {
            if (HasSamePlace(pPnts[m_vecLeaf[a]], pPnts[m_vecLeaf[b]]))
            {
                m_store.MarkDeleted(m_vecLeaf[b]);
                break;
            }
        }
    }
}

/// Open addressing, at most half full: linear in the size of the leaf.
template <class T>
void CDuplicateOcTreeListener<T>::FindByHash()
{
    std::size_t nNumSlots = 64;
    while (nNumSlots < 2 * m_vecLeaf.size())
        nNumSlots *= 2;
    m_vecSlots.assign(nNumSlots, -1);
    const T* const pPnts = m_store.m_pPnts.get();
    for (const std::int32_t nIndex : m_vecLeaf)
    {
        std::size_t nSlot = CalcHash(pPnts[nIndex]) & (nNumSlots - 1);
        while (m_vecSlots[nSlot] != -1 && !HasSamePlace(pPnts[m_vecSlots[nSlot]], pPnts[nIndex]))
            nSlot = (nSlot + 1) & (nNumSlots - 1);
        if (m_vecSlots[nSlot] == -1)
            m_vecSlots[nSlot] = nIndex;
        else
            m_store.MarkDeleted(nIndex);
    }
}

template class CDuplicateOcTreeListener<CTruncPnt>;
template class CDuplicateOcTreeListener<CTruncPnt_Color>;
