#ifndef IO_NATIVE_WRITENATIVE_H
#define IO_NATIVE_WRITENATIVE_H

#include <octree/COcTreeData.h>

class ofpstream;

/// Writes origin, points and octree of a store as they lie in memory: docs/native-format.md.
///
/// Deleted points are written like any other: remove them first. A tree without a root is written as one
/// whose root has no children. REQUIRES: an array and a tree.
template <class T>
void WriteNative(ofpstream& stream, const COcTreeData<T>& store);

extern template void WriteNative(ofpstream& stream, const COcTreeData<CTruncPnt>& store);
extern template void WriteNative(ofpstream& stream, const COcTreeData<CTruncPnt_Color>& store);

#endif
