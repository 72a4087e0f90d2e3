#ifndef OCTREE_FINDLIVEPNT_H
#define OCTREE_FINDLIVEPNT_H

#include <octree/COcTreeData.h>
#include <octree/COcTreeNode.h>

/// @return the first live point of a leaf, or -1.
template <class T>
inline std::int32_t FindLivePnt(const COcTreeData<T>& store, const COcTreeLeaf& leaf) noexcept
{
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
        if (!store.IsDeleted(i))
            return i;
    return -1;
}

#endif
