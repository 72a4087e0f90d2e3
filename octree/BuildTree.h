#ifndef OCTREE_BUILDTREE_H
#define OCTREE_BUILDTREE_H

#include <formats/MaxDepth.h>
#include <octree/COcTreeIndex.h>

#include <cstdint>

class CTruncPnt;
class CTruncPnt_Color;

/// Builds the octree over an array of compact points and reorders the array in place so that the runs of the
/// leaves tile it (L1, L3); every index changes (L5). The same points in the same order give the same array
/// and the same tree. The tree has no root when there is no point.
///
/// A child is a leaf when it holds at most 10 points, or fewer than 1000 in a parent of edge 1000
/// compact units or less, or lies below depth 20.
///
/// Cost: at each level three passes over the array; no sorting, no copy. Throws std::bad_alloc; the
/// array then holds the same points in some order.
template <class T>
COcTreeIndex BuildTree(T* pPnts, std::int32_t nNumPnts);

extern template COcTreeIndex BuildTree(CTruncPnt* pPnts, std::int32_t nNumPnts);
extern template COcTreeIndex BuildTree(CTruncPnt_Color* pPnts, std::int32_t nNumPnts);

#endif
