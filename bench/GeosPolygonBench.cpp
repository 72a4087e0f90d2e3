#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <bench/ContourCases.h>
#include <zor4data/FindPntsInPolygons.h>

#include <string>

namespace
{

constexpr int c_nBatch = 4096;

std::uint64_t FindProduct(std::int64_t nNum, int nNumVertices, bool bHole, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    const CContourCase& contour = GetCase(nNum, nNumVertices, bHole);
    const std::vector<zor::geom::TMultiPartPolygon> vecPolygons{{contour.outer, contour.vecHoles}};
    CSumListener listener;
    timer.Measure([&] { FindPntsInPolygons(cld, &listener, vecPolygons, false, c_nBatch); });
    return listener.m_nSum;
}

std::uint64_t FindGeos(std::int64_t nNum, int nNumVertices, bool bHole, CCpuTimer& timer)
{
    const std::vector<char> vecInside = LocateGeos(nNum, *GetCase(nNum, nNumVertices, bHole).pArea, timer);
    std::uint64_t nSum = 0;
    for (std::size_t i = 0; i < vecInside.size(); ++i)
        nSum += vecInside[i] != 0 ? i + 1 : 0;
    return nSum;
}

void AddPolygonRows()
{
    for (const std::int64_t nNum : BenchSizes({200000, 10000000}))
        for (const int nNumVertices : {1000, 100000})
            for (const bool bHole : {true, false})
                AddRow({"polygon",
                        "points in a polygon, " + std::to_string(nNumVertices) + " vertices" +
                            (bHole ? " and a hole" : ", no hole"),
                        nNum, "GEOS IndexedPointInAreaLocator, every point",
                        nNum < 1000000         ? 0.6
                        : nNumVertices == 1000 ? 0.15
                                               : 0.20,
                        [=](CCpuTimer& timer) { return FindProduct(nNum, nNumVertices, bHole, timer); },
                        [=](CCpuTimer& timer) { return FindGeos(nNum, nNumVertices, bHole, timer); }});
}

const CBenchGroup c_group("polygon", AddPolygonRows);

} // namespace
