#ifndef IO_NATIVE_NATIVERECORD_H
#define IO_NATIVE_NATIVERECORD_H

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <array>
#include <cstddef>
#include <cstring>

/// How a point stands in a native file: its fields without padding.
template <class T>
class CNativeRecord;

/// 12 bytes: the memory record itself.
template <>
class CNativeRecord<CTruncPnt>
{
public:
    static constexpr std::size_t c_nSize = 12;
    static constexpr bool c_bAsInMemory = true;
};

/// 15 bytes: the memory record but for its last byte.
template <>
class CNativeRecord<CTruncPnt_Color>
{
public:
    static constexpr std::size_t c_nSize = 15;
    static constexpr bool c_bAsInMemory = false;
};

static_assert(sizeof(CTruncPnt) == CNativeRecord<CTruncPnt>::c_nSize && offsetof(CTruncPnt, m_nZ) == 8);
static_assert(offsetof(CTruncPnt_Color, m_nZ) == 8 && offsetof(CTruncPnt_Color, m_ucR) == 12 &&
              offsetof(CTruncPnt_Color, m_ucB) == 14);

/// Blocks in which points that must be unpacked, and nodes, are read.
constexpr std::size_t c_nNativeBlock = std::size_t{1} << 16;

/// A leaf of the tree stands as two numbers of 4 bytes: count, first point.
constexpr std::size_t c_nNativeLeafSize = 8;

/// A node stands as its two masks, followed by its children.
constexpr std::size_t c_nNativeNodeSize = 2;

#endif
