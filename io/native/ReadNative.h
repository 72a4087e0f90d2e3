#ifndef IO_NATIVE_READNATIVE_H
#define IO_NATIVE_READNATIVE_H

#include <formats/CNativeHeader.h>
#include <octree/COcTreeData.h>

class ifpstream;

/// Reads what stands before the points. Bytes behind the end of the file count as zero.
/// @param stream  behind the prologue; it is left at the first point.
CNativeHeader ReadNativeHeader(ifpstream& stream);

/// Loads origin, points and octree, as WriteNative wrote them, into an empty store.
///
/// @param stream  as ReadNativeHeader left it.
/// @param header  what that has read; its type is the one of the store's points.
/// @return false when the store has an array or a tree already, and nothing changes; false, with the
///         origin read, when there is no point: the store stays empty.
///
/// Of a damaged file it takes what can be used safely, without telling so; docs/native-format.md says how.
/// Afterwards the runs of the leaves lie inside the array and never overlap, and no node lies deeper than a
/// build would put it.
///
/// Cost: about that of reading the bytes. Throws std::bad_alloc; the store is then as before.
template <class T>
bool ReadNative(ifpstream& stream, const CNativeHeader& header, COcTreeData<T>& store);

extern template bool ReadNative(ifpstream& stream, const CNativeHeader& header,
                                COcTreeData<CTruncPnt>& store);
extern template bool ReadNative(ifpstream& stream, const CNativeHeader& header,
                                COcTreeData<CTruncPnt_Color>& store);

#endif
