#ifndef ZOR3GEOM_CGEOS_H
#define ZOR3GEOM_CGEOS_H

#include <zor3geom/RECT_2D.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <geos_c.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zor::geom
{

class CRingIndex;

/// One use of the GEOS library: its context, silent, and the few operations on polygons that are needed.
///
/// Empty results come as null geometries, and every operation takes null for the empty region. Where the
/// library finds no result (coordinates so large that their products overflow), the result is empty. Where
/// it ran out of memory, std::bad_alloc is thrown: it says so in the message of the failure only.
class CGeos
{
public:
    struct CDestroy
    {
        GEOSContextHandle_t m_context;
        void operator()(GEOSGeometry* pGeometry) const noexcept { GEOSGeom_destroy_r(m_context, pGeometry); }
    };
    using Geometry = std::unique_ptr<GEOSGeometry, CDestroy>;

    CGeos();
    ~CGeos();
    CGeos(const CGeos&) = delete;
    CGeos& operator=(const CGeos&) = delete;

    /// The polygon of one ring as it is. Null for fewer than three points or one that is not finite.
    Geometry MakePolygon(const std::vector<PNT_2D>& ring) const;

    /// The polygon of an outer ring and holes as they are. Rings of fewer than three points, or with one that
    /// is not finite, count as none; null without an outer ring.
    Geometry MakePolygon(const TMultiPartPolygon& polygon) const;

    /// The valid region of an outer ring less its holes: each ring is repaired by itself (where it crosses
    /// itself a place is inside by the odd-even rule), and the holes are taken out one after the other.
    Geometry MakeRegion(const TMultiPartPolygon& polygon) const;

    Geometry CalcDifference(const GEOSGeometry* pA, const GEOSGeometry* pB) const;
    Geometry CalcIntersection(const GEOSGeometry* pA, const GEOSGeometry* pB) const;

    /// The region inside a box. Edges that the box's sides do not cut stay as they are; others may turn by a
    /// rounding.
    ///
    /// @param pRegion  valid.
    Geometry Clip(const GEOSGeometry* pRegion, const RECT_2D& box) const;

    /// The same by a way that is made for drawing: it may fail (no value), and what it gives, polygons
    /// always, is to be looked at with `IsValid` before anything is computed from it.
    std::optional<Geometry> ClipQuickly(const GEOSGeometry* pRegion, const RECT_2D& box) const;

    /// Do the rings of the polygons neither cross themselves nor each other, and lie in each other as they
    /// should? True for null.
    bool IsValid(const GEOSGeometry* pGeometry) const;

    /// May the place be inside the region, or outside it, as told? On an edge it may be either.
    bool MayBe(const GEOSGeometry* pRegion, const PNT_2D& place, bool bInside) const;

    /// @return points of all rings, closing ones counted; 0 for null.
    std::size_t GetNumPnts(const GEOSGeometry* pGeometry) const;

    /// The polygons of a geometry with their rings, closing points dropped; lines and points left out.
    std::vector<TMultiPartPolygon> GetParts(const GEOSGeometry* pGeometry) const;

private:
    static void OnMessage(const char* pMessage, void* pNoMemory) noexcept;
    void ThrowIfNoMemory() const;
    Geometry Own(GEOSGeometry* pGeometry) const;
    Geometry MakeLinearRing(const std::vector<PNT_2D>& ring) const;
    Geometry MakeValidPolygon(const std::vector<PNT_2D>& ring) const;
    Geometry Repair(const GEOSGeometry* pPolygon, const std::vector<PNT_2D>& ring) const;
    bool IsFaceInside(const GEOSGeometry* pFace, const CRingIndex& ring) const;
    Geometry Collect(std::vector<Geometry> vecPolygons) const;
    Geometry Clone(const GEOSGeometry* pGeometry) const;
    Geometry ExtractAreas(const GEOSGeometry* pGeometry) const;
    void ForEachPolygon(const GEOSGeometry* pGeometry,
                        const std::function<void(const GEOSGeometry*)>& onPolygon) const;
    std::vector<PNT_2D> GetRing(const GEOSGeometry* pRing) const;

    GEOSContextHandle_t m_context;
    mutable bool m_bNoMemory = false; // set by the library's messages
};

} // namespace zor::geom

#endif
