#ifndef OCTREE_CONTOUR_CCONTOURREGION_H
#define OCTREE_CONTOUR_CCONTOURREGION_H

#include <octree/CClipPlanes.h>
#include <octree/contour/CEdgeTracker.h>
#include <zor3geom/CGeos.h>

#include <vector>

/// The region of one contour query, prepared once: tells how the squares of a tree lie to it.
///
/// The answer is that of subtracting the region from the square with the polygon clipper (`GetSide`).
/// Most squares need no clipper: where no edge of the region comes near, the square's centre decides, and
/// where an edge crosses it well away from its corners, it straddles whatever the clipper would make of
/// it. The clipper is given the part of the region around the square.
class CContourRegion
{
public:
    explicit CContourRegion(const zor::geom::TMultiPartPolygon& polygon);

    /// What the walk knows of a square.
    struct Square
    {
        CPlanBox m_box;
        CEdgeTracker::Frame m_frame;
        std::size_t m_nLevel; ///< place on the stack of the regions around squares
    };

    /// The square of the root, then those of children within the one last entered and not yet left.
    Square EnterRoot(const CPlanBox& box);
    Square Enter(const Square& parent, const CPlanBox& box);
    void Leave(const Square& square) noexcept;

    enumSide ClassifySquare(const Square& square);

    /// The rule itself, for what is left of a square (four corners in order along its boundary).
    static enumSide GetSide(const std::vector<zor::geom::TMultiPartPolygon>& vecRest,
                            const std::vector<zor::geom::PNT_2D>& square);

private:
    bool IsCutInside(const Square& square) const;

    enum class enumState
    {
        NotMade,
        Made, ///< by the quick way: good for cutting further ones out of it
        Valid ///< good for the clipper
    };

    /// The region around a square entered.
    struct Level
    {
        CPlanBox m_box;
        zor::geom::PNT_2D m_centre;
        bool m_bCentreInside; ///< by the region's edges
        enumState m_eState;
        zor::geom::CGeos::Geometry m_region; ///< where made
    };

    const GEOSGeometry* ChooseRegion(const Square& square, const std::vector<zor::geom::PNT_2D>& ring);
    bool MayTurnOnCut(const Square& square, const std::vector<zor::geom::PNT_2D>& ring) const;
    const GEOSGeometry* MakeLocalRegion(const Square& square);
    bool IsGood(const Level& level) const;
    void MakeSurely(Level& level);

    zor::geom::CGeos m_geos;
    CEdgeTracker m_edges;
    std::vector<Level> m_vecLevels; // of the root and the squares entered
};

/// Corners of a box, counter to the axes' order: the lower left one, then upwards, right, and down.
std::vector<zor::geom::PNT_2D> MakeRing(const CPlanBox& box);

/// Room around a square in which the edges that matter to it are looked for: points may lie a few compact
/// units outside the square of their node.
CPlanBox GetNeighbourhood(const CPlanBox& box) noexcept;

#endif
