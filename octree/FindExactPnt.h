#ifndef OCTREE_FINDEXACTPNT_H
#define OCTREE_FINDEXACTPNT_H

#include <octree/COcTreeIndex.h>

/// Finds the first live point, octants in order and then by index, at a plan position.
///
/// @param nX, nY  compact units.
/// @return its index, or -1. Cost: L3, the search descends into one plan quarter of each node.
template <class Visitor>
std::int32_t FindExactPnt(const COcTreeNode& node, const COcTreeCube& cube, const Visitor& listener,
                          std::int32_t nX, std::int32_t nY)
{
    const int nQuarter = (nX >= cube.nX ? 4 : 0) + (nY >= cube.nY ? 2 : 0);
    for (const COcTreeChild child : node.GetChildren())
    {
        if ((child.GetOctant() & 6) != nQuarter)
            continue;
        std::int32_t nFound = -1;
        if (child.IsLeaf())
            nFound = FindExactPnt(child.GetLeaf(), listener, nX, nY);
        else
            nFound = FindExactPnt(child.GetNode(), cube.GetChild(child.GetOctant()), listener, nX, nY);
        if (nFound != -1)
            return nFound;
    }
    return -1;
}

/// The same among the points of one leaf.
template <class Visitor>
std::int32_t FindExactPnt(const COcTreeLeaf& leaf, const Visitor& listener, std::int32_t nX, std::int32_t nY)
{
    for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
    {
        const auto& rec = listener.GetRecord(i);
        if (rec.m_nX == nX && rec.m_nY == nY && !listener.IsDeleted(i))
            return i;
    }
    return -1;
}

#endif
