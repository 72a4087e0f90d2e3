#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <bench/CContourModel.h>
#include <formats/Compact.h>
#include <octree/BuildTree.h>

#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/CoordinateSequenceFactory.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Location.h>
#include <geos/geom/Polygon.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>

// What is compared: the product deliberately drops some points along the contour, so the peer's points are
// seen through its rule before the sums of the indices are compared; CContourModel says how.

namespace
{

using geos::geom::Coordinate;
using geos::geom::GeometryFactory;
using geos::geom::Location;
using zor::geom::PNT_2D;

using TRing = std::vector<PNT_2D>;

constexpr double c_dTau = 6.28318530717958647692;

/// A ring about the middle of the terrain that no ray from there meets twice: it does not cross itself.
/// Its radius swings by a tenth, and by half the way to the next vertex, so that it is nowhere smooth.
TRing MakeRing(std::int64_t nNum, double dRadius, int nNumVertices)
{
    const double dMiddle = CSampleTerrain(nNum).GetSide() / 2.0;
    const double dStep = c_dTau * dRadius / nNumVertices;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> draw(-0.5, 0.5);
    TRing ring;
    for (int i = 0; i < nNumVertices; ++i)
    {
        const double dAngle = c_dTau * i / nNumVertices;
        const double r = dRadius * (1.0 + 0.1 * std::sin(7.0 * dAngle)) + dStep * draw(random);
        ring.emplace_back(CSampleTerrain::c_dOrgX + dMiddle + r * std::cos(dAngle),
                          CSampleTerrain::c_dOrgY + dMiddle + r * std::sin(dAngle));
    }
    return ring;
}

/// Outer ring and holes, for both sides.
struct CContourCase
{
    TRing outer;
    std::vector<TRing> vecHoles;
    std::unique_ptr<geos::geom::Geometry> pArea;
};

std::unique_ptr<geos::geom::LinearRing> MakeGeosRing(const TRing& ring)
{
    std::vector<Coordinate> vecCoords;
    for (const PNT_2D& pnt : ring)
        vecCoords.emplace_back(pnt.x, pnt.y);
    vecCoords.push_back(vecCoords.front());
    const GeometryFactory& factory = *GeometryFactory::getDefaultInstance();
    return factory.createLinearRing(factory.getCoordinateSequenceFactory()->create(std::move(vecCoords)));
}

const CContourCase& GetCase(std::int64_t nNum, int nNumVertices, bool bHole)
{
    static std::map<std::pair<int, bool>, CContourCase> mapCases;
    CContourCase& contour = mapCases[{nNumVertices, bHole}];
    if (contour.pArea != nullptr)
        return contour;
    const double dSide = CSampleTerrain(nNum).GetSide();
    contour.outer = MakeRing(nNum, 0.4 * dSide, nNumVertices);
    if (bHole)
        contour.vecHoles.push_back(MakeRing(nNum, 0.1 * dSide, nNumVertices / 10));
    std::vector<std::unique_ptr<geos::geom::LinearRing>> vecHoles;
    for (const TRing& ring : contour.vecHoles)
        vecHoles.push_back(MakeGeosRing(ring));
    contour.pArea = GeometryFactory::getDefaultInstance()->createPolygon(MakeGeosRing(contour.outer),
                                                                         std::move(vecHoles));
    return contour;
}

/// The cloud's points by index.
const std::vector<Coordinate>& GetCoords(std::int64_t nNum)
{
    static std::vector<Coordinate> vecCoords;
    if (!vecCoords.empty())
        return vecCoords;
    const CPntCld& cld = GetTerrainCld(nNum);
    zor::geom::PNT_3D pnt;
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        cld.GetPnt(i, pnt);
        vecCoords.emplace_back(pnt.x, pnt.y);
    }
    return vecCoords;
}

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

/// Asks the locator, index included, about every point.
std::uint64_t SelectGeos(std::int64_t nNum, int nNumVertices, bool bHole, CCpuTimer& timer)
{
    const CContourCase& contour = GetCase(nNum, nNumVertices, bHole);
    const std::vector<Coordinate>& vecCoords = GetCoords(nNum);
    std::vector<char> vecInside(vecCoords.size());
    timer.Measure(
        [&]
        {
            geos::algorithm::locate::IndexedPointInAreaLocator locator(*contour.pArea);
            for (std::size_t i = 0; i < vecCoords.size(); ++i)
                vecInside[i] = locator.locate(&vecCoords[i]) != Location::EXTERIOR ? 1 : 0;
        });
    return GetModel(nNum, nNumVertices, bHole).Sum(vecInside);
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

const CBenchGroup group("contour", AddContourRows);

} // namespace
