#include <octree/LodRuns.h>

#include <octree/COcTreeIndex.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/FindRepresentative.h>
#include <octree/HasRoot.h>
#include <octree/LodDepth.h>
#include <octree/NodeRun.h>
#include <octree/WalkLod.h>

#include <optional>

namespace
{

/// @return the child of a node in an octant, if there is one.
std::optional<COcTreeChild> FindChild(const COcTreeNode& node, int nOctant) noexcept
{
    for (const COcTreeChild child : node.GetChildren())
        if (child.GetOctant() == nOctant)
            return child;
    return {};
}

CPntBounds CalcBounds(const COcTreeCube& root, const CLevelPlace& place) noexcept
{
    CPntBounds bounds = CPntBounds::OfSpan(root);
    for (int nDepth = 0; nDepth < place.nLevel; ++nDepth)
        bounds = bounds.GetChild(place.GetOctant(nDepth));
    return bounds;
}

} // namespace

template <class T>
CLodRunSearch<T>::CLodRunSearch(const COcTreeData<T>& store, double dLod, CLodRuns& runs)
    : m_store(store), m_runs(runs), m_visitor(&runs.vecRuns, store),
      m_nLimit(IsLodSpacing(dLod) ? CalcLodDepth(store.m_pTree->m_nEdge, dLod) : -1)
{
    m_runs.vecRuns.clear();
    m_runs.nNumInCube = 0;
}

/// Goes down to the cube, or to what stands for a larger cube that it is part of.
template <class T>
void CLodRunSearch<T>::Find(const CLevelPlace& place)
{
    if (!HasRoot(m_store))
        return;
    const COcTreeNode* pNode = m_store.m_pTree->m_pRoot;
    for (int nDepth = 0; nDepth < place.nLevel; ++nDepth)
    {
        if (nDepth == m_nLimit)
            return FindInLargerCube(*pNode, CalcBounds(m_store.m_pTree->GetRootCube(), place));
        const std::optional<COcTreeChild> child = FindChild(*pNode, place.GetOctant(nDepth));
        if (!child)
            return;
        if (child->IsLeaf())
            return FindInLeaf(child->GetLeaf(), CalcBounds(m_store.m_pTree->GetRootCube(), place),
                              nDepth == m_nLimit - 1);
        pNode = &child->GetNode();
    }
    FindUnder(*pNode, place.nLevel);
}

template <class T>
void CLodRunSearch<T>::FindUnder(const COcTreeNode& node, std::int64_t nDepth)
{
    const bool bTiled = m_store.m_pTree->m_bTiled;
    const CPntRun run = bTiled ? FindPntRun(node) : CPntRun();
    m_runs.nNumInCube = bTiled ? run.nCount : -1;
    if (bTiled && m_nLimit < nDepth) // nothing is thinned: L2
    {
        m_visitor.OnRun(run.nFirst, run.nCount);
        return;
    }
    CDelivered delivered;
    CWalkLod<TVisitor>(m_visitor, m_nLimit, delivered).Walk(node, nDepth);
}

/// The cube is a part of the leaf's, or the whole of it.
template <class T>
void CLodRunSearch<T>::FindInLeaf(const COcTreeLeaf& leaf, const CPntBounds& bounds, bool bOnePnt)
{
    const std::int32_t nOne = bOnePnt ? m_visitor.FindLivePnt(leaf) : -1;
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
    {
        if (!IsInCube(i, bounds))
            continue;
        ++m_runs.nNumInCube;
        if (bOnePnt ? i == nOne : !m_store.IsDeleted(i))
            m_visitor.OnPnt(i);
    }
}

/// The one point of a node that is larger than the cube may lie in it.
template <class T>
void CLodRunSearch<T>::FindInLargerCube(const COcTreeNode& node, const CPntBounds& bounds)
{
    m_runs.nNumInCube = -1;
    const COcTreeLeaf* const pLeaf = FindRepresentative(node);
    const std::int32_t nIndex = pLeaf == nullptr ? -1 : m_visitor.FindLivePnt(*pLeaf);
    if (nIndex != -1 && IsInCube(nIndex, bounds))
        m_visitor.OnPnt(nIndex);
}

template <class T>
bool CLodRunSearch<T>::IsInCube(std::int32_t nIndex, const CPntBounds& bounds) const
{
    const T& rec = m_store.m_pPnts[nIndex];
    return rec.m_nX >= bounds.nMinX && rec.m_nX < bounds.nEndX && rec.m_nY >= bounds.nMinY &&
           rec.m_nY < bounds.nEndY && rec.m_nZ >= bounds.nMinZ && rec.m_nZ < bounds.nEndZ;
}

template class CLodRunSearch<CTruncPnt>;
template class CLodRunSearch<CTruncPnt_Color>;
