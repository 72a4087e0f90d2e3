#ifndef ZOR3GEOM_CGEOS_H
#define ZOR3GEOM_CGEOS_H

#include <zor3geom/CGeosRegion.h>
#include <zor3geom/TMultiPartPolygon.h>
#include <zor3geom/TPlanBox.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace zor::geom
{

class CRingIndex;

/// One use of the GEOS library: its context, silent, and the few operations on regions that are needed.
///
/// Where the library finds no result (coordinates so large that their products overflow), the result is
/// empty. Where it ran out of memory, std::bad_alloc is thrown: it says so in the message of the failure
/// only.
class CGeos
{
public:
    CGeos();
    ~CGeos();
    CGeos(const CGeos&) = delete;
    CGeos& operator=(const CGeos&) = delete;

    /// The polygon of one ring as it is. Empty for fewer than three points or one that is not finite.
    CGeosRegion MakePolygon(const std::vector<PNT_2D>& ring) const;

    /// The polygon of an outer ring and holes as they are. Rings of fewer than three points, or with one that
    /// is not finite, count as none; without an outer ring the polygon is empty.
    CGeosRegion MakePolygon(const TMultiPartPolygon& polygon) const;

    /// The valid region of an outer ring less its holes: each ring is repaired by itself (where it crosses
    /// itself a place is inside by the odd-even rule), and the holes are taken out one after the other.
    CGeosRegion MakeRegion(const TMultiPartPolygon& polygon) const;

    CGeosRegion CalcDifference(const CGeosRegion& a, const CGeosRegion& b) const;
    CGeosRegion CalcIntersection(const CGeosRegion& a, const CGeosRegion& b) const;

    /// The region inside a box. Edges that the box's sides do not cut stay as they are; others may turn by a
    /// rounding.
    ///
    /// @param region  valid.
    CGeosRegion Clip(const CGeosRegion& region, const TPlanBox<double>& box) const;

    /// The same by a way that is made for drawing: it may fail (no value), and what it gives is to be looked
    /// at with `IsValid` before anything is computed from it.
    std::optional<CGeosRegion> ClipQuickly(const CGeosRegion& region, const TPlanBox<double>& box) const;

    /// Do the rings of the polygons neither cross themselves nor each other, and lie in each other as they
    /// should? True for the empty region.
    bool IsValid(const CGeosRegion& region) const;

    /// May the place be inside the region, or outside it, as told? On an edge it may be either.
    bool MayBe(const CGeosRegion& region, const PNT_2D& place, bool bInside) const;

    /// @return points of all rings, closing ones counted.
    std::size_t GetNumPnts(const CGeosRegion& region) const;

    /// The polygons of a region with their rings, closing points dropped; lines and points left out.
    std::vector<TMultiPartPolygon> GetParts(const CGeosRegion& region) const;

private:
    using TOnPolygon = std::function<void(const GEOSGeom_t*)>;

    static void OnMessage(const char* pMessage, void* pNoMemory) noexcept;
    void ThrowIfNoMemory() const;
    CGeosRegion Own(GEOSGeom_t* pGeometry) const;
    CGeosRegion Clone(const GEOSGeom_t* pGeometry) const;
    CGeosRegion MakeLinearRing(const std::vector<PNT_2D>& ring) const;
    CGeosRegion MakeValidPolygon(const std::vector<PNT_2D>& ring) const;
    CGeosRegion Repair(const CGeosRegion& polygon, const std::vector<PNT_2D>& ring) const;
    bool IsFaceInside(const GEOSGeom_t* pFace, const CRingIndex& ring) const;
    CGeosRegion Collect(std::vector<CGeosRegion> vecPolygons) const;
    CGeosRegion ExtractAreas(const CGeosRegion& region) const;
    void ForEachPolygon(const GEOSGeom_t* pGeometry, const TOnPolygon& onPolygon) const;
    std::vector<PNT_2D> GetRing(const GEOSGeom_t* pRing) const;

    GEOSContextHandle_HS* m_pContext;
    mutable bool m_bNoMemory = false; // set by the library's messages
};

} // namespace zor::geom

#endif
