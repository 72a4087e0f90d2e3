#ifndef OCTREE_CPLANSQUARE_H
#define OCTREE_CPLANSQUARE_H

#include <zor3geom/TPlanBox.h>

#include <cstdint>

/// Nominal square of a node or leaf in plan view, compact units.
struct CPlanSquare
{
    std::int64_t nX; ///< centre
    std::int64_t nY;
    std::int64_t nEdge;

    CPlanSquare GetChild(int k) const noexcept
    {
        const std::int64_t nQuarter = nEdge / 2 / 2;
        return {(k & 4) != 0 ? nX + nQuarter : nX - nQuarter, (k & 2) != 0 ? nY + nQuarter : nY - nQuarter,
                nEdge / 2};
    }

    zor::geom::TPlanBox<std::int64_t> GetBox() const noexcept
    {
        const std::int64_t nHalf = nEdge / 2;
        return {nX - nHalf, nY - nHalf, nX + nHalf, nY + nHalf};
    }

    /// @return the octants whose squares meet the box, as a mask of bits.
    unsigned GetOctants(const zor::geom::TPlanBox<std::int64_t>& box) const noexcept
    {
        const std::int64_t nHalf = nEdge / 2 / 2 * 2;
        const unsigned nInX = (box.xmin <= nX && nX - nHalf <= box.xmax ? 0x0FU : 0U) |
                              (box.xmin <= nX + nHalf && nX <= box.xmax ? 0xF0U : 0U);
        const unsigned nInY = (box.ymin <= nY && nY - nHalf <= box.ymax ? 0x33U : 0U) |
                              (box.ymin <= nY + nHalf && nY <= box.ymax ? 0xCCU : 0U);
        return nInX & nInY;
    }
};

#endif
