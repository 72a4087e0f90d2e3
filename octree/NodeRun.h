#ifndef OCTREE_NODERUN_H
#define OCTREE_NODERUN_H

#include <octree/COcTreeNode.h>
#include <zor4data/CPntRun.h>

/// L2: what lies under a node is one run of the array.
///
/// Cost: a visit of the nodes on the way to the first and the last leaf.
/// REQUIRES: a tree for which L1 holds, COcTreeIndex::m_bTiled.
CPntRun FindPntRun(const COcTreeNode& node) noexcept;

/// That run, and the number of leaves in it.
struct CNodeRun
{
    std::int32_t nFirst = 0;
    std::int32_t nCount = 0;
    std::int32_t nNumLeaves = 0;
};

/// Cost: one visit of each inner node, none of a leaf but the first and the last.
/// REQUIRES: a tree for which L1 holds, COcTreeIndex::m_bTiled.
CNodeRun CalcNodeRun(const COcTreeNode& node) noexcept;

#endif
