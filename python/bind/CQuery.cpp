#include <python/bind/CQuery.h>

#include <python/bind/CIndexBuffer.h>
#include <python/bind/Gil.h>
#include <zor4data/FindIndices.h>

namespace py = pybind11;

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;

namespace zorpy
{

namespace
{

std::vector<PNT_2D> ReadRing(const TRingArray& ring)
{
    std::vector<PNT_2D> vecPnts;
    const double* const p = ring.data();
    for (py::ssize_t i = 0; i + 1 < ring.size(); i += 2)
        vecPnts.emplace_back(p[i], p[i + 1]);
    return vecPnts;
}

} // namespace

std::vector<PLANE_3D> ReadPlanes(const TPlaneArray& planes)
{
    std::vector<PLANE_3D> vecPlanes;
    const double* const p = planes.data();
    for (py::ssize_t i = 0; i + 3 < planes.size(); i += 4)
        vecPlanes.emplace_back(p[i], p[i + 1], p[i + 2], p[i + 3]);
    return vecPlanes;
}

CQuery MakeAllQuery()
{
    return CQuery([](const CPntCld& cld, IPntIndexListener& listener, int nBatch)
                  { FindIndices(cld, &listener, nBatch); });
}

CQuery MakeLodQuery(double dSpacing)
{
    return CQuery([=](const CPntCld& cld, IPntIndexListener& listener, int nBatch)
                  { FindIndices_Lod(cld, &listener, dSpacing, nBatch); });
}

CQuery MakeClipQuery(const TPlaneArray& planes)
{
    return CQuery(
        [vecPlanes = ReadPlanes(planes)](const CPntCld& cld, IPntIndexListener& listener, int nBatch)
        { FindIndices_Clip(cld, &listener, vecPlanes, nBatch); });
}

CQuery MakeLodClipQuery(double dSpacing, const TPlaneArray& planes)
{
    return CQuery([dSpacing, vecPlanes = ReadPlanes(planes)](const CPntCld& cld, IPntIndexListener& listener,
                                                             int nBatch)
                  { FindIndices_LodClip(cld, &listener, dSpacing, vecPlanes, nBatch); });
}

CQuery MakeRectQuery(double xmin, double ymin, double xmax, double ymax)
{
    return CQuery([=](const CPntCld& cld, IPntIndexListener& listener, int nBatch)
                  { FindIndices2D(cld, &listener, xmin, ymin, xmax, ymax, nBatch); });
}

CQuery MakeLineQuery(const std::array<double, 2>& p1, const std::array<double, 2>& p2, double dDistance,
                     bool bStart, bool bEnd)
{
    const PNT_2D from(p1[0], p1[1]);
    const PNT_2D to(p2[0], p2[1]);
    return CQuery([=](const CPntCld& cld, IPntIndexListener& listener, int nBatch)
                  { FindIndices2D_NearLine(cld, &listener, from, to, dDistance, bStart, bEnd, nBatch); });
}

CQuery MakePolygonQuery(const std::vector<TPolygonArrays>& polygons, bool bOutside)
{
    std::vector<TMultiPartPolygon> vecPolygons;
    for (const TPolygonArrays& arrays : polygons)
    {
        TMultiPartPolygon& polygon = vecPolygons.emplace_back();
        polygon.outer = ReadRing(arrays.first);
        for (const TRingArray& hole : arrays.second)
            polygon.holes.push_back(ReadRing(hole));
    }
    return CQuery([vecPolygons, bOutside](const CPntCld& cld, IPntIndexListener& listener, int nBatch)
                  { FindIndicesInPolygons(cld, &listener, vecPolygons, bOutside, nBatch); });
}

py::array_t<std::int32_t> FindAll(const CCloud& cloud, const CQuery& query)
{
    constexpr int c_nBatch = 4096; // 16 KiB: they are copied while the processor has them near
    CIndexBuffer buffer(cloud.GetArrays().nNumPnts);
    {
        const CReleasedGil released;
        query.Ask(cloud.GetCld(), buffer, c_nBatch);
    }
    return buffer.MakeArray();
}

} // namespace zorpy
