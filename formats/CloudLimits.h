#ifndef FORMATS_CLOUDLIMITS_H
#define FORMATS_CLOUDLIMITS_H

#include <formats/Compact.h>

#include <cstdint>
#include <limits>

/// Points of a cloud at most.
constexpr std::int64_t c_nMaxCloudPnts = std::numeric_limits<std::int32_t>::max();

/// Coordinates of a cloud lie at most so far from its origin, in each axis; farther ones are moved there.
constexpr double c_dReach = std::numeric_limits<std::int32_t>::max() / c_dCompactScale;

/// The same in whole coordinate units, for people.
constexpr int c_nReach = static_cast<int>(c_dReach);

#endif
