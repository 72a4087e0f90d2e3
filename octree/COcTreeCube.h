#ifndef OCTREE_COCTREECUBE_H
#define OCTREE_COCTREECUBE_H

#include <cstdint>

/// Nominal cube of a node, compact units; L4: the walks decide by it. Held in 64 bits: the centre of a child
/// may lie outside the int32 span where the points reach the end of it.
class COcTreeCube
{
public:
    COcTreeCube(std::int64_t nX, std::int64_t nY, std::int64_t nZ, std::int64_t nEdge)
        : m_nX(nX), m_nY(nY), m_nZ(nZ), m_nEdge(nEdge)
    {
    }

    /// @return the cube of the child in octant `k`: half the edge, moved by a quarter of it, both
    ///         truncated to whole units.
    COcTreeCube GetChild(int k) const noexcept
    {
        const std::int64_t nQuarter = m_nEdge / 2 / 2;
        return {(k & 4) != 0 ? m_nX + nQuarter : m_nX - nQuarter,
                (k & 2) != 0 ? m_nY + nQuarter : m_nY - nQuarter,
                (k & 1) != 0 ? m_nZ + nQuarter : m_nZ - nQuarter, m_nEdge / 2};
    }

    /// @return half the edge, truncated: the cube reaches that far from its centre.
    std::int64_t GetHalfEdge() const noexcept { return m_nEdge / 2; }

    std::int64_t m_nX;
    std::int64_t m_nY;
    std::int64_t m_nZ;
    std::int64_t m_nEdge;
};

#endif
