#ifndef OCTREE_HASROOT_H
#define OCTREE_HASROOT_H

#include <octree/COcTreeData.h>
#include <octree/COcTreeIndex.h>

/// @return whether a store has a tree with at least one node: without one there is nothing to walk.
template <class T>
bool HasRoot(const COcTreeData<T>& store) noexcept
{
    return store.m_pTree != nullptr && store.m_pTree->m_pRoot != nullptr;
}

#endif
