#ifndef OCTREE_CONTOUR_CLOCALREGIONS_H
#define OCTREE_CONTOUR_CLOCALREGIONS_H

#include <octree/contour/CContourSquare.h>
#include <zor3geom/CGeos.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <algorithm>
#include <cstddef>
#include <vector>

/// The region of a contour query, whole and cut down to the room around squares.
///
/// Subtracting a region from a square costs as much as the region has points, however small the square is. So
/// the region is cut down to a frame around the square first. Squares are entered level by level on the way
/// into the tree, and each level keeps its cut: a cut is made out of the one above, and only when a square
/// there asks for it, so that none costs more than the edges around its parent.
///
/// Most cuts are made by a quick way that may get the rings wrong. It is looked after once, where the cut is
/// to be computed with: then a cut that is not valid, or has the wrong side inside, is made anew out of the
/// whole region by the sure way.
class CLocalRegions
{
public:
    explicit CLocalRegions(const zor::geom::TMultiPartPolygon& polygon);

    /// The whole region, its rings repaired.
    std::vector<zor::geom::TMultiPartPolygon> GetParts() const;

    /// @return points of all rings of the whole region.
    std::size_t GetNumPnts() const noexcept { return m_nNumPnts; }

    /// @return whether the whole region has so few points that cutting it down does not pay.
    bool IsSmall() const noexcept { return m_nNumPnts <= c_nSmall; }

    /// @return the region around the square of a level, or around one above it that is small already. Valid.
    const zor::geom::CGeosRegion& GetLocal(std::size_t nLevel);

    /// @return how many cuts the quick way did not do for. Few, or a query costs more than it should.
    std::size_t GetNumCutSurely() const noexcept { return m_nNumCutSurely; }

    /// @return how many squares the whole region was subtracted from, which costs more, too.
    std::size_t GetNumWhole() const noexcept { return m_nNumWhole; }

    /// The box that the region around a square is cut down to. Its sides keep off those of other squares of
    /// the tree, where contours may run.
    static zor::geom::TPlanBox<double> GetFrame(const zor::geom::TPlanBox<double>& box) noexcept;

    /// @return the root's level, whose region is the whole one.
    std::size_t EnterRoot() noexcept;

    /// Enters a square within the one last entered and not yet left.
    ///
    /// @param bCentreInside  whether the square's centre lies in the region, as its edges tell.
    /// @return the square's level.
    std::size_t Enter(const CContourSquare& square, bool bCentreInside);

    /// Leaves a level and all that were entered after it. The root's, the whole region, stays.
    void Leave(std::size_t nLevel) noexcept { Truncate(std::max<std::size_t>(nLevel, 1)); }

    /// What is left of a square, given by its corners in order, when the whole region is subtracted from it.
    std::vector<zor::geom::TMultiPartPolygon> SubtractWhole(const std::vector<zor::geom::PNT_2D>& ring);

    /// The same with the region around the square of a level. REQUIRES: not IsSmall().
    std::vector<zor::geom::TMultiPartPolygon> SubtractLocal(const std::vector<zor::geom::PNT_2D>& ring,
                                                            std::size_t nLevel);

private:
    static constexpr std::size_t c_nSmall = 64; // points up to which cutting a region down does not pay

    enum class enumState
    {
        NotMade,
        Made, ///< by the quick way: good for cutting further ones out of it
        Valid ///< good for the clipper
    };

    /// The region around a square entered.
    struct CLevel
    {
        zor::geom::TPlanBox<double> frame;
        zor::geom::PNT_2D centre;
        bool bCentreInside;
        enumState eState;
        zor::geom::CGeosRegion region; ///< where made
    };

    std::vector<zor::geom::TMultiPartPolygon> Subtract(const std::vector<zor::geom::PNT_2D>& ring,
                                                       const zor::geom::CGeosRegion& region) const;
    std::size_t CutDownTo(std::size_t nLevel);
    bool IsGood(const CLevel& level) const;
    void CutSurely(CLevel& level);
    void Truncate(std::size_t nNumLevels) noexcept;
    const zor::geom::CGeosRegion& GetWhole() const noexcept { return m_vecLevels.front().region; }

    zor::geom::CGeos m_geos;
    std::vector<CLevel> m_vecLevels; // of the root and the squares entered
    std::size_t m_nNumPnts;
    std::size_t m_nNumCutSurely = 0;
    std::size_t m_nNumWhole = 0;
};

#endif
