#include <analysis/outline/CalcCnt.h>

#include <analysis/outline/COutlineWalk.h>
#include <analysis/outline/FindClusters.h>
#include <analysis/outline/FindStartPnt.h>
#include <formats/Compact.h>
#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <limits>
#include <memory>

namespace
{

/// @return one bit a point: the largest cluster.
template <class T>
std::shared_ptr<unsigned char[]> FindLargestCluster(const COcTreeData<T>& store, IDlgProgress* pProgress,
                                                    double dRadius)
{
    CClusterForest forest = FindClusters(store, pProgress, dRadius);
    std::shared_ptr<unsigned char[]> pBits = CPntBits::MakeClear(store.m_nNumPnts);
    const std::int32_t nRoot = forest.FindLargest();
    for (std::int32_t i = 0; i < store.m_nNumPnts; ++i)
        if (forest.FindRoot(i) == nRoot)
            CPntBits::Set(pBits.get(), i);
    return pBits;
}

} // namespace

template <class T>
enumOutline CalcCntWithin(const COcTreeData<T>& store, IDlgProgress* pProgress, IPntCldListener* pListener,
                          double d, std::int64_t nMaxLooks)
{
    if (store.m_pTree == nullptr)
        return Outline_None;
    COcTreeListener<T> deliverer(pListener, store, 1);
    const COcTreeIndex& tree = *store.m_pTree;
    if (tree.m_pRoot == nullptr)
        return Outline_None;
    const double dRadius = d * c_dCompactScale;
    const T* const pPnts = store.m_pPnts.get();
    const std::shared_ptr<unsigned char[]> pCluster = FindLargestCluster(store, pProgress, dRadius);
    const std::int32_t nStart = FindStartPnt(tree, pPnts, pCluster.get());
    if (nStart == -1)
        return Outline_None;
    constexpr std::int64_t c_nPatience = 4; // looks at each point: making the index takes about as long
    COutlineWalk<T> walk(tree, pPnts, pCluster.get(), dRadius, c_nPatience * store.m_nNumPnts);
    const enumOutline eOutline = walk.Walk(nStart, nMaxLooks);
    if (eOutline != Outline_Closed)
        return eOutline;
    for (const std::int32_t nIndex : walk.GetPath())
        deliverer.OnPnt(nIndex);
    deliverer.OnLeafEnd();
    return Outline_Closed;
}

template <class T>
bool CalcCnt(const COcTreeData<T>& store, IDlgProgress* pProgress, IPntCldListener* pListener, double d)
{
    constexpr std::int64_t c_nEndless = std::numeric_limits<std::int64_t>::max();
    return CalcCntWithin(store, pProgress, pListener, d, c_nEndless) == Outline_Closed;
}

template bool CalcCnt(const COcTreeData<CTruncPnt>&, IDlgProgress*, IPntCldListener*, double);
template bool CalcCnt(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*, IPntCldListener*, double);
template enumOutline CalcCntWithin(const COcTreeData<CTruncPnt>&, IDlgProgress*, IPntCldListener*, double,
                                   std::int64_t);
template enumOutline CalcCntWithin(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*, IPntCldListener*,
                                   double, std::int64_t);
