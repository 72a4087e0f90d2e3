#ifndef OCTREE_COLLECTLEAVES2D_H
#define OCTREE_COLLECTLEAVES2D_H

#include <octree/COcTreeIndex.h>
#include <zor3geom/RECT_2D.h>

#include <cmath>
#include <cstdint>

/// Nominal square of a node or leaf in plan view, compact units.
struct CPlanSquare
{
    std::int64_t m_nX; // centre
    std::int64_t m_nY;
    std::int64_t m_nEdge;

    CPlanSquare GetChild(int k) const noexcept
    {
        const std::int64_t nQuarter = m_nEdge / 2 / 2;
        return {(k & 4) != 0 ? m_nX + nQuarter : m_nX - nQuarter,
                (k & 2) != 0 ? m_nY + nQuarter : m_nY - nQuarter, m_nEdge / 2};
    }
};

/// A rectangle against which squares are tested, compact units.
///
/// Whether a whole number lies beyond a limit does not change when the limit is rounded inwards, so
/// the limits are kept as whole numbers. One that is not a number limits nothing.
class CSearchBox
{
public:
    explicit CSearchBox(const zor::geom::RECT_2D& rect) noexcept
        : m_nXMin(RoundUp(rect.xmin)), m_nYMin(RoundUp(rect.ymin)), m_nXMax(-RoundUp(-rect.xmax)),
          m_nYMax(-RoundUp(-rect.ymax))
    {
    }

    /// @return whether the square has a point in common with the rectangle.
    bool Meets(const CPlanSquare& square) const noexcept
    {
        const std::int64_t nHalf = square.m_nEdge / 2;
        return square.m_nX - nHalf <= m_nXMax && m_nXMin <= square.m_nX + nHalf &&
               square.m_nY - nHalf <= m_nYMax && m_nYMin <= square.m_nY + nHalf;
    }

    /// @return the octants of a square's children that meet the rectangle, as a mask of bits.
    unsigned GetOctants(const CPlanSquare& square) const noexcept
    {
        const std::int64_t nX = square.m_nX;
        const std::int64_t nY = square.m_nY;
        const std::int64_t nHalf = square.m_nEdge / 2 / 2 * 2;
        const unsigned nInX = (m_nXMin <= nX && nX - nHalf <= m_nXMax ? 0x0FU : 0U) |
                              (m_nXMin <= nX + nHalf && nX <= m_nXMax ? 0xF0U : 0U);
        const unsigned nInY = (m_nYMin <= nY && nY - nHalf <= m_nYMax ? 0x33U : 0U) |
                              (m_nYMin <= nY + nHalf && nY <= m_nYMax ? 0xCCU : 0U);
        return nInX & nInY;
    }

private:
    /// Upper limits are rounded up with their sign turned, so that not-a-number ends at the wide end of
    /// both. Every square lies within the bound.
    static std::int64_t RoundUp(double d) noexcept
    {
        constexpr double c_dBound = 1099511627776.0; // 2^40
        if (!(d > -c_dBound))
            return static_cast<std::int64_t>(-c_dBound);
        return static_cast<std::int64_t>(d < c_dBound ? std::ceil(d) : c_dBound);
    }

    std::int64_t m_nXMin;
    std::int64_t m_nYMin;
    std::int64_t m_nXMax;
    std::int64_t m_nYMax;
};

/// The same for the leaves under one node, whose own square is not tested.
template <class OnLeaf>
void CollectLeaves2D(const COcTreeNode& node, const CPlanSquare& square, const CSearchBox& box,
                     OnLeaf& onLeaf)
{
    const unsigned nOctants = box.GetOctants(square);
    if (nOctants == 0)
        return;
    for (const COcTreeChild child : node.GetChildren())
    {
        if (((nOctants >> child.GetOctant()) & 1U) == 0)
            continue;
        const CPlanSquare childSquare = square.GetChild(child.GetOctant());
        if (child.IsLeaf())
            onLeaf(static_cast<const COcTreeLeaf&>(child.GetLeaf()), childSquare);
        else
            CollectLeaves2D(child.GetNode(), childSquare, box, onLeaf);
    }
}

/// Hands `onLeaf(const COcTreeLeaf&, const CPlanSquare&)` every leaf of a tree whose plan square meets the
/// rectangle, compact units; a square that only touches it counts. Depth first, octants 0 to 7. L4: the
/// squares are the nominal ones, and a point a few units outside its own square is found by its square, not
/// by its place.
///
/// A rectangle turned inside out meets the squares that reach over all of it. A tree without a root has no
/// leaves.
/// Cost: the nodes whose squares meet the rectangle; no memory.
template <class OnLeaf>
void CollectLeaves2D(const COcTreeIndex& tree, const zor::geom::RECT_2D& rect, OnLeaf onLeaf)
{
    const CSearchBox box(rect);
    const CPlanSquare square{tree.m_nCentreX, tree.m_nCentreY, tree.m_nEdge};
    if (tree.m_pRoot != nullptr && box.Meets(square))
        CollectLeaves2D(*tree.m_pRoot, square, box, onLeaf);
}

#endif
