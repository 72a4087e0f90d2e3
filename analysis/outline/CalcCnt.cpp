#include <analysis/outline/CalcCnt.h>

#include <analysis/outline/COutlineWalk.h>
#include <analysis/outline/FindClusters.h>
#include <analysis/outline/FindStartPnt.h>
#include <formats/Compact.h>
#include <octree/COcTreeIndex.h>
#include <octree/COcTreeListener.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

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
bool CalcCnt(const COcTreeData<T>& store, IDlgProgress* pProgress, IPntCldListener* pListener, double d)
{
    if (store.m_pTree == nullptr)
        return false;
    COcTreeListener<T> deliverer(pListener, store, 1);
    const COcTreeIndex& tree = *store.m_pTree;
    if (tree.m_pRoot == nullptr)
        return false;
    const double dRadius = d * c_dCompactScale;
    const T* const pPnts = store.m_pPnts.get();
    const std::shared_ptr<unsigned char[]> pCluster = FindLargestCluster(store, pProgress, dRadius);
    const std::int32_t nStart = FindStartPnt(tree, pPnts, pCluster.get());
    if (nStart == -1)
        return false;
    COutlineWalk<T> walk(tree, pPnts, pCluster.get(), dRadius, 4 * std::int64_t{store.m_nNumPnts});
    if (!walk.Walk(nStart))
        return false;
    for (const std::int32_t nIndex : walk.GetPath())
        deliverer.OnPnt(nIndex);
    deliverer.OnLeafEnd();
    return true;
}

template bool CalcCnt(const COcTreeData<CTruncPnt>&, IDlgProgress*, IPntCldListener*, double);
template bool CalcCnt(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*, IPntCldListener*, double);
