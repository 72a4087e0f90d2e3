#ifndef OCTREE_CPNTBOUNDS_H
#define OCTREE_CPNTBOUNDS_H

#include <octree/COcTreeCube.h>

#include <algorithm>
#include <limits>

/// A node's nominal cube and the exact limits of its points, compact units: the points under a node have
/// offsets from `nMin` to below `nEnd` on each axis.
///
/// L3: points are divided at the centres of the cubes above them, on the plane upwards, so these centres are
/// the limits, where nominal cubes leave gaps.
struct CPntBounds
{
    COcTreeCube cube;
    std::int64_t nMinX;
    std::int64_t nMinY;
    std::int64_t nMinZ;
    std::int64_t nEndX;
    std::int64_t nEndY;
    std::int64_t nEndZ;

    /// A root cube whose points may lie anywhere in the int32 span.
    static CPntBounds OfSpan(const COcTreeCube& root) noexcept
    {
        constexpr std::int64_t c_nMin = std::numeric_limits<std::int32_t>::min();
        constexpr std::int64_t c_nEnd = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
        return {root, c_nMin, c_nMin, c_nMin, c_nEnd, c_nEnd, c_nEnd};
    }

    /// What belongs to octant `k`. A centre that lies beyond the limits, as it may where the points reach the
    /// end of the span, leaves nothing on its far side.
    CPntBounds GetChild(int k) const noexcept
    {
        CPntBounds child = *this;
        ((k & 4) != 0 ? child.nMinX : child.nEndX) = std::clamp(cube.nX, nMinX, nEndX);
        ((k & 2) != 0 ? child.nMinY : child.nEndY) = std::clamp(cube.nY, nMinY, nEndY);
        ((k & 1) != 0 ? child.nMinZ : child.nEndZ) = std::clamp(cube.nZ, nMinZ, nEndZ);
        child.cube = cube.GetChild(k);
        return child;
    }
};

#endif
