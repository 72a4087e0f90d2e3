#ifndef OCTREE_CONTOUR_CEDGETRACKER_H
#define OCTREE_CONTOUR_CEDGETRACKER_H

#include <zor3geom/PNT_2D.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// Axis-parallel box in plan view, coordinate units.
struct CPlanBox
{
    double m_dXMin;
    double m_dYMin;
    double m_dXMax;
    double m_dYMax;

    bool Contains(const zor::geom::PNT_2D& pnt) const noexcept
    {
        return pnt.x >= m_dXMin && pnt.x <= m_dXMax && pnt.y >= m_dYMin && pnt.y <= m_dYMax;
    }

    CPlanBox GetGrown(double d) const noexcept
    {
        return {m_dXMin - d, m_dYMin - d, m_dXMax + d, m_dYMax + d};
    }
};

/// Edges of a set of rings, narrowed down on the way into a tree of squares.
///
/// A place lies inside by the odd-even rule over all rings. Each square keeps the edges that may meet it
/// and knows of one place, its centre, whether that lies inside; any other place of the square follows
/// from the edges that are crossed on the way there. So a test costs what the edges near it cost, however
/// long the rings are.
///
/// Places on an edge are told apart as if each were moved up by a step too small to name and then right by
/// a smaller one: every crossing is then counted exactly once.
class CEdgeTracker
{
public:
    using PNT_2D = zor::geom::PNT_2D;

    /// A square on the way down: its edges on the stack, and one place.
    struct Frame
    {
        std::size_t m_nBegin;
        std::size_t m_nEnd;
        PNT_2D m_place;
        bool m_bInside; ///< whether the place, moved as said above, lies inside

        bool IsEmpty() const noexcept { return m_nBegin == m_nEnd; }
    };

    struct Edge
    {
        PNT_2D a;
        PNT_2D b;
    };

    /// Adds the edges of a ring, the closing one included. Rings of fewer than three points, or with a
    /// coordinate that is not finite, are left out. To be called before the first frame is made.
    void AddRing(const std::vector<PNT_2D>& ring);

    /// The frame of everything, with `place` as its place. Cost: linear in the edges.
    Frame EnterRoot(const PNT_2D& place);

    /// The frame of a square within that of `frame`. Both places must lie in the box of `frame`.
    Frame Enter(const Frame& frame, const PNT_2D& place, const CPlanBox& box);

    /// Drops a frame, the last one made.
    void Leave(const Frame& frame) noexcept { m_vecStack.resize(frame.m_nBegin); }

    /// Does a place in the box of the frame lie inside, or on an edge?
    bool IsInsideOrOn(const Frame& frame, const PNT_2D& pnt) const noexcept;

    /// Calls `fn(const Edge&)` for the edges of a frame until it returns true. @return whether it did.
    template <class TFn>
    bool AnyEdge(const Frame& frame, TFn fn) const
    {
        for (std::size_t i = frame.m_nBegin; i < frame.m_nEnd; ++i)
            if (fn(m_vecEdges[m_vecStack[i]]))
                return true;
        return false;
    }

    /// May the edge have a point in common with the box? False is certain.
    static bool MayMeet(const Edge& edge, const CPlanBox& box) noexcept;

private:
    bool IsCrossedOddly(const Frame& frame, const PNT_2D& pnt) const noexcept;

    std::vector<Edge> m_vecEdges;
    std::vector<std::uint32_t> m_vecStack; // indices of edges, frame behind frame
};

#endif
