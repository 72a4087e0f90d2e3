#ifndef HOST_CPLANREGION_H
#define HOST_CPLANREGION_H

#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <cstdint>
#include <vector>

/// A closed ring prepared for many questions: its edges by bands of y, so that a point is held against the
/// edges near its height only.
class CPlanRing
{
public:
    enum class enumPlace
    {
        Outside,
        OnEdge,
        Inside ///< odd-even rule where the ring crosses itself
    };

    /// @param ring  finite coordinates, closing edge implied.
    explicit CPlanRing(const std::vector<zor::geom::PNT_2D>& ring);

    enumPlace Find(const zor::geom::PNT_2D& pnt) const;

    /// What the ring takes up; undefined for a ring without corners.
    const zor::geom::RECT_2D& GetBox() const { return m_box; }

private:
    struct CEdge
    {
        zor::geom::PNT_2D a;
        zor::geom::PNT_2D b;
    };

    std::size_t FindBand(double y) const;
    void SortIntoBands();

    std::vector<CEdge> m_vecEdges;
    zor::geom::RECT_2D m_box;
    std::size_t m_nNumBands = 1;
    std::vector<std::uint32_t> m_vecBegin; // per band, and the end of the last
    std::vector<std::uint32_t> m_vecInBand;
};

/// Regions in plan view, together.
///
/// A point is inside one of them when it lies in the outer ring and in none of the holes; the edges of both
/// belong to the region. This is what a user who draws a contour expects, without the liberties that the
/// library's contour queries take with squares cut near their corners and with holes.
class CPlanRegion
{
public:
    explicit CPlanRegion(const std::vector<zor::geom::TMultiPartPolygon>& vecPolygons);

    bool Contains(const zor::geom::PNT_2D& pnt) const;

    /// A rectangle that holds all of it.
    zor::geom::RECT_2D GetBox() const;

private:
    struct CPart
    {
        CPlanRing outer;
        std::vector<CPlanRing> vecHoles;
    };

    std::vector<CPart> m_vecParts;
};

#endif
