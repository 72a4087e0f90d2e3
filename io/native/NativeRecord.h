#ifndef IO_NATIVE_NATIVERECORD_H
#define IO_NATIVE_NATIVERECORD_H

#include <formats/NativeFormat.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <array>
#include <cstddef>
#include <cstring>

/// How a point stands in a native file: its fields without padding.
template <class T>
class CNativeRecord;

/// The memory record itself.
template <>
class CNativeRecord<CTruncPnt>
{
public:
    static constexpr std::size_t c_nSize = c_nNativePntSize;
    static constexpr bool c_bAsInMemory = true;
};

/// The memory record but for its last byte.
template <>
class CNativeRecord<CTruncPnt_Color>
{
public:
    static constexpr std::size_t c_nSize = c_nNativeColorPntSize;
    static constexpr bool c_bAsInMemory = false;
};

static_assert(sizeof(CTruncPnt) == CNativeRecord<CTruncPnt>::c_nSize && offsetof(CTruncPnt, m_nZ) == 8);
static_assert(offsetof(CTruncPnt_Color, m_nZ) == 8 && offsetof(CTruncPnt_Color, m_ucR) == 12 &&
              offsetof(CTruncPnt_Color, m_ucB) == 14);

#endif
