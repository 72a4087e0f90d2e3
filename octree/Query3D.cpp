#include <octree/Query3D.h>

#include <octree/HasRoot.h>
#include <octree/LodDepth.h>
#include <octree/WalkClip.h>
#include <octree/WalkLod.h>
#include <octree/WalkLodClip.h>

template <class T, class Visitor>
void CQuery3D<T, Visitor>::GetPnts() const
{
    Visitor listener(m_pListener, m_store, m_nBatch);
    listener.OnRun(0, m_store.m_nNumPnts);
    listener.OnLeafEnd();
}

template <class T, class Visitor>
void CQuery3D<T, Visitor>::GetPnts_Lod(double dLod) const
{
    Visitor listener(m_pListener, m_store, m_nBatch);
    if (!HasRoot(m_store))
        return;
    COcTreeIndex& tree = *m_store.m_pTree;
    const std::int64_t nLimit = IsLodSpacing(dLod) ? CalcLodDepth(tree.m_nEdge, dLod) : -1;
    CDelivered delivered;
    CWalkLod<Visitor>(listener, nLimit, delivered).Walk(*tree.m_pRoot, 0);
    listener.OnLeafEnd();
    // KEPT: the count of points ends at 0 whatever was delivered; the count of leaves goes on
    // (Lod_Counters_Kept)
    tree.m_nNumPntsDelivered.Reset();
    tree.m_nNumLeavesDelivered.Add(delivered.GetNumLeaves());
}

/// What both clipped queries have in common. Calls `walk(tree, listener, stack, delivered)`; without a root,
/// nothing.
template <class T, class Visitor>
template <class TFn>
void CQuery3D<T, Visitor>::WalkClipped(const std::vector<zor::geom::PLANE_3D>& vecPlanes, TFn walk) const
{
    Visitor listener(m_pListener, m_store, m_nBatch);
    if (!HasRoot(m_store))
        return;
    COcTreeIndex& tree = *m_store.m_pTree;
    CClipPlanes stack(vecPlanes, m_store.m_fOrgX, m_store.m_fOrgY, m_store.m_fOrgZ);
    tree.m_nNumPntsDelivered.Reset();
    tree.m_nNumLeavesDelivered.Reset();
    CDelivered delivered;
    walk(tree, listener, stack, delivered);
    listener.OnLeafEnd();
    tree.m_nNumPntsDelivered.Add(delivered.GetNumPnts());
    tree.m_nNumLeavesDelivered.Add(delivered.GetNumLeaves());
}

template <class T, class Visitor>
void CQuery3D<T, Visitor>::GetPnts_Clip(const std::vector<zor::geom::PLANE_3D>& vecPlanes) const
{
    WalkClipped(vecPlanes,
                [](const COcTreeIndex& tree, Visitor& listener, CClipPlanes& stack, CDelivered& delivered)
                {
                    CWalkClip<Visitor>(tree, listener, stack, delivered)
                        .WalkNode(*tree.m_pRoot, tree.GetRootCube(), stack.GetAll());
                });
}

template <class T, class Visitor>
void CQuery3D<T, Visitor>::GetPnts_LodClip(double dLod,
                                           const std::vector<zor::geom::PLANE_3D>& vecPlanes) const
{
    if (!IsLodSpacing(dLod))
    {
        GetPnts_Clip(vecPlanes);
        return;
    }
    WalkClipped(vecPlanes,
                [dLod](const COcTreeIndex& tree, Visitor& listener, CClipPlanes& stack, CDelivered& delivered)
                {
                    CWalkLodClip<Visitor>(tree, listener, stack, CalcLodDepth(tree.m_nEdge, dLod), delivered)
                        .WalkNode(*tree.m_pRoot, tree.GetRootCube(), stack.GetAll(), 0);
                });
}

template class CQuery3D<CTruncPnt, COcTreeListener<CTruncPnt>>;
template class CQuery3D<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>;
template class CQuery3D<CTruncPnt, CIndexVisitor<CTruncPnt>>;
template class CQuery3D<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>;
