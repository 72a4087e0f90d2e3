#ifndef OCTREE_COCTREENODE_H
#define OCTREE_COCTREENODE_H

#include <cstdint>

/// The end of a branch: one run of points in the store's array, L1.
class COcTreeLeaf
{
public:
    std::int32_t m_nCount; ///< number of points, at least 1 in a tree that was built
    std::int32_t m_nFirst; ///< index of the first; the points are m_nFirst .. m_nFirst + m_nCount - 1
};

class COcTreeChildren;

/// An inner node. It has no points of its own: L2, the runs of its children, octants 0 to 7, are one run of
/// the store's array.
class COcTreeNode
{
public:
    /// The present children, octants 0 to 7. Defined in COcTreeChildren.h.
    COcTreeChildren GetChildren() const noexcept;

    /// One record for each present octant, in octant order and without gaps: a `COcTreeLeaf` where the
    /// leaf bit is set, else a `COcTreeNode`. Lies in the arena of the tree's index.
    unsigned char* m_pChildren = nullptr;
    std::uint8_t m_ucExist = 0; ///< bit k: octant k holds at least one point
    std::uint8_t m_ucLeaf = 0;  ///< bit k: the child in octant k is a leaf
};

#endif
