#ifndef ANALYSIS_OUTLINE_FINDSTARTPNT_H
#define ANALYSIS_OUTLINE_FINDSTARTPNT_H

#include <octree/COcTreeIndex.h>

/// Finds the westernmost point of a set, the first one found of several.
///
/// @param pPnts  the store's points.
/// @param pBits  one bit a point: the set.
/// @return its index; -1 when the tree holds no such point west of the eastern edge of the leaf that
///         reaches least far east of those it lies in.
///
/// REQUIRES: a tree with a root. Cost: the leaves along the western edge. Throws std::bad_alloc.
template <class T>
std::int32_t FindStartPnt(const COcTreeIndex& tree, const T* pPnts, const unsigned char* pBits);

class CTruncPnt;
class CTruncPnt_Color;
extern template std::int32_t FindStartPnt(const COcTreeIndex&, const CTruncPnt*, const unsigned char*);
extern template std::int32_t FindStartPnt(const COcTreeIndex&, const CTruncPnt_Color*, const unsigned char*);

#endif
