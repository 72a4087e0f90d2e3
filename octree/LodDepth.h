#ifndef OCTREE_LODDEPTH_H
#define OCTREE_LODDEPTH_H

#include <formats/Compact.h>
#include <zor1math/Log2.h>

#include <cmath>
#include <cstdint>

/// Is `dLod` a spacing at all? What is not above 0, or not a number, means no thinning.
inline bool IsLodSpacing(double dLod) noexcept
{
    return dLod > 0.0;
}

/// Depth whose cubes stand for one point each: that of the cubes of edge about `dLod`, both taken to
/// whole powers of two. Below 0 when `dLod` is larger than the root cube.
///
/// @param nEdge  edge of the root cube, compact units.
/// @param dLod   spacing above 0, coordinate units.
inline std::int64_t CalcLodDepth(std::int32_t nEdge, double dLod) noexcept
{
    const std::int64_t nRoot = SaturateToInt32(std::ceil(zor::math::Log2(static_cast<double>(nEdge))));
    const std::int64_t nLod = SaturateToInt32(std::floor(zor::math::Log2(dLod * c_dCompactScale)));
    return nRoot - nLod;
}

#endif
