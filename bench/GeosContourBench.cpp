#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <bench/CContourModel.h>
#include <bench/ContourCases.h>
#include <formats/Compact.h>
#include <octree/BuildTree.h>

#include <map>
#include <memory>
#include <utility>

// What is compared: the product deliberately drops some points along the contour, so the peer's points are
// seen through its rule before the sums of the indices are compared; CContourModel says how.

namespace
{

/// The model of a case, made once.
const CContourModel& GetModel(std::int64_t nNum, int nNumVertices, bool bHole)
{
    static std::map<std::pair<int, bool>, std::unique_ptr<CContourModel>> mapModels;
    std::unique_ptr<CContourModel>& pModel = mapModels[{nNumVertices, bHole}];
    if (pModel == nullptr)
    {
        std::vector<CTruncPnt> vecPnts = MakeCompact(nNum, false);
        const COcTreeIndex tree =
            BuildTree(vecPnts.data(), static_cast<std::int32_t>(nNum)); // as the cloud's
        const CSamplePnt& first = GetTerrain(nNum).front();
        pModel = std::make_unique<CContourModel>(tree, SaturateToFloat(first.x), SaturateToFloat(first.y),
                                                 *GetCase(nNum, nNumVertices, bHole).pArea, bHole);
    }
    return *pModel;
}

std::uint64_t SelectProduct(std::int64_t nNum, int nNumVertices, bool bHole, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    const CContourCase& contour = GetCase(nNum, nNumVertices, bHole);
    CSumListener listener;
    timer.Measure([&] { cld.FindPnts2D_Cnts(&listener, contour.outer, contour.vecHoles); });
    return listener.m_nSum;
}

std::uint64_t SelectGeos(std::int64_t nNum, int nNumVertices, bool bHole, CCpuTimer& timer)
{
    const CContourCase& contour = GetCase(nNum, nNumVertices, bHole);
    return GetModel(nNum, nNumVertices, bHole).Sum(LocateGeos(nNum, *contour.pArea, timer));
}

void AddContourRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    for (const int nNumVertices : {1000, 100000})
        for (const bool bHole : {true, false})
            AddRow({"contour",
                    "contour selection, " + std::to_string(nNumVertices) + " vertices" +
                        (bHole ? " and a hole" : ", no hole"),
                    nNum, "GEOS IndexedPointInAreaLocator, every point",
                    nNumVertices == 1000 ? CBenchBar(0.20, 0.12) : CBenchBar(0.30, 0.20),
                    [=](CCpuTimer& timer) { return SelectProduct(nNum, nNumVertices, bHole, timer); },
                    [=](CCpuTimer& timer) { return SelectGeos(nNum, nNumVertices, bHole, timer); }});
}

const CBenchGroup c_group("contour", AddContourRows);

} // namespace
