#include <zor3geom/CGeos.h>

#include <zor3geom/CRingIndex.h>
#include <zor3geom/IsFiniteRing.h>

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
double CalcGrid(const RECT_2D& box) noexcept
{
    const double dLargest =
        std::max({std::fabs(box.xmin), std::fabs(box.ymin), std::fabs(box.xmax), std::fabs(box.ymax)});
    return std::ldexp(1.0, std::max(std::ilogb(dLargest), -900) - 40);
}

} // namespace

CGeos::CGeos() : m_context(GEOS_init_r())
{
    if (m_context == nullptr)
        throw std::bad_alloc();
    GEOSContext_setErrorMessageHandler_r(m_context, OnMessage, &m_bNoMemory);
}

CGeos::~CGeos()
{
    GEOS_finish_r(m_context);
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

CGeos::Geometry CGeos::Own(GEOSGeometry* pGeometry) const
{
    Geometry geometry(pGeometry, CDestroy{m_context});
    if (pGeometry != nullptr && GEOSisEmpty_r(m_context, pGeometry) == 1)
        geometry.reset();
    ThrowIfNoMemory();
    return geometry;
}

CGeos::Geometry CGeos::Clone(const GEOSGeometry* pGeometry) const
{
    return Own(pGeometry == nullptr ? nullptr : GEOSGeom_clone_r(m_context, pGeometry));
}

CGeos::Geometry CGeos::MakeLinearRing(const std::vector<PNT_2D>& ring) const
{
    if (ring.size() < 3 || !IsFiniteRing(ring))
        return Own(nullptr);
    std::vector<double> vecCoords;
    vecCoords.reserve(2 * ring.size() + 2);
    for (const PNT_2D& pnt : ring)
        vecCoords.insert(vecCoords.end(), {pnt.x, pnt.y});
    vecCoords.insert(vecCoords.end(), {ring.front().x, ring.front().y});
    GEOSCoordSequence* const pCoords = GEOSCoordSeq_copyFromBuffer_r(
        m_context, vecCoords.data(), static_cast<unsigned>(vecCoords.size() / 2), 0, 0);
    // The call takes over what it is given, whether it succeeds or not.
    return Own(pCoords == nullptr ? nullptr : GEOSGeom_createLinearRing_r(m_context, pCoords));
}

CGeos::Geometry CGeos::MakePolygon(const std::vector<PNT_2D>& ring) const
{
    return MakePolygon(TMultiPartPolygon{ring, {}});
}

CGeos::Geometry CGeos::MakePolygon(const TMultiPartPolygon& polygon) const
{
    Geometry outer = MakeLinearRing(polygon.outer);
    std::vector<Geometry> vecHoles;
    for (const std::vector<PNT_2D>& hole : polygon.holes)
        if (Geometry ring = MakeLinearRing(hole))
            vecHoles.push_back(std::move(ring));
    if (outer == nullptr)
        return outer;
    std::vector<GEOSGeometry*> vecRaw;
    vecRaw.reserve(vecHoles.size());
    for (Geometry& hole : vecHoles)
        vecRaw.push_back(hole.release()); // the polygon takes them over
    return Own(GEOSGeom_createPolygon_r(m_context, outer.release(), vecRaw.data(),
                                        static_cast<unsigned>(vecRaw.size())));
}

bool CGeos::IsValid(const GEOSGeometry* pGeometry) const
{
    const bool bValid = pGeometry == nullptr || GEOSisValid_r(m_context, pGeometry) == 1;
    ThrowIfNoMemory();
    return bValid;
}

CGeos::Geometry CGeos::MakeValidPolygon(const std::vector<PNT_2D>& ring) const
{
    Geometry polygon = MakePolygon(ring);
    return IsValid(polygon.get()) ? std::move(polygon) : Repair(polygon.get(), ring);
}

/// The faces that the ring's edges cut the plane into, as far as they lie inside by the odd-even rule.
///
/// Crossings are rounded to a fine grid: with crossings in full precision edges would cross anew a little
/// beside them, and faces would overlap.
CGeos::Geometry CGeos::Repair(const GEOSGeometry* pPolygon, const std::vector<PNT_2D>& ring) const
{
    const CRingIndex index(ring);
    const double dGrid = CalcGrid(index.GetBox());
    const Geometry edges =
        Own(GEOSUnaryUnionPrec_r(m_context, GEOSGetExteriorRing_r(m_context, pPolygon), dGrid));
    const GEOSGeometry* const pEdges = edges.get();
    const Geometry faces = Own(pEdges == nullptr ? nullptr : GEOSPolygonize_r(m_context, &pEdges, 1));
    std::vector<Geometry> vecInside;
    ForEachPolygon(faces.get(),
                   [&](const GEOSGeometry* pFace)
                   {
                       if (IsFaceInside(pFace, index))
                           vecInside.push_back(Clone(pFace));
                   });
    const Geometry all = Collect(std::move(vecInside));
    return all == nullptr ? Own(nullptr)
                          : ExtractAreas(Own(GEOSUnaryUnionPrec_r(m_context, all.get(), dGrid)).get());
}

bool CGeos::IsFaceInside(const GEOSGeometry* pFace, const CRingIndex& ring) const
{
    const Geometry place = Own(GEOSPointOnSurface_r(m_context, pFace));
    PNT_2D pnt;
    return place != nullptr && GEOSGeomGetX_r(m_context, place.get(), &pnt.x) == 1 &&
           GEOSGeomGetY_r(m_context, place.get(), &pnt.y) == 1 &&
           ring.Find(pnt) != CRingIndex::enumPlace::Outside;
}

/// The polygons of a geometry as one; lines and points, which an operation may leave, are dropped.
CGeos::Geometry CGeos::ExtractAreas(const GEOSGeometry* pGeometry) const
{
    std::vector<Geometry> vecAreas;
    ForEachPolygon(pGeometry, [&](const GEOSGeometry* pPolygon) { vecAreas.push_back(Clone(pPolygon)); });
    return Collect(std::move(vecAreas));
}

CGeos::Geometry CGeos::Collect(std::vector<Geometry> vecPolygons) const
{
    std::vector<GEOSGeometry*> vecRaw;
    vecRaw.reserve(vecPolygons.size());
    for (Geometry& polygon : vecPolygons)
        vecRaw.push_back(polygon.release()); // the collection takes them over
    return Own(GEOSGeom_createCollection_r(m_context, GEOS_MULTIPOLYGON, vecRaw.data(),
                                           static_cast<unsigned>(vecRaw.size())));
}

CGeos::Geometry CGeos::MakeRegion(const TMultiPartPolygon& polygon) const
{
    Geometry region = MakePolygon(polygon);
    if (IsValid(region.get())) // as nearly all are: one look at all rings, and nothing to take out
        return region;
    region = MakeValidPolygon(polygon.outer);
    for (const std::vector<PNT_2D>& hole : polygon.holes)
        region = CalcDifference(region.get(), MakeValidPolygon(hole).get());
    return region;
}

CGeos::Geometry CGeos::CalcDifference(const GEOSGeometry* pA, const GEOSGeometry* pB) const
{
    if (pA == nullptr || pB == nullptr)
        return Clone(pA);
    return Own(GEOSDifference_r(m_context, pA, pB));
}

CGeos::Geometry CGeos::CalcIntersection(const GEOSGeometry* pA, const GEOSGeometry* pB) const
{
    if (pA == nullptr || pB == nullptr)
        return Own(nullptr);
    return ExtractAreas(Own(GEOSIntersection_r(m_context, pA, pB)).get());
}

std::optional<CGeos::Geometry> CGeos::ClipQuickly(const GEOSGeometry* pRegion, const RECT_2D& box) const
{
    if (pRegion == nullptr)
        return Own(nullptr);
    GEOSGeometry* const pClipped =
        GEOSClipByRect_r(m_context, pRegion, box.xmin, box.ymin, box.xmax, box.ymax);
    Geometry clipped = Own(pClipped); // null for an empty one too
    const int nType = clipped == nullptr ? GEOS_POLYGON : GEOSGeomTypeId_r(m_context, clipped.get());
    if (pClipped == nullptr || (nType != GEOS_POLYGON && nType != GEOS_MULTIPOLYGON))
        return std::nullopt;
    return clipped;
}

CGeos::Geometry CGeos::Clip(const GEOSGeometry* pRegion, const RECT_2D& box) const
{
    const std::vector<PNT_2D> ring{PNT_2D(box.xmin, box.ymin), PNT_2D(box.xmin, box.ymax),
                                   PNT_2D(box.xmax, box.ymax), PNT_2D(box.xmax, box.ymin)};
    return CalcIntersection(pRegion, MakePolygon(ring).get());
}

bool CGeos::MayBe(const GEOSGeometry* pRegion, const PNT_2D& place, bool bInside) const
{
    if (pRegion == nullptr)
        return !bInside;
    const Geometry point = Own(GEOSGeom_createPointFromXY_r(m_context, place.x, place.y));
    const bool bMayBe = bInside ? GEOSIntersects_r(m_context, pRegion, point.get()) == 1
                                : GEOSContains_r(m_context, pRegion, point.get()) == 0;
    ThrowIfNoMemory();
    return bMayBe;
}

std::size_t CGeos::GetNumPnts(const GEOSGeometry* pGeometry) const
{
    const int nNum = pGeometry == nullptr ? 0 : GEOSGetNumCoordinates_r(m_context, pGeometry);
    return static_cast<std::size_t>(std::max(nNum, 0));
}

// Collections within collections do not come out of any operation here: one level is enough.
void CGeos::ForEachPolygon(const GEOSGeometry* pGeometry,
                           const std::function<void(const GEOSGeometry*)>& onPolygon) const
{
    if (pGeometry == nullptr)
        return;
    const int nNum = GEOSGetNumGeometries_r(m_context, pGeometry);
    for (int i = 0; i < nNum; ++i)
    {
        const GEOSGeometry* const pPart = GEOSGetGeometryN_r(m_context, pGeometry, i);
        const int nType = GEOSGeomTypeId_r(m_context, pPart);
        if (nType == GEOS_POLYGON && GEOSisEmpty_r(m_context, pPart) == 0)
            onPolygon(pPart);
        else if (nType == GEOS_MULTIPOLYGON && pPart != pGeometry)
            ForEachPolygon(pPart, onPolygon);
    }
}

std::vector<PNT_2D> CGeos::GetRing(const GEOSGeometry* pRing) const
{
    const GEOSCoordSequence* const pCoords = GEOSGeom_getCoordSeq_r(m_context, pRing);
    unsigned nNum = 0;
    if (pCoords != nullptr)
        GEOSCoordSeq_getSize_r(m_context, pCoords, &nNum);
    std::vector<double> vecCoords(2 * static_cast<std::size_t>(nNum));
    if (nNum > 0)
        GEOSCoordSeq_copyToBuffer_r(m_context, pCoords, vecCoords.data(), 0, 0);
    ThrowIfNoMemory();
    std::vector<PNT_2D> ring;
    ring.reserve(nNum);
    for (std::size_t i = 0; i + 2 < vecCoords.size(); i += 2) // without the closing point
        ring.emplace_back(vecCoords[i], vecCoords[i + 1]);
    return ring;
}

std::vector<TMultiPartPolygon> CGeos::GetParts(const GEOSGeometry* pGeometry) const
{
    std::vector<TMultiPartPolygon> vecParts;
    ForEachPolygon(pGeometry,
                   [&](const GEOSGeometry* pPolygon)
                   {
                       TMultiPartPolygon part;
                       part.outer = GetRing(GEOSGetExteriorRing_r(m_context, pPolygon));
                       const int nNumHoles = GEOSGetNumInteriorRings_r(m_context, pPolygon);
                       for (int i = 0; i < nNumHoles; ++i)
                           part.holes.push_back(GetRing(GEOSGetInteriorRingN_r(m_context, pPolygon, i)));
                       vecParts.push_back(std::move(part));
                   });
    return vecParts;
}

} // namespace zor::geom
