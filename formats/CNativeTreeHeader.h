#ifndef FORMATS_CNATIVETREEHEADER_H
#define FORMATS_CNATIVETREEHEADER_H

#include <formats/CCompactRange.h>
#include <formats/NativeFormat.h>

#include <array>
#include <cstdint>

/// What stands before the octree of a native file: the box of the points, and the edge of the root cube.
/// Compact units. The library takes it as it stands: a query looks where it says.
struct CNativeTreeHeader
{
    static CNativeTreeHeader
    FromBytes(const std::array<unsigned char, c_nNativeTreeHeaderSize>& acBytes) noexcept;

    /// What a build writes for points of these ranges. REQUIRES: a point in each.
    static CNativeTreeHeader FromRanges(const std::array<CCompactRange, 3>& ranges) noexcept;

    /// @return whether these numbers can be those of any points.
    bool IsPossible() const noexcept;

    bool operator==(const CNativeTreeHeader& other) const noexcept;

    std::array<std::int32_t, 3> anCentre{};
    std::int32_t nEdge = 0; ///< the largest extent
    std::array<std::int32_t, 3> anExtent{};
};

#endif
