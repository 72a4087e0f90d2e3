#ifndef OCTREE_NODERUN_H
#define OCTREE_NODERUN_H

#include <octree/COcTreeNode.h>

/// The runs of the leaves under a node tile one run of the array, in walk order: that run, and the
/// number of leaves.
struct CNodeRun
{
    std::int32_t nFirst = 0;
    std::int32_t nCount = 0;
    std::int32_t nNumLeaves = 0;
};

/// Cost: one visit of each inner node, none of a leaf but the first and the last.
/// REQUIRES: a tree whose leaf runs tile the array, COcTreeIndex::m_bTiled.
CNodeRun CalcNodeRun(const COcTreeNode& node) noexcept;

#endif
