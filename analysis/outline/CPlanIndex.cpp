#include <analysis/outline/CPlanIndex.h>

#include <octree/CPntBits.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/CollectLeaves2D.h>

#include <algorithm>
#include <cmath>

/// Goes through all leaves: first to count, then to fill.
template <class T>
class CPlanIndex<T>::CMaker
{
public:
    CMaker(const COcTreeIndex& tree, const T* pPnts, const unsigned char* pOpen)
        : m_tree(tree), m_pPnts(pPnts), m_pOpen(pOpen)
    {
    }

    std::unique_ptr<CPlanIndex> Make()
    {
        std::int64_t nNumPnts = 0;
        std::int64_t nNumOutside = 0;
        std::int64_t nEnd = 0;
        bool bInOrder = true;
        VisitOpen(
            [&](std::int32_t k, const CPlanSquare& square)
            {
                ++nNumPnts;
                nNumOutside += IsInside(k, square) ? 0 : 1;
                bInOrder = bInOrder && k >= nEnd;
                nEnd = std::int64_t{k} + 1;
            });
        constexpr std::int64_t c_nMaxShare = 64; // one of so many may lie outside: half a byte a point
        if (!bInOrder || nNumOutside > nNumPnts / c_nMaxShare)
            return nullptr;
        std::vector<COpenPnts::CEntry> vecEntries;
        std::vector<COutside> vecOutside;
        vecEntries.reserve(static_cast<std::size_t>(nNumPnts));
        vecOutside.reserve(static_cast<std::size_t>(nNumOutside));
        VisitOpen(
            [&](std::int32_t k, const CPlanSquare& square)
            {
                vecEntries.push_back({m_pPnts[k].m_nX, m_pPnts[k].m_nY, k});
                if (!IsInside(k, square))
                    vecOutside.push_back({k, square});
            });
        return std::unique_ptr<CPlanIndex>(new CPlanIndex(std::move(vecEntries), std::move(vecOutside)));
    }

private:
    template <class OnPnt>
    void VisitOpen(OnPnt onPnt) const
    {
        const auto onLeaf = [&](const COcTreeLeaf& leaf, const CPlanSquare& square)
        {
            for (std::int32_t k = leaf.m_nFirst; k < leaf.m_nFirst + leaf.m_nCount; ++k)
                if (CPntBits::IsSet(m_pOpen, k))
                    onPnt(k, square);
        };
        CollectLeaves2D(m_tree, {-HUGE_VAL, -HUGE_VAL, HUGE_VAL, HUGE_VAL}, onLeaf);
    }

    bool IsInside(std::int32_t k, const CPlanSquare& square) const noexcept
    {
        return square.GetBox().Contains(std::int64_t{m_pPnts[k].m_nX}, std::int64_t{m_pPnts[k].m_nY});
    }

    const COcTreeIndex& m_tree;
    const T* m_pPnts;
    const unsigned char* m_pOpen;
};

template <class T>
std::unique_ptr<CPlanIndex<T>> CPlanIndex<T>::Make(const COcTreeIndex& tree, const T* pPnts,
                                                   const unsigned char* pOpen)
{
    return CMaker(tree, pPnts, pOpen).Make();
}

/// @param nRing  the ring in which the point lies: the tree finds it there or farther out.
template <class T>
int CPlanIndex<T>::FindOutside(const CStepRings& rings, std::int32_t nIndex, const T& place,
                               int nRing) const noexcept
{
    const auto it =
        std::lower_bound(m_vecOutside.begin(), m_vecOutside.end(), nIndex,
                         [](const COutside& outside, std::int32_t n) { return outside.nIndex < n; });
    if (it == m_vecOutside.end() || it->nIndex != nIndex)
        return nRing;
    const double x = static_cast<double>(place.m_nX);
    const double y = static_cast<double>(place.m_nY);
    const auto meets = [&](double r) {
        return RoundInwards({x - r, y - r, x + r, y + r}).Meets(it->square.GetBox());
    };
    while (nRing < rings.GetNum() && !meets(rings.GetRadius(nRing)))
        ++nRing;
    return nRing;
}

template class CPlanIndex<CTruncPnt>;
template class CPlanIndex<CTruncPnt_Color>;
