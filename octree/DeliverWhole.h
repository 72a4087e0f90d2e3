#ifndef OCTREE_DELIVERWHOLE_H
#define OCTREE_DELIVERWHOLE_H

#include <octree/COcTreeIndex.h>
#include <octree/NodeRun.h>

/// Delivers every live point under a node, in the order of the walk. L2: they are one run of the array.
template <class Visitor>
void DeliverWhole(const COcTreeIndex& tree, Visitor& listener, const COcTreeNode& node)
{
    if (tree.m_bTiled)
    {
        const CPntRun run = FindPntRun(node);
        listener.OnRun(run.nFirst, run.nCount);
        return;
    }
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf())
            listener.OnRun(child.GetLeaf().m_nFirst, child.GetLeaf().m_nCount);
        else
            DeliverWhole(tree, listener, child.GetNode());
    }
}

#endif
