#include <octree/Query3D.h>

#include <octree/HasRoot.h>
#include <octree/LodDepth.h>
#include <octree/WalkClip.h>
#include <octree/WalkLod.h>
#include <octree/WalkLodClip.h>

namespace
{

void ResetCounters(COcTreeIndex& tree) noexcept
{
    tree.m_nNumPntsDelivered = 0;
    tree.m_nNumLeavesDelivered = 0;
}

} // namespace

template <class T>
void CQuery3D<T>::GetPnts() const
{
    COcTreeListener<T> listener(m_pListener, m_store, m_nBatch);
    listener.OnRun(0, m_store.m_nNumPnts);
    listener.OnLeafEnd();
}

template <class T>
void CQuery3D<T>::GetPnts_Lod(double dLod) const
{
    COcTreeListener<T> listener(m_pListener, m_store, m_nBatch);
    if (!HasRoot(m_store))
        return;
    COcTreeIndex& tree = *m_store.m_pTree;
    const std::int64_t nLimit = IsLodSpacing(dLod) ? CalcLodDepth(tree.m_nEdge, dLod) : -1;
    // KEPT: the count of points is set to 0 before and after; the count of leaves goes on (Lod_Counters_Kept)
    tree.m_nNumPntsDelivered = 0;
    CWalkLod<T>(tree, listener, nLimit).Walk();
    listener.OnLeafEnd();
    tree.m_nNumPntsDelivered = 0;
}

/// What both clipped queries have in common. Calls `walk(tree, listener, stack)`; without a root, nothing.
template <class T>
template <class TFn>
void CQuery3D<T>::WalkClipped(const std::vector<zor::geom::PLANE_3D>& vecPlanes, TFn walk) const
{
    COcTreeListener<T> listener(m_pListener, m_store, m_nBatch);
    if (!HasRoot(m_store))
        return;
    COcTreeIndex& tree = *m_store.m_pTree;
    CClipPlanes stack(vecPlanes, m_store.m_fOrgX, m_store.m_fOrgY, m_store.m_fOrgZ);
    ResetCounters(tree);
    walk(tree, listener, stack);
    listener.OnLeafEnd();
}

template <class T>
void CQuery3D<T>::GetPnts_Clip(const std::vector<zor::geom::PLANE_3D>& vecPlanes) const
{
    WalkClipped(
        vecPlanes, [](COcTreeIndex& tree, COcTreeListener<T>& listener, CClipPlanes& stack)
        { CWalkClip<T>(tree, listener, stack).WalkNode(*tree.m_pRoot, tree.GetRootCube(), stack.GetAll()); });
}

template <class T>
void CQuery3D<T>::GetPnts_LodClip(double dLod, const std::vector<zor::geom::PLANE_3D>& vecPlanes) const
{
    if (!IsLodSpacing(dLod))
    {
        GetPnts_Clip(vecPlanes);
        return;
    }
    WalkClipped(vecPlanes,
                [dLod](COcTreeIndex& tree, COcTreeListener<T>& listener, CClipPlanes& stack)
                {
                    CWalkLodClip<T>(tree, listener, stack, CalcLodDepth(tree.m_nEdge, dLod))
                        .WalkNode(*tree.m_pRoot, tree.GetRootCube(), stack.GetAll(), 0);
                });
}

template class CQuery3D<CTruncPnt>;
template class CQuery3D<CTruncPnt_Color>;
