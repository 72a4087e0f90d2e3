#ifndef OCTREE_WALKALL_H
#define OCTREE_WALKALL_H

#include <octree/COcTreeIndex.h>

/// Shows `listener` every point under `node`: octants 0 to 7, depth first; the points of a leaf in
/// index order, then `OnLeafEnd`.
template <class Listener>
void WalkAll(const COcTreeNode& node, Listener& listener)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        if (!child.IsLeaf())
        {
            WalkAll(child.GetNode(), listener);
            continue;
        }
        const COcTreeLeaf& leaf = child.GetLeaf();
        for (std::int32_t k = 0; k < leaf.m_nCount; ++k)
            listener.OnPnt(leaf.m_nFirst + k);
        listener.OnLeafEnd();
    }
}

/// The same for a whole tree; nothing when it has no root.
template <class Listener>
void WalkAll(const COcTreeIndex& tree, Listener& listener)
{
    if (tree.m_pRoot != nullptr)
        WalkAll(*tree.m_pRoot, listener);
}

#endif
