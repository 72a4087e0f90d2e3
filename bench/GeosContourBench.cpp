#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <octree/BuildTree.h>
#include <octree/Compact.h>

#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/CoordinateSequenceFactory.h>
#include <geos/geom/Envelope.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Location.h>
#include <geos/geom/Polygon.h>
#include <geos/geom/prep/PreparedGeometry.h>
#include <geos/geom/prep/PreparedGeometryFactory.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>

// What is compared. Without holes the product delivers exactly the points inside the ring: the sums of the
// indices on both sides are equal. With a hole it delivers, deliberately, nothing from leaves under squares
// of the octree that an edge meets, so the peer's points are seen through that rule before they are summed:
// a plain walk of the same tree asks GEOS about every square. Under squares wholly inside, the peer must
// have found every point, and these are summed; under squares wholly outside, none.

namespace
{

using geos::geom::Coordinate;
using geos::geom::GeometryFactory;
using geos::geom::Location;
using zor::geom::PNT_2D;

using CRing = std::vector<PNT_2D>;

constexpr double c_dTau = 6.28318530717958647692;

/// A ring about the middle of the terrain that no ray from there meets twice: it does not cross itself.
/// Its radius swings by a tenth, and by half the way to the next vertex, so that it is nowhere smooth.
CRing MakeRing(std::int64_t nNum, double dRadius, int nNumVertices)
{
    const double dMiddle = CSampleTerrain(nNum).GetSide() / 2.0;
    const double dStep = c_dTau * dRadius / nNumVertices;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> draw(-0.5, 0.5);
    CRing ring;
    for (int i = 0; i < nNumVertices; ++i)
    {
        const double dAngle = c_dTau * i / nNumVertices;
        const double r = dRadius * (1.0 + 0.1 * std::sin(7.0 * dAngle)) + dStep * draw(random);
        ring.emplace_back(CSampleTerrain::c_dOrgX + dMiddle + r * std::cos(dAngle),
                          CSampleTerrain::c_dOrgY + dMiddle + r * std::sin(dAngle));
    }
    return ring;
}

/// Outer ring and holes, for both sides; the tree's points and squares as the peer wants them.
struct CContourCase
{
    CRing outer;
    std::vector<CRing> vecHoles;
    std::unique_ptr<geos::geom::Geometry> pArea;
};

std::unique_ptr<geos::geom::LinearRing> MakeGeosRing(const CRing& ring)
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
    for (const CRing& ring : contour.vecHoles)
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

/// Sums the peer's points through the product's rule; see the top of this file.
class CSeenByRule
{
public:
    CSeenByRule(std::int64_t nNum, const geos::geom::Geometry& area, const std::vector<char>& vecInside)
        : m_first(GetTerrain(nNum).front()), m_vecInside(vecInside),
          m_pArea(geos::geom::prep::PreparedGeometryFactory::prepare(&area))
    {
        std::vector<CTruncPnt> vecPnts = MakeCompact(nNum, false);
        m_tree = BuildTree(vecPnts.data(), static_cast<std::int32_t>(nNum)); // the cloud's own, once more
    }

    std::uint64_t Sum()
    {
        WalkNode(*m_tree.m_pRoot, m_tree.GetRootCube());
        return m_nSum;
    }

private:
    void WalkNode(const COcTreeNode& node, const COcTreeCube& cube)
    {
        const std::unique_ptr<geos::geom::Geometry> pSquare = MakeSquare(cube);
        const bool bInside = m_pArea->covers(pSquare.get());
        if (bInside || !m_pArea->intersects(pSquare.get()))
            return WalkWhole(node, bInside);
        for (const COcTreeChild child : node.GetChildren())
            if (!child.IsLeaf()) // a leaf under a square that an edge meets gives nothing
                WalkNode(child.GetNode(), cube.GetChild(child.GetOctant()));
    }

    void WalkWhole(const COcTreeNode& node, bool bInside)
    {
        for (const COcTreeChild child : node.GetChildren())
            if (child.IsLeaf())
                WalkLeaf(child.GetLeaf(), bInside);
            else
                WalkWhole(child.GetNode(), bInside);
    }

    void WalkLeaf(const COcTreeLeaf& leaf, bool bInside)
    {
        for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
            if (m_vecInside[static_cast<std::size_t>(i)] != 0)
                m_nSum += bInside ? static_cast<std::uint64_t>(i) + 1U : std::uint64_t{1} << 60U;
    }

    std::unique_ptr<geos::geom::Geometry> MakeSquare(const COcTreeCube& cube) const
    {
        const double dOrgX = SaturateToFloat(m_first.x);
        const double dOrgY = SaturateToFloat(m_first.y);
        const std::int64_t nHalf = cube.GetHalfEdge();
        const auto ToCoord = [](std::int64_t n, double dOrg)
        { return static_cast<double>(n) / c_dCompactScale + dOrg; };
        const geos::geom::Envelope box(ToCoord(cube.m_nX - nHalf, dOrgX), ToCoord(cube.m_nX + nHalf, dOrgX),
                                       ToCoord(cube.m_nY - nHalf, dOrgY), ToCoord(cube.m_nY + nHalf, dOrgY));
        return GeometryFactory::getDefaultInstance()->toGeometry(&box);
    }

    CSamplePnt m_first; // gives the store its origin
    const std::vector<char>& m_vecInside;
    std::unique_ptr<geos::geom::prep::PreparedGeometry> m_pArea;
    COcTreeIndex m_tree;
    std::uint64_t m_nSum = 0;
};

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
    if (bHole)
        return CSeenByRule(nNum, *contour.pArea, vecInside).Sum();
    std::uint64_t nSum = 0;
    for (std::size_t i = 0; i < vecInside.size(); ++i)
        nSum += vecInside[i] != 0 ? i + 1U : 0U;
    return nSum;
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
