#include <octree/WalkLod.h>

#include <octree/FindRepresentative.h>

template <class T>
void CWalkLod<T>::WalkNode(const COcTreeNode& node, std::int64_t nDepth)
{
    if (nDepth == m_nLimit)
    {
        DeliverFirst(FindRepresentative(node));
        return;
    }
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf())
            WalkLeaf(child.GetLeaf(), nDepth == m_nLimit - 1);
        else
            WalkNode(child.GetNode(), nDepth + 1);
    }
}

template <class T>
void CWalkLod<T>::WalkLeaf(const COcTreeLeaf& leaf, bool bOnePnt)
{
    if (bOnePnt)
    {
        DeliverFirst(&leaf);
        return;
    }
    m_tree.CountPnts(m_listener.OnRun(leaf.m_nFirst, leaf.m_nCount));
    m_tree.CountLeaves(1);
}

/// Delivers the first live point of a leaf; nothing when there is no leaf or no such point.
template <class T>
void CWalkLod<T>::DeliverFirst(const COcTreeLeaf* pLeaf)
{
    const std::int32_t nIndex = pLeaf == nullptr ? -1 : m_listener.FindLivePnt(*pLeaf);
    if (nIndex == -1)
        return;
    m_listener.OnPnt(nIndex);
    m_tree.CountPnts(1);
}

template class CWalkLod<CTruncPnt>;
template class CWalkLod<CTruncPnt_Color>;
