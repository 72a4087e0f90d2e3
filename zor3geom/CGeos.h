#ifndef ZOR3GEOM_CGEOS_H
#define ZOR3GEOM_CGEOS_H

#include <zor3geom/TMultiPartPolygon.h>

#include <geos_c.h>

#include <functional>
#include <memory>
#include <vector>

namespace zor::geom
{

/// One use of the GEOS library: its context, silent, and the few operations on polygons that are needed.
///
/// GEOS reports failures as null; here they and empty results come as null geometries, and every
/// operation takes null for the empty region.
class CGeos
{
public:
    using Geometry = std::unique_ptr<GEOSGeometry, std::function<void(GEOSGeometry*)>>;

    CGeos();
    ~CGeos();
    CGeos(const CGeos&) = delete;
    CGeos& operator=(const CGeos&) = delete;

    /// The polygon of one ring as it is. Null for fewer than three points or one that is not finite.
    Geometry MakePolygon(const std::vector<PNT_2D>& ring) const;

    /// The valid region of an outer ring less its holes: each ring is repaired by itself (where it crosses
    /// itself a place is inside by the odd-even rule), and the holes are taken out one after the other.
    Geometry MakeRegion(const TMultiPartPolygon& polygon) const;

    Geometry CalcDifference(const GEOSGeometry* pA, const GEOSGeometry* pB) const;
    Geometry CalcIntersection(const GEOSGeometry* pA, const GEOSGeometry* pB) const;

    /// The polygons of a geometry with their rings, closing points dropped; lines and points left out.
    std::vector<TMultiPartPolygon> GetParts(const GEOSGeometry* pGeometry) const;

    /// Number of points of all rings.
    int GetNumPnts(const GEOSGeometry* pGeometry) const;

private:
    Geometry Own(GEOSGeometry* pGeometry) const;
    Geometry MakeValidPolygon(const std::vector<PNT_2D>& ring) const;
    Geometry Clone(const GEOSGeometry* pGeometry) const;
    Geometry ExtractAreas(const GEOSGeometry* pGeometry) const;
    void ForEachPolygon(const GEOSGeometry* pGeometry,
                        const std::function<void(const GEOSGeometry*)>& onPolygon) const;
    std::vector<PNT_2D> GetRing(const GEOSGeometry* pRing) const;

    GEOSContextHandle_t m_context;
};

} // namespace zor::geom

#endif
