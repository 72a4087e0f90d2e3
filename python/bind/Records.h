#ifndef PYTHON_BIND_RECORDS_H
#define PYTHON_BIND_RECORDS_H

#include <zor4data/CPntArrays.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace zorpy
{

constexpr double c_dUnitsPerCoord = 10000.0; // offsets are 1/10000 of the coordinate unit

/// @return the offsets of point `n` from the origin.
inline std::array<std::int32_t, 3> GetOffsets(const CPntArrays& arrays, std::int64_t n) noexcept
{
    std::array<std::int32_t, 3> an;
    std::memcpy(an.data(), arrays.pPnts + n * arrays.nStride, sizeof an);
    return an;
}

inline std::array<double, 3> GetOrigin(const CPntArrays& arrays) noexcept
{
    return {static_cast<double>(arrays.fOrgX), static_cast<double>(arrays.fOrgY),
            static_cast<double>(arrays.fOrgZ)};
}

/// A coordinate as the library itself computes it.
inline double CoordFromOffset(std::int32_t nOffset, double dOrg) noexcept
{
    return nOffset / c_dUnitsPerCoord + dOrg;
}

/// @return whether the library keeps a value without moving it to the end of what it can hold. False for
///         not-a-number.
inline bool IsInReach(double dValue, double dOrg) noexcept
{
    constexpr double c_dLimit = 2147483648.0; // offsets are int32, truncated
    return std::fabs((dValue - dOrg) * c_dUnitsPerCoord) < c_dLimit;
}

} // namespace zorpy

#endif
