#include <zor3geom/CGeos.h>

#include <zor3geom/CRingIndex.h>
#include <zor3geom/IsUsableRing.h>

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

namespace zor::geom
{
namespace
{

/// A step of about 10⁻¹² of the largest coordinate, far below the clouds' own; a power of two.
double CalcGrid(const TPlanBox<double>& box) noexcept
{
    const double dLargest =
        std::max({std::fabs(box.xmin), std::fabs(box.ymin), std::fabs(box.xmax), std::fabs(box.ymax)});
    return std::ldexp(1.0, std::max(std::ilogb(dLargest), -900) - 40);
}

} // namespace

CGeos::CGeos() : m_pContext(GEOS_init_r())
{
    if (m_pContext == nullptr)
        throw std::bad_alloc();
    GEOSContext_setErrorMessageHandler_r(m_pContext, OnMessage, &m_bNoMemory);
}

CGeos::~CGeos()
{
    GEOS_finish_r(m_pContext);
}

/// Exceptions end inside the library; what is left of one is its text.
void CGeos::OnMessage(const char* pMessage, void* pNoMemory) noexcept
{
    if (std::strstr(pMessage, "bad_alloc") != nullptr)
        *static_cast<bool*>(pNoMemory) = true;
}

void CGeos::ThrowIfNoMemory() const
{
    if (!m_bNoMemory)
        return;
    m_bNoMemory = false;
    throw std::bad_alloc();
}

CGeosRegion CGeos::Own(GEOSGeometry* pGeometry) const
{
    CGeosRegion region(m_pContext, pGeometry);
    if (pGeometry != nullptr && GEOSisEmpty_r(m_pContext, pGeometry) == 1)
        region.m_pGeometry.reset();
    ThrowIfNoMemory();
    return region;
}

CGeosRegion CGeos::Clone(const GEOSGeometry* pGeometry) const
{
    return Own(pGeometry == nullptr ? nullptr : GEOSGeom_clone_r(m_pContext, pGeometry));
}

CGeosRegion CGeos::MakeLinearRing(const std::vector<PNT_2D>& ring) const
{
    if (!IsUsableRing(ring))
        return Own(nullptr);
    std::vector<double> vecCoords;
    vecCoords.reserve(2 * ring.size() + 2);
    for (const PNT_2D& pnt : ring)
        vecCoords.insert(vecCoords.end(), {pnt.x, pnt.y});
    vecCoords.insert(vecCoords.end(), {ring.front().x, ring.front().y});
    GEOSCoordSequence* const pCoords = GEOSCoordSeq_copyFromBuffer_r(
        m_pContext, vecCoords.data(), static_cast<unsigned>(vecCoords.size() / 2), 0, 0);
    // The call takes over what it is given, whether it succeeds or not.
    return Own(pCoords == nullptr ? nullptr : GEOSGeom_createLinearRing_r(m_pContext, pCoords));
}

CGeosRegion CGeos::MakePolygon(const std::vector<PNT_2D>& ring) const
{
    return MakePolygon(TMultiPartPolygon{ring, {}});
}

CGeosRegion CGeos::MakePolygon(const TMultiPartPolygon& polygon) const
{
    CGeosRegion outer = MakeLinearRing(polygon.outer);
    std::vector<CGeosRegion> vecHoles;
    for (const std::vector<PNT_2D>& hole : polygon.holes)
        if (CGeosRegion ring = MakeLinearRing(hole); !ring.IsEmpty())
            vecHoles.push_back(std::move(ring));
    if (outer.IsEmpty())
        return outer;
    std::vector<GEOSGeometry*> vecRaw;
    vecRaw.reserve(vecHoles.size());
    for (CGeosRegion& hole : vecHoles)
        vecRaw.push_back(hole.m_pGeometry.release()); // the polygon takes them over
    return Own(GEOSGeom_createPolygon_r(m_pContext, outer.m_pGeometry.release(), vecRaw.data(),
                                        static_cast<unsigned>(vecRaw.size())));
}

bool CGeos::IsValid(const CGeosRegion& region) const
{
    const bool bValid = region.IsEmpty() || GEOSisValid_r(m_pContext, region.m_pGeometry.get()) == 1;
    ThrowIfNoMemory();
    return bValid;
}

CGeosRegion CGeos::MakeValidPolygon(const std::vector<PNT_2D>& ring) const
{
    CGeosRegion polygon = MakePolygon(ring);
    return IsValid(polygon) ? std::move(polygon) : Repair(polygon, ring);
}

/// The faces that the ring's edges cut the plane into, as far as they lie inside by the odd-even rule.
///
/// Crossings are rounded to a fine grid: with crossings in full precision edges would cross anew a little
/// beside them, and faces would overlap.
CGeosRegion CGeos::Repair(const CGeosRegion& polygon, const std::vector<PNT_2D>& ring) const
{
    const CRingIndex index(ring);
    const double dGrid = CalcGrid(index.GetBox());
    const GEOSGeometry* const pRing = GEOSGetExteriorRing_r(m_pContext, polygon.m_pGeometry.get());
    const CGeosRegion edges = Own(GEOSUnaryUnionPrec_r(m_pContext, pRing, dGrid));
    const GEOSGeometry* const pEdges = edges.m_pGeometry.get();
    const CGeosRegion faces = Own(pEdges == nullptr ? nullptr : GEOSPolygonize_r(m_pContext, &pEdges, 1));
    std::vector<CGeosRegion> vecInside;
    ForEachPolygon(faces.m_pGeometry.get(),
                   [&](const GEOSGeometry* pFace)
                   {
                       if (IsFaceInside(pFace, index))
                           vecInside.push_back(Clone(pFace));
                   });
    const CGeosRegion all = Collect(std::move(vecInside));
    if (all.IsEmpty())
        return Own(nullptr);
    return ExtractAreas(Own(GEOSUnaryUnionPrec_r(m_pContext, all.m_pGeometry.get(), dGrid)));
}

bool CGeos::IsFaceInside(const GEOSGeometry* pFace, const CRingIndex& ring) const
{
    const CGeosRegion place = Own(GEOSPointOnSurface_r(m_pContext, pFace));
    PNT_2D pnt;
    return !place.IsEmpty() && GEOSGeomGetX_r(m_pContext, place.m_pGeometry.get(), &pnt.x) == 1 &&
           GEOSGeomGetY_r(m_pContext, place.m_pGeometry.get(), &pnt.y) == 1 &&
           ring.Find(pnt) != CRingIndex::enumPlace::Outside;
}

/// The polygons of a geometry as one; lines and points, which an operation may leave, are dropped.
CGeosRegion CGeos::ExtractAreas(const CGeosRegion& region) const
{
    std::vector<CGeosRegion> vecAreas;
    ForEachPolygon(region.m_pGeometry.get(),
                   [&](const GEOSGeometry* pPolygon) { vecAreas.push_back(Clone(pPolygon)); });
    return Collect(std::move(vecAreas));
}

CGeosRegion CGeos::Collect(std::vector<CGeosRegion> vecPolygons) const
{
    std::vector<GEOSGeometry*> vecRaw;
    vecRaw.reserve(vecPolygons.size());
    for (CGeosRegion& polygon : vecPolygons)
        vecRaw.push_back(polygon.m_pGeometry.release()); // the collection takes them over
    return Own(GEOSGeom_createCollection_r(m_pContext, GEOS_MULTIPOLYGON, vecRaw.data(),
                                           static_cast<unsigned>(vecRaw.size())));
}

CGeosRegion CGeos::MakeRegion(const TMultiPartPolygon& polygon) const
{
    CGeosRegion region = MakePolygon(polygon);
    if (IsValid(region)) // as nearly all are: one look at all rings, and nothing to take out
        return region;
    region = MakeValidPolygon(polygon.outer);
    for (const std::vector<PNT_2D>& hole : polygon.holes)
        region = CalcDifference(region, MakeValidPolygon(hole));
    return region;
}

CGeosRegion CGeos::CalcDifference(const CGeosRegion& a, const CGeosRegion& b) const
{
    if (a.IsEmpty() || b.IsEmpty())
        return Clone(a.m_pGeometry.get());
    return Own(GEOSDifference_r(m_pContext, a.m_pGeometry.get(), b.m_pGeometry.get()));
}

CGeosRegion CGeos::CalcIntersection(const CGeosRegion& a, const CGeosRegion& b) const
{
    if (a.IsEmpty() || b.IsEmpty())
        return Own(nullptr);
    return ExtractAreas(Own(GEOSIntersection_r(m_pContext, a.m_pGeometry.get(), b.m_pGeometry.get())));
}

std::optional<CGeosRegion> CGeos::ClipQuickly(const CGeosRegion& region, const TPlanBox<double>& box) const
{
    if (region.IsEmpty())
        return Own(nullptr);
    GEOSGeometry* const pClipped =
        GEOSClipByRect_r(m_pContext, region.m_pGeometry.get(), box.xmin, box.ymin, box.xmax, box.ymax);
    CGeosRegion clipped = Own(pClipped);
    const int nType =
        clipped.IsEmpty() ? GEOS_POLYGON : GEOSGeomTypeId_r(m_pContext, clipped.m_pGeometry.get());
    if (pClipped == nullptr || (nType != GEOS_POLYGON && nType != GEOS_MULTIPOLYGON))
        return std::nullopt;
    return clipped;
}

CGeosRegion CGeos::Clip(const CGeosRegion& region, const TPlanBox<double>& box) const
{
    const std::vector<PNT_2D> ring{PNT_2D(box.xmin, box.ymin), PNT_2D(box.xmin, box.ymax),
                                   PNT_2D(box.xmax, box.ymax), PNT_2D(box.xmax, box.ymin)};
    return CalcIntersection(region, MakePolygon(ring));
}

bool CGeos::MayBe(const CGeosRegion& region, const PNT_2D& place, bool bInside) const
{
    if (region.IsEmpty())
        return !bInside;
    const GEOSGeometry* const pRegion = region.m_pGeometry.get();
    const CGeosRegion point = Own(GEOSGeom_createPointFromXY_r(m_pContext, place.x, place.y));
    const bool bMayBe = bInside ? GEOSIntersects_r(m_pContext, pRegion, point.m_pGeometry.get()) == 1
                                : GEOSContains_r(m_pContext, pRegion, point.m_pGeometry.get()) == 0;
    ThrowIfNoMemory();
    return bMayBe;
}

std::size_t CGeos::GetNumPnts(const CGeosRegion& region) const
{
    const int nNum = region.IsEmpty() ? 0 : GEOSGetNumCoordinates_r(m_pContext, region.m_pGeometry.get());
    return static_cast<std::size_t>(std::max(nNum, 0));
}

// Collections within collections do not come out of any operation here: one level is enough.
void CGeos::ForEachPolygon(const GEOSGeometry* pGeometry, const TOnPolygon& onPolygon) const
{
    if (pGeometry == nullptr)
        return;
    const int nNum = GEOSGetNumGeometries_r(m_pContext, pGeometry);
    for (int i = 0; i < nNum; ++i)
    {
        const GEOSGeometry* const pPart = GEOSGetGeometryN_r(m_pContext, pGeometry, i);
        const int nType = GEOSGeomTypeId_r(m_pContext, pPart);
        if (nType == GEOS_POLYGON && GEOSisEmpty_r(m_pContext, pPart) == 0)
            onPolygon(pPart);
        else if (nType == GEOS_MULTIPOLYGON && pPart != pGeometry)
            ForEachPolygon(pPart, onPolygon);
    }
}

std::vector<PNT_2D> CGeos::GetRing(const GEOSGeometry* pRing) const
{
    const GEOSCoordSequence* const pCoords = GEOSGeom_getCoordSeq_r(m_pContext, pRing);
    unsigned nNum = 0;
    if (pCoords != nullptr)
        GEOSCoordSeq_getSize_r(m_pContext, pCoords, &nNum);
    std::vector<double> vecCoords(2 * static_cast<std::size_t>(nNum));
    if (nNum > 0)
        GEOSCoordSeq_copyToBuffer_r(m_pContext, pCoords, vecCoords.data(), 0, 0);
    ThrowIfNoMemory();
    std::vector<PNT_2D> ring;
    ring.reserve(nNum);
    for (std::size_t i = 0; i + 2 < vecCoords.size(); i += 2) // without the closing point
        ring.emplace_back(vecCoords[i], vecCoords[i + 1]);
    return ring;
}

std::vector<TMultiPartPolygon> CGeos::GetParts(const CGeosRegion& region) const
{
    std::vector<TMultiPartPolygon> vecParts;
    ForEachPolygon(region.m_pGeometry.get(),
                   [&](const GEOSGeometry* pPolygon)
                   {
                       TMultiPartPolygon part;
                       part.outer = GetRing(GEOSGetExteriorRing_r(m_pContext, pPolygon));
                       const int nNumHoles = GEOSGetNumInteriorRings_r(m_pContext, pPolygon);
                       for (int i = 0; i < nNumHoles; ++i)
                           part.holes.push_back(GetRing(GEOSGetInteriorRingN_r(m_pContext, pPolygon, i)));
                       vecParts.push_back(std::move(part));
                   });
    return vecParts;
}

} // namespace zor::geom
