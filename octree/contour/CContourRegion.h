#ifndef OCTREE_CONTOUR_CCONTOURREGION_H
#define OCTREE_CONTOUR_CCONTOURREGION_H

#include <octree/CClipPlanes.h>
#include <octree/contour/CEdgeTracker.h>
#include <octree/contour/CLocalRegions.h>

#include <vector>

/// The region of one contour query: tells how the squares of a tree lie to it.
///
/// The rule: the region is subtracted from the square with the polygon clipper. Nothing left: the square lies
/// inside. The square itself left, its corners in their places but for a tolerance: outside. Anything else:
/// straddling.
///
/// The clipper is slow, and most squares do not need it for the same answer. Where no edge of the region
/// comes near, the square's centre decides. Where an edge crosses the square well away from its corners, what
/// is left must have a corner there, so the square straddles. Only the squares in between, cut close to a
/// corner or along a side, are subtracted from, and then the part of the region around the square
/// (`CLocalRegions`) does, unless a rounding where that part is cut off could change the answer.
class CContourRegion
{
public:
    using PNT_2D = zor::geom::PNT_2D;
    using TMultiPartPolygon = zor::geom::TMultiPartPolygon;

    explicit CContourRegion(const TMultiPartPolygon& polygon);

    /// What is known of a square on the way down.
    struct CPlace
    {
        CEdgeTracker::CFrame frame; ///< the region's edges near it
        std::size_t nLevel = 0;     ///< of the region around it
    };

    /// The square of the root, then those of children within the one last entered and not yet left.
    CPlace EnterRoot(const CContourSquare& square);
    CPlace Enter(const CPlace& parent, const CContourSquare& square);

    /// Leaves a square and all that were entered after it. The root can be entered again.
    void Leave(const CPlace& place) noexcept;

    /// @param square  the one that was entered as `place`.
    enumSide ClassifySquare(const CContourSquare& square, const CPlace& place);

    const CLocalRegions& GetRegions() const noexcept { return m_regions; }

private:
    bool MayTurnWhenCut(const CContourSquare& square, const CPlace& place) const;

    CLocalRegions m_regions;
    CEdgeTracker m_edges;
};

#endif
