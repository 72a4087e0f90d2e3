#ifndef OCTREE_CONTOUR_CENTEREDSQUARE_H
#define OCTREE_CONTOUR_CENTEREDSQUARE_H

#include <octree/contour/CContourRegion.h>

/// What a contour query narrows down on its way into the tree.
struct CContourStacks
{
    CContourRegion region; ///< for the squares
    CEdgeTracker ring;     ///< the outer ring as given, for the points
};

/// A square that a contour query is in: the stacks hold what belongs to it as long as this object lives.
class CEnteredSquare
{
public:
    /// The square of the root.
    CEnteredSquare(CContourStacks& stacks, const CContourSquare& square)
        : m_stacks(stacks), m_square(square), m_bLeaf(false), m_place(stacks.region.EnterRoot(square)),
          m_frame(stacks.ring.EnterRoot(square))
    {
    }

    /// The square of a child. A leaf's is not classified.
    CEnteredSquare(const CEnteredSquare& parent, const CContourSquare& square, bool bLeaf)
        : m_stacks(parent.m_stacks), m_square(square), m_bLeaf(bLeaf),
          m_place(bLeaf ? CContourRegion::CPlace() : m_stacks.region.Enter(parent.m_place, square)),
          m_frame(m_stacks.ring.Enter(parent.m_frame, square))
    {
    }

    ~CEnteredSquare()
    {
        m_stacks.ring.Leave(m_frame);
        if (!m_bLeaf)
            m_stacks.region.Leave(m_place);
    }

    CEnteredSquare(const CEnteredSquare&) = delete;
    CEnteredSquare& operator=(const CEnteredSquare&) = delete;

    /// REQUIRES: not the square of a leaf.
    enumSide Classify() const { return m_stacks.region.ClassifySquare(m_square, m_place); }

    /// @return whether the point is so near that `IsInRing` can answer for it.
    bool IsAround(const zor::geom::PNT_2D& pnt) const noexcept { return m_square.around.Contains(pnt); }

    /// @return whether the point lies inside the outer ring or on it. REQUIRES: IsAround(pnt).
    bool IsInRing(const zor::geom::PNT_2D& pnt) const noexcept
    {
        return m_stacks.ring.IsInsideOrOn(m_frame, pnt);
    }

private:
    CContourStacks& m_stacks;
    CContourSquare m_square;
    bool m_bLeaf;
    CContourRegion::CPlace m_place;
    CEdgeTracker::CFrame m_frame;
};

#endif
