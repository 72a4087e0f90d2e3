#ifndef ZOR3GEOM_CPOLYGONINDEX_H
#define ZOR3GEOM_CPOLYGONINDEX_H

#include <zor3geom/CRingIndex.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <vector>

namespace zor::geom
{

/// Polygons prepared for many questions.
///
/// A place is inside when it lies on an edge of any ring, of a hole too, or in the outer ring of a polygon,
/// by the odd-even rule where that crosses itself, and in none of this polygon's holes. A polygon whose outer
/// ring cannot be used (IsUsableRing) holds nothing, not even the edges of its holes; a hole that cannot be
/// used is none. Exact, as `CRingIndex` is.
class CPolygonIndex
{
public:
    explicit CPolygonIndex(const std::vector<TMultiPartPolygon>& vecPolygons);

    /// Cost: a look at each ring's box, and a question to those whose box holds the place.
    bool Contains(const PNT_2D& pnt) const noexcept;

private:
    struct CPart
    {
        CRingIndex outer;
        std::vector<CRingIndex> vecHoles;

        CRingIndex::enumPlace Find(const PNT_2D& pnt) const noexcept;
    };

    std::vector<CPart> m_vecParts;
};

} // namespace zor::geom

#endif
