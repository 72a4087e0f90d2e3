#ifndef OCTREE_COLLECTLEAVES2D_H
#define OCTREE_COLLECTLEAVES2D_H

#include <octree/COcTreeIndex.h>
#include <octree/CPlanSquare.h>
#include <octree/RoundInwards.h>

/// The same for the leaves under one node, whose own square is not tested.
template <class OnLeaf>
void CollectLeaves2D(const COcTreeNode& node, const CPlanSquare& square,
                     const zor::geom::TPlanBox<std::int64_t>& box, OnLeaf& onLeaf)
{
    const unsigned nOctants = square.GetOctants(box);
    if (nOctants == 0)
        return;
    for (const COcTreeChild child : node.GetChildren())
    {
        if (((nOctants >> child.GetOctant()) & 1U) == 0)
            continue;
        const CPlanSquare childSquare = square.GetChild(child.GetOctant());
        if (child.IsLeaf())
            onLeaf(static_cast<const COcTreeLeaf&>(child.GetLeaf()), childSquare);
        else
            CollectLeaves2D(child.GetNode(), childSquare, box, onLeaf);
    }
}

/// Hands `onLeaf(const COcTreeLeaf&, const CPlanSquare&)` every leaf of a tree whose plan square meets the
/// rectangle, compact units; a square that only touches it counts. Depth first, octants 0 to 7. L4: the
/// squares are the nominal ones, and a point a few units outside its own square is found by its square, not
/// by its place.
///
/// A rectangle turned inside out meets the squares that reach over all of it. A tree without a root has no
/// leaves.
/// Cost: the nodes whose squares meet the rectangle; no memory.
template <class OnLeaf>
void CollectLeaves2D(const COcTreeIndex& tree, const zor::geom::TPlanBox<double>& rect, OnLeaf onLeaf)
{
    const zor::geom::TPlanBox<std::int64_t> box = RoundInwards(rect);
    const CPlanSquare square{tree.m_nCentreX, tree.m_nCentreY, tree.m_nEdge};
    if (tree.m_pRoot != nullptr && box.Meets(square.GetBox()))
        CollectLeaves2D(*tree.m_pRoot, square, box, onLeaf);
}

#endif
