#ifndef OCTREE_CONTOUR_CPOLYGONTRACKER_H
#define OCTREE_CONTOUR_CPOLYGONTRACKER_H

#include <octree/CClipPlanes.h>
#include <octree/contour/CContourEdge.h>
#include <zor3geom/TMultiPartPolygon.h>
#include <zor3geom/TPlanBox.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Polygons, narrowed down to squares on the way into a tree that quarters them.
///
/// What is inside is said in `CPolygonIndex`, which tells the same of any place; here it is told of places in
/// one square after the other.
///
/// The frame of a square keeps the edges that may meet it, ring by ring, and of one place in the square on
/// which side of each of these rings it lies; any other place of the square follows from the edges that are
/// crossed on the way there. A square that no edge meets is inside or outside as a whole, and its frame holds
/// nothing. So a question costs what the edges near it cost, however long the rings and many the polygons
/// are.
class CPolygonTracker
{
public:
    using PNT_2D = zor::geom::PNT_2D;
    using TBox = zor::geom::TPlanBox<double>;

    /// A square on the way down.
    struct CFrame
    {
        TBox box{};   ///< coordinate units; every point asked about lies in it
        PNT_2D place; ///< in the box: where the rings' sides are known
        enumSide eSide = enumSide::Outside;
        std::size_t nStack = 0; ///< where its rings are
        std::size_t nBegin = 0;
        std::size_t nEnd = 0;
    };

    /// Where a square is cut: its points have an x up to `dLowMaxX` or from `dHighMinX` on, y alike. All four
    /// lie in the square's box.
    struct CCut
    {
        double dLowMaxX;
        double dHighMinX;
        double dLowMaxY;
        double dHighMinY;
    };

    /// The frames of a square's quarters, the upper half in x from 2 on, the upper ones in y at 1 and 3. They
    /// go away with this object: objects end in the opposite order of their making.
    class CQuarters
    {
    public:
        /// @param frame  a square that straddles an edge. Cost: linear in the edges of its frame.
        CQuarters(CPolygonTracker& tracker, const CFrame& frame, const CCut& cut);
        ~CQuarters();

        CQuarters(const CQuarters&) = delete;
        CQuarters& operator=(const CQuarters&) = delete;

        const CFrame& Get(std::size_t nQuarter) const noexcept { return m_frames[nQuarter]; }

    private:
        CPolygonTracker& m_tracker;
        std::array<CFrame, 4> m_frames;
        std::array<std::size_t, 4> m_edges; // where the stacks ended before
        std::array<std::size_t, 4> m_parts;
    };

    /// @param vecPolygons  kept, not copied: they outlive the tracker unchanged.
    explicit CPolygonTracker(const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons);

    /// The frame of the square that holds every point. Once only. Cost: linear in the edges.
    CFrame EnterRoot(const TBox& box);

    /// Does a place of the frame's square lie inside? REQUIRES: the square straddles an edge.
    bool Contains(const CFrame& frame, const PNT_2D& pnt) const noexcept;

    /// @return how many edges a question in the frame's square looks at.
    std::size_t CountEdges(const CFrame& frame) const noexcept
    {
        const std::vector<CPart>& vecParts = m_stacks[frame.nStack].vecParts;
        return frame.nBegin == frame.nEnd ? 0 : vecParts[frame.nEnd - 1].nEnd - vecParts[frame.nBegin].nBegin;
    }

private:
    /// A ring that can be used.
    struct CRing
    {
        const PNT_2D* pPnts;
        std::size_t nNum;
        bool bHole; ///< of the polygon of the last ring before it that is none

        /// The edge that ends at corner `n`.
        CContourEdge GetEdge(std::size_t n) const noexcept
        {
            return {pPnts[n == 0 ? nNum - 1 : n - 1], pPnts[n]};
        }
    };

    /// A ring in a frame.
    struct CPart
    {
        std::size_t nRing = 0;
        std::size_t nBegin = 0; ///< its edges, on the stack of the frame
        std::size_t nEnd = 0;
        bool bInside = false; ///< the frame's place, moved as EdgeCrossing.h says, lies in the ring
    };

    /// Quarters of one kind, those of a level behind those of the level above.
    struct CStack
    {
        std::vector<std::uint32_t> vecEdges; ///< corners where they end
        std::vector<CPart> vecParts;         ///< outer rings, each before the holes of its polygon
    };

    class CFrameMaker;
    class CSplitter;

    void AddRing(const std::vector<PNT_2D>& ring, bool bHole);

    std::vector<CRing> m_vecRings;
    std::array<CStack, 4> m_stacks;
};

#endif
