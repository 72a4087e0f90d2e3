#ifndef HOST_FILES_CLOUDSTEPS_H
#define HOST_FILES_CLOUDSTEPS_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zorcld
{

/// Where a cloud counts from when its first point has this coordinate.
inline double CalcOrigin(double dFirst)
{
    constexpr double c_dMax = std::numeric_limits<float>::max();
    return std::isnan(dFirst) ? 0.0
                              : static_cast<double>(static_cast<float>(std::clamp(dFirst, -c_dMax, c_dMax)));
}

/// The step of 1/10000 that a coordinate is kept as, from the origin on; the last one where it lies beyond.
inline std::int32_t CalcStep(double d, double dOrigin)
{
    constexpr double c_dMin = std::numeric_limits<std::int32_t>::min();
    constexpr double c_dMax = std::numeric_limits<std::int32_t>::max();
    const double dStep = (d - dOrigin) * 10000.0;
    return std::isnan(dStep) ? 0 : static_cast<std::int32_t>(std::clamp(dStep, c_dMin, c_dMax));
}

} // namespace zorcld

#endif
