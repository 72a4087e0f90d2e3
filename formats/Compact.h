#ifndef FORMATS_COMPACT_H
#define FORMATS_COMPACT_H

#include <cmath>
#include <cstdint>
#include <limits>

/// Compact units per coordinate unit.
constexpr double c_dCompactScale = 10000.0;

/// @return whether the number, truncated, is an int32; false for not-a-number.
inline bool FitsInt32(double d) noexcept
{
    return std::fabs(d) < 2147483648.0;
}

/// double → int32: truncates toward zero, saturates out of range, 0 for not-a-number.
inline std::int32_t SaturateToInt32(double d) noexcept
{
    if (FitsInt32(d))
        return static_cast<std::int32_t>(d);
    if (d > 0.0)
        return std::numeric_limits<std::int32_t>::max();
    return d < 0.0 ? std::numeric_limits<std::int32_t>::min() : 0;
}

/// int64 → int32, saturating.
inline std::int32_t SaturateToInt32(std::int64_t n) noexcept
{
    if (n > std::numeric_limits<std::int32_t>::max())
        return std::numeric_limits<std::int32_t>::max();
    if (n < std::numeric_limits<std::int32_t>::min())
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(n);
}

/// double → float: rounds, saturates at the largest finite float, 0 for not-a-number.
inline float SaturateToFloat(double d) noexcept
{
    constexpr float c_fMax = std::numeric_limits<float>::max();
    if (std::fabs(d) <= static_cast<double>(c_fMax)) // false for not-a-number
        return static_cast<float>(d);
    if (d > 0.0)
        return c_fMax;
    return d < 0.0 ? -c_fMax : 0.0F;
}

/// Coordinate → offset from the origin in compact units, before it is made whole.
inline double CompactUnits(double d, float fOrg) noexcept
{
    return (d - static_cast<double>(fOrg)) * c_dCompactScale;
}

/// Coordinate → compact offset from the origin.
inline std::int32_t CompactFromCoord(double d, float fOrg) noexcept
{
    return SaturateToInt32(CompactUnits(d, fOrg));
}

/// Compact offset from the origin → coordinate.
inline double CoordFromCompact(std::int32_t n, float fOrg) noexcept
{
    return static_cast<double>(n) / c_dCompactScale + static_cast<double>(fOrg);
}

/// Counts up a counter that may run for ever: wraps around instead of overflowing.
inline std::int32_t WrapAdd(std::int32_t n, std::int32_t nAdd) noexcept
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(n) + static_cast<std::uint32_t>(nAdd));
}

#endif
