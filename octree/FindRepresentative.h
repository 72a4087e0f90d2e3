#ifndef OCTREE_FINDREPRESENTATIVE_H
#define OCTREE_FINDREPRESENTATIVE_H

#include <octree/COcTreeNode.h>

/// Finds the leaf whose first live point stands for everything under `node`: the first leaf among the
/// node's children or, where all are inner nodes, among those of the last child, and so on down.
///
/// @return null when the branch ends without a leaf, which no built tree does.
/// Cost: one step a level.
const COcTreeLeaf* FindRepresentative(const COcTreeNode& node) noexcept;

/// Takes one step of that search, so that many can be under way while memory answers.
///
/// @param pNode  not null; moved one level down, to null where the search ends.
/// @return the leaf found, or null.
const COcTreeLeaf* StepToRepresentative(const COcTreeNode*& pNode) noexcept;

#endif
