#include <analysis/outline/FindClusters.h>

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/CollectLeaves2D.h>
#include <zor4data/IDlgProgress.h>

#include <algorithm>

namespace
{

/// Joins a point with those of its neighbours that come later in index order.
/// @return the last of these, -1 for none.
template <class T>
std::int32_t JoinNeighbours(const COcTreeData<T>& store, std::int32_t i, double dRadius,
                            CClusterForest& forest)
{
    const T* const pPnts = store.m_pPnts.get();
    const double x = static_cast<double>(pPnts[i].m_nX);
    const double y = static_cast<double>(pPnts[i].m_nY);
    const double dRadiusSquare = dRadius * dRadius;
    std::int32_t nLast = -1;
    const auto onLeaf = [&](const COcTreeLeaf& leaf, const CPlanSquare&)
    {
        const std::int32_t nEnd = leaf.m_nFirst + leaf.m_nCount;
        for (std::int32_t k = std::max(leaf.m_nFirst, i + 1); k < nEnd; ++k)
        {
            const double dx = static_cast<double>(pPnts[k].m_nX) - x;
            const double dy = static_cast<double>(pPnts[k].m_nY) - y;
            const double dDistSquare = dx * dx + dy * dy;
            // KEPT: points stacked at one place are not neighbours (StackedPntsAreNotNear_Kept).
            if (dDistSquare > dRadiusSquare || dDistSquare == 0.0 || store.IsDeleted(k))
                continue;
            forest.Join(i, k);
            nLast = std::max(nLast, k);
        }
    };
    CollectLeaves2D(*store.m_pTree, {x - dRadius, y - dRadius, x + dRadius, y + dRadius}, onLeaf);
    return nLast;
}

template <class T>
bool HasSamePlace(const T& pntA, const T& pntB) noexcept
{
    return pntA.m_nX == pntB.m_nX && pntA.m_nY == pntB.m_nY;
}

} // namespace

// KEPT: a deleted point is nobody's neighbour, but is itself asked for its neighbours and joins them
// (DeletedPntJoinsItsNeighbours_Kept).
//
// The points reached so far need no set of their own: of the points from i on, those reached are the
// ones that are no longer roots. A reached point has been joined to the one that reached it, whose
// root is the root of both; and a root that loses its place is either the reached point itself or one
// that was asked before.
template <class T>
CClusterForest FindClusters(const COcTreeData<T>& store, IDlgProgress* pProgress, double dRadius)
{
    const std::int32_t nNumPnts = store.m_nNumPnts;
    const T* const pPnts = store.m_pPnts.get();
    CClusterForest forest(nNumPnts);
    std::int32_t nAsked = -1; // the last point asked for its neighbours
    std::int32_t nLast = -1;  // the last of these
    for (std::int32_t i = 0; i < nNumPnts; ++i)
    {
        if (pProgress != nullptr)
            pProgress->SetPos(static_cast<int>(i * 100.0 / nNumPnts));
        // KEPT: a point that was reached is not asked for neighbours of its own (ReachedPntIsNotAsked_Kept).
        if (!forest.IsRoot(i))
            continue;
        // Points stacked at one place have the same neighbours, which are joined already: one of them joins
        // this point to all. Else a stack would be looked through as often as it has points.
        if (nAsked != -1 && HasSamePlace(pPnts[nAsked], pPnts[i]))
        {
            if (nLast > i)
                forest.Join(i, nLast);
            continue;
        }
        nLast = JoinNeighbours(store, i, dRadius, forest);
        nAsked = i;
    }
    return forest;
}

template CClusterForest FindClusters(const COcTreeData<CTruncPnt>&, IDlgProgress*, double);
template CClusterForest FindClusters(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*, double);
