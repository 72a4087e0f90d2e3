#ifndef OCTREE_CONTOUR_CCONTOUREDGE_H
#define OCTREE_CONTOUR_CCONTOUREDGE_H

#include <zor3geom/PNT_2D.h>
#include <zor3geom/TPlanBox.h>

/// An edge of a ring and what a square's box has to do with it. Coordinate units.
struct CContourEdge
{
    using PNT_2D = zor::geom::PNT_2D;
    using TBox = zor::geom::TPlanBox<double>;

    PNT_2D a;
    PNT_2D b;

    /// May the edge have a point in common with the box? False is certain.
    bool MayMeet(const TBox& box) const noexcept;

    /// Does the edge begin in the box, or cross one of its sides, so far from the corners that subtracting
    /// the region from the box must leave a corner there that is far from the box's own?
    bool CutsFarFromCorners(const TBox& box) const noexcept;

    /// May the edge turn by a rounding when it is cut at the box?
    bool MayTurnWhenCut(const TBox& box) const noexcept
    {
        return a.x != b.x && a.y != b.y && !(box.Contains(a) && box.Contains(b));
    }

    /// Does the edge's line pass the place so closely that a rounding may decide on which side?
    bool PassesClosely(const PNT_2D& pnt) const noexcept;

    bool EndsAt(const PNT_2D& pnt) const noexcept
    {
        return (pnt.x == a.x && pnt.y == a.y) || (pnt.x == b.x && pnt.y == b.y);
    }
};

#endif
