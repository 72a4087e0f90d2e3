#ifndef FORMATS_NATIVEFORMAT_H
#define FORMATS_NATIVEFORMAT_H

#include <array>
#include <cstddef>
#include <cstdint>

// The native cloud file: sizes and offsets in bytes. docs/native-format.md tells them to people. The deepest
// node of its octree is that of any octree: formats/MaxDepth.h.

/// The first bytes of every native file: a mark, then the order of bytes.
inline constexpr std::array<unsigned char, 5> c_acNativePrologue{':', 1, 1, 0, 0};

/// Where the fields of the header stand. The points follow it.
constexpr std::size_t c_nNativeVersionPos = c_acNativePrologue.size();
constexpr std::size_t c_nNativeTypePos = c_nNativeVersionPos + sizeof(std::int32_t);
constexpr std::size_t c_nNativeOriginPos = c_nNativeTypePos + sizeof(std::int16_t);
constexpr std::size_t c_nNativeNumPntsPos = c_nNativeOriginPos + 3 * sizeof(float);
constexpr std::size_t c_nNativeHeaderSize = c_nNativeNumPntsPos + sizeof(std::int32_t);

/// A point without colour: three offsets. With colour: a byte a channel behind them.
constexpr std::size_t c_nNativePntSize = 3 * sizeof(std::int32_t);
constexpr std::size_t c_nNativeColorPntSize = c_nNativePntSize + 3;

/// The header of the octree, behind the points: centre, edge, extents in x, y and z.
constexpr std::size_t c_nNativeTreeHeaderSize = 7 * sizeof(std::int32_t);

/// A node stands as its two masks, followed by its children.
constexpr std::size_t c_nNativeNodeSize = 2;

/// A leaf of the octree stands as two numbers: count, first point.
constexpr std::size_t c_nNativeLeafSize = 2 * sizeof(std::uint32_t);

/// Blocks in which points that must be unpacked, and nodes, are read.
constexpr std::size_t c_nNativeBlock = std::size_t{1} << 16;

#endif
