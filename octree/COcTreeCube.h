#ifndef OCTREE_COCTREECUBE_H
#define OCTREE_COCTREECUBE_H

#include <cstdint>

/// Nominal cube of a node, compact units; L4: the walks decide by it. Held in 64 bits: the centre of a child
/// may lie outside the int32 span where the points reach the end of it.
struct COcTreeCube
{
    std::int64_t nX; ///< centre
    std::int64_t nY;
    std::int64_t nZ;
    std::int64_t nEdge;

    /// @return the cube of the child in octant `k`: half the edge, moved by a quarter of it, both
    ///         truncated to whole units.
    COcTreeCube GetChild(int k) const noexcept
    {
        const std::int64_t nQuarter = nEdge / 2 / 2;
        return {(k & 4) != 0 ? nX + nQuarter : nX - nQuarter, (k & 2) != 0 ? nY + nQuarter : nY - nQuarter,
                (k & 1) != 0 ? nZ + nQuarter : nZ - nQuarter, nEdge / 2};
    }

    /// @return half the edge, truncated: the cube reaches that far from its centre.
    std::int64_t GetHalfEdge() const noexcept { return nEdge / 2; }
};

#endif
