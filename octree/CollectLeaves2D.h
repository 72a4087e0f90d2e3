#ifndef OCTREE_COLLECTLEAVES2D_H
#define OCTREE_COLLECTLEAVES2D_H

#include <octree/COcTreeIndex.h>
#include <zor3geom/RECT_2D.h>

#include <cmath>
#include <cstdint>

/// A rectangle against which whole coordinates are tested, compact units.
///
/// Whether a whole number lies beyond a limit does not change when the limit is rounded inwards, so
/// the limits are kept as whole numbers. One that is not a number limits nothing.
class CPlanBox
{
public:
    explicit CPlanBox(const zor::geom::RECT_2D& rect) noexcept
        : m_nXMin(RoundUp(rect.xmin)), m_nYMin(RoundUp(rect.ymin)), m_nXMax(-RoundUp(-rect.xmax)),
          m_nYMax(-RoundUp(-rect.ymax))
    {
    }

    /// @return the octants whose nominal squares meet the box, touching included, as a mask of bits.
    /// @param nX, nY    centre of the node.
    /// @param nQuarter  half the edge of its children.
    unsigned GetOctants(std::int64_t nX, std::int64_t nY, std::int64_t nQuarter) const noexcept
    {
        constexpr unsigned c_nXLower = 0x0FU;
        constexpr unsigned c_nXUpper = 0xF0U;
        constexpr unsigned c_nYLower = 0x33U;
        constexpr unsigned c_nYUpper = 0xCCU;
        const unsigned nInX = (m_nXMin <= nX && nX - 2 * nQuarter <= m_nXMax ? c_nXLower : 0U) |
                              (m_nXMin <= nX + 2 * nQuarter && nX <= m_nXMax ? c_nXUpper : 0U);
        const unsigned nInY = (m_nYMin <= nY && nY - 2 * nQuarter <= m_nYMax ? c_nYLower : 0U) |
                              (m_nYMin <= nY + 2 * nQuarter && nY <= m_nYMax ? c_nYUpper : 0U);
        return nInX & nInY;
    }

    bool MeetsSquare(std::int64_t nX, std::int64_t nY, std::int64_t nHalf) const noexcept
    {
        return nX - nHalf <= m_nXMax && m_nXMin <= nX + nHalf && nY - nHalf <= m_nYMax &&
               m_nYMin <= nY + nHalf;
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

/// Hands `onLeaf(const COcTreeLeaf&)` the leaves under a node whose nominal squares meet the box. The
/// node's own square is not tested.
template <class OnLeaf>
void CollectLeaves2D(const COcTreeNode& node, std::int64_t nX, std::int64_t nY, std::int64_t nEdge,
                     const CPlanBox& box, OnLeaf& onLeaf)
{
    const std::int64_t nQuarter = nEdge / 2 / 2;
    const unsigned nOctants = box.GetOctants(nX, nY, nQuarter);
    if (nOctants == 0)
        return;
    for (const COcTreeChild child : node.GetChildren())
    {
        const unsigned nOctant = 1U << child.GetOctant();
        if ((nOctants & nOctant) == 0)
            continue;
        if (child.IsLeaf())
            onLeaf(static_cast<const COcTreeLeaf&>(child.GetLeaf()));
        else
            CollectLeaves2D(child.GetNode(), (nOctant & 0xF0U) != 0 ? nX + nQuarter : nX - nQuarter,
                            (nOctant & 0xCCU) != 0 ? nY + nQuarter : nY - nQuarter, nEdge / 2, box, onLeaf);
    }
}

/// Hands `onLeaf(const COcTreeLeaf&)` every leaf of a tree whose plan square meets the rectangle,
/// compact units; a square that only touches it counts. Depth first, octants 0 to 7. Squares are the
/// nominal ones: a point a few units outside its own square is found by its square, not by its place.
///
/// A rectangle turned inside out meets the squares that reach over all of it. Nothing without a root.
/// Cost: the nodes whose squares meet the rectangle; no memory.
template <class OnLeaf>
void CollectLeaves2D(const COcTreeIndex& tree, const zor::geom::RECT_2D& rect, OnLeaf onLeaf)
{
    const CPlanBox box(rect);
    if (tree.m_pRoot == nullptr || !box.MeetsSquare(tree.m_nCentreX, tree.m_nCentreY, tree.m_nEdge / 2))
        return;
    CollectLeaves2D(*tree.m_pRoot, tree.m_nCentreX, tree.m_nCentreY, tree.m_nEdge, box, onLeaf);
}

#endif
