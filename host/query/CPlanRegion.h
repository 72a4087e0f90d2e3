#ifndef HOST_QUERY_CPLANREGION_H
#define HOST_QUERY_CPLANREGION_H

#include <zor3geom/CRingIndex.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <vector>

namespace zorcld
{

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
        zor::geom::CRingIndex outer;
        std::vector<zor::geom::CRingIndex> vecHoles;
    };

    std::vector<CPart> m_vecParts;
};

} // namespace zorcld

#endif
