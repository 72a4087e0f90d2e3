#ifndef OCTREE_CONTOUR_CEDGETRACKER_H
#define OCTREE_CONTOUR_CEDGETRACKER_H

#include <octree/contour/CContourEdge.h>
#include <octree/contour/CContourSquare.h>

#include <cstddef>
#include <cstdint>
#include <vector>

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
    struct CFrame
    {
        std::size_t nBegin = 0;
        std::size_t nEnd = 0;
        PNT_2D place;
        bool bInside = false; ///< whether the place, moved as said above, lies inside
    };

    /// Adds the edges of a ring, the closing one included. Rings of fewer than three points, or with a
    /// coordinate that is not finite, are left out. To be called before the first frame is made.
    void AddRing(const std::vector<PNT_2D>& ring);

    /// The frame of the square that holds everything. Cost: linear in the edges.
    CFrame EnterRoot(const CContourSquare& square);

    /// The frame of a square within that of `frame`.
    CFrame Enter(const CFrame& frame, const CContourSquare& square);

    /// Drops a frame and all that were made after it.
    void Leave(const CFrame& frame) noexcept { m_vecStack.resize(frame.nBegin); }

    /// Does a place in the neighbourhood of the frame's square lie inside, or on an edge?
    bool IsInsideOrOn(const CFrame& frame, const PNT_2D& pnt) const noexcept;

    /// Calls `fn(const CContourEdge&)` for the edges of a frame until it returns true. @return whether it
    /// did.
    template <class TFn>
    bool AnyEdge(const CFrame& frame, TFn fn) const
    {
        for (std::size_t i = frame.nBegin; i < frame.nEnd; ++i)
            if (fn(m_vecEdges[m_vecStack[i]]))
                return true;
        return false;
    }

private:
    bool IsCrossedOddly(const CFrame& frame, const PNT_2D& pnt) const noexcept;

    std::vector<CContourEdge> m_vecEdges;
    std::vector<std::uint32_t> m_vecStack; // indices of edges, frame behind frame
};

#endif
