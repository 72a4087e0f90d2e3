#include <bench/ContourCases.h>

#include <bench/BenchClouds.h>

#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/CoordinateSequenceFactory.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Location.h>
#include <geos/geom/Polygon.h>

#include <cmath>
#include <map>
#include <random>
#include <tuple>
#include <utility>

namespace
{

using geos::geom::Coordinate;
using geos::geom::GeometryFactory;
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

std::unique_ptr<geos::geom::LinearRing> MakeGeosRing(const TRing& ring)
{
    std::vector<Coordinate> vecCoords;
    for (const PNT_2D& pnt : ring)
        vecCoords.emplace_back(pnt.x, pnt.y);
    vecCoords.push_back(vecCoords.front());
    const GeometryFactory& factory = *GeometryFactory::getDefaultInstance();
    return factory.createLinearRing(factory.getCoordinateSequenceFactory()->create(std::move(vecCoords)));
}

/// The cloud's points by index.
const std::vector<Coordinate>& GetCoords(std::int64_t nNum)
{
    static std::map<std::int64_t, std::vector<Coordinate>> mapCoords;
    std::vector<Coordinate>& vecCoords = mapCoords[nNum];
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

} // namespace

const CContourCase& GetCase(std::int64_t nNum, int nNumVertices, bool bHole)
{
    static std::map<std::tuple<std::int64_t, int, bool>, CContourCase> mapCases;
    CContourCase& contour = mapCases[{nNum, nNumVertices, bHole}];
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

std::vector<char> LocateGeos(std::int64_t nNum, const geos::geom::Geometry& area, CCpuTimer& timer)
{
    const std::vector<Coordinate>& vecCoords = GetCoords(nNum);
    std::vector<char> vecInside(vecCoords.size());
    timer.Measure(
        [&]
        {
            geos::algorithm::locate::IndexedPointInAreaLocator locator(area);
            for (std::size_t i = 0; i < vecCoords.size(); ++i)
                vecInside[i] = locator.locate(&vecCoords[i]) != geos::geom::Location::EXTERIOR ? 1 : 0;
        });
    return vecInside;
}
