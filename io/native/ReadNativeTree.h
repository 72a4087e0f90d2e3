#ifndef IO_NATIVE_READNATIVETREE_H
#define IO_NATIVE_READNATIVETREE_H

#include <octree/COcTreeIndex.h>

#include <cstdint>
#include <memory>

class ifpstream;

/// Reads the octree of a native file straight into the tree's arena: what CNativeTreeWalk finds usable.
///
/// @param stream    at the tree's header.
/// @param nNumPnts  length of the array that the leaves' runs must lie in.
/// @return the tree; without a root when no leaf was found. Throws std::bad_alloc.
std::shared_ptr<COcTreeIndex> ReadNativeTree(ifpstream& stream, std::int32_t nNumPnts);

#endif
