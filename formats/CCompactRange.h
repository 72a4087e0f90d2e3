#ifndef FORMATS_CCOMPACTRANGE_H
#define FORMATS_CCOMPACTRANGE_H

#include <formats/Compact.h>

#include <algorithm>
#include <cstdint>
#include <limits>

/// Range of one coordinate over some points, compact units; what an octree keeps of it.
class CCompactRange
{
public:
    void Add(std::int32_t n) noexcept
    {
        m_nMin = std::min(m_nMin, n);
        m_nMax = std::max(m_nMax, n);
    }

    /// Truncated toward zero. REQUIRES: a point.
    std::int32_t GetCentre() const noexcept
    {
        return static_cast<std::int32_t>((static_cast<std::int64_t>(m_nMin) + m_nMax) / 2);
    }

    /// Saturated. REQUIRES: a point.
    std::int32_t GetExtent() const noexcept
    {
        return SaturateToInt32(static_cast<std::int64_t>(m_nMax) - m_nMin);
    }

private:
    std::int32_t m_nMin = std::numeric_limits<std::int32_t>::max();
    std::int32_t m_nMax = std::numeric_limits<std::int32_t>::min();
};

#endif
