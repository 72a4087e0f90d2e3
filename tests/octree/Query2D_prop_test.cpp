// The plan-view queries against their plain model, and against a full scan where that says the same.

#include <octree/Query2D.h>
#include <octree/contour/QueryContour.h>
#include <tests/support/CRefQuery2D.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/CldCases.h>
#include <tests/support/RandomCld.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

using zor::geom::PNT_2D;

namespace
{

/// Rings that have to do with the points: random, jagged, on the lattice of the tree's squares, through
/// points of the cloud, crossing themselves, with repeated points and spikes, without area.
class CRingMaker
{
public:
    CRingMaker(const Ref::CStore& store, std::uint64_t nSeed) : m_store(store), m_random(nSeed)
    {
        const Ref::CCube& cube = store.tree.cube;
        m_dX = ToX(cube.x);
        m_dY = ToY(cube.y);
        m_dHalf = static_cast<double>(cube.edge) / 20000.0;
    }

    std::vector<PNT_2D> Make()
    {
        std::vector<PNT_2D> ring;
        switch (m_random.Int(0, 6))
        {
        case 0:
            ring = MakeStar(static_cast<int>(m_random.Int(3, 12)));
            break;
        case 1:
            ring = MakeStar(static_cast<int>(m_random.Int(50, 300)));
            break;
        case 2:
            ring = MakeOnSquares();
            break;
        case 3:
            ring = MakeThroughPnts();
            break;
        case 4:
            for (int i = 0; i < 7; ++i)
                ring.push_back(Anywhere());
            break;
        case 5:
            ring = MakeBox();
            break;
        default:
            ring = {Anywhere(), Anywhere()};
            break;
        }
        return Spoil(ring);
    }

    /// A ring so large that it is cut down level by level.
    std::vector<PNT_2D> MakeLarge() { return Spoil(MakeStar(static_cast<int>(m_random.Int(300, 1500)))); }

    /// A place over the cloud or beside it.
    PNT_2D Anywhere()
    {
        return {m_dX + (m_random.Unit() - 0.5) * 3.0 * m_dHalf,
                m_dY + (m_random.Unit() - 0.5) * 3.0 * m_dHalf};
    }

private:
    double ToX(std::int64_t n) const
    {
        return static_cast<double>(n) / 10000.0 + static_cast<double>(m_store.org[0]);
    }
    double ToY(std::int64_t n) const
    {
        return static_cast<double>(n) / 10000.0 + static_cast<double>(m_store.org[1]);
    }

    std::vector<PNT_2D> MakeStar(int nNum)
    {
        const PNT_2D centre = Anywhere();
        const double dJag = m_random.Unit();
        const double dSize = m_dHalf * m_random.Unit() * 1.5;
        std::vector<PNT_2D> ring;
        for (int i = 0; i < nNum; ++i)
        {
            const double dAngle = 6.283185307179586 * i / nNum;
            const double dRadius = dSize * (1.0 - dJag * m_random.Unit());
            ring.emplace_back(centre.x + dRadius * std::cos(dAngle), centre.y + dRadius * std::sin(dAngle));
        }
        return ring;
    }

    /// Corners at the corners and centres of squares of the tree.
    std::vector<PNT_2D> MakeOnSquares()
    {
        std::vector<PNT_2D> ring;
        for (std::int64_t i = m_random.Int(3, 6); i > 0; --i)
        {
            Ref::CCube cube = m_store.tree.cube;
            for (std::int64_t nLevel = m_random.Int(0, 5); nLevel > 0; --nLevel)
                cube = Ref::ChildCube(cube, static_cast<int>(m_random.Int(0, 7)));
            ring.emplace_back(ToX(cube.x + m_random.Int(-1, 1) * (cube.edge / 2)),
                              ToY(cube.y + m_random.Int(-1, 1) * (cube.edge / 2)));
        }
        return ring;
    }

    std::vector<PNT_2D> MakeThroughPnts()
    {
        std::vector<PNT_2D> ring;
        for (std::int64_t i = m_random.Int(3, 8); i > 0 && !m_store.pnts.empty(); --i)
        {
            const Ref::CPnt& pnt = m_random.Pick(m_store.pnts);
            ring.emplace_back(ToX(pnt.x), ToY(pnt.y));
        }
        return ring;
    }

    std::vector<PNT_2D> MakeBox()
    {
        const PNT_2D a = Anywhere();
        const PNT_2D b = Anywhere();
        return {a, PNT_2D(a.x, b.y), b, PNT_2D(b.x, a.y)};
    }

    /// Makes it closed, turned round, with a repeated point, a spike, or a coordinate that is no number.
    std::vector<PNT_2D> Spoil(std::vector<PNT_2D> ring)
    {
        if (ring.empty())
            return ring;
        if (m_random.Chance(3))
            std::reverse(ring.begin(), ring.end());
        if (m_random.Chance(4))
            ring.push_back(ring.front());
        if (m_random.Chance(6))
            ring.insert(ring.begin() + 1, ring.front());
        if (m_random.Chance(8))
            ring.insert(ring.begin() + 1, {Anywhere(), ring.front()});
        if (m_random.Chance(60))
            ring[0].x = std::nan("");
        return ring;
    }

    const Ref::CStore& m_store;
    CRandom m_random;
    double m_dX;
    double m_dY;
    double m_dHalf;
};

template <class T>
class Query2D_prop : public ::testing::Test
{
public:
    static CTestStore<T> MakeStore(const CCldRecipe& recipe, CRandom& random)
    {
        static const std::vector<float> vecOrg{0.0F, 12.34F, -500.5F, 500000.125F};
        CTestStore<T> store(MakePnts(recipe),
                            {random.Pick(vecOrg), random.Pick(vecOrg), random.Pick(vecOrg)});
        store.ComputeTree();
        static const std::vector<int> vecOneIn{0, 0, 2, 20};
        store.Mark(random, random.Pick(vecOneIn), random.Pick(vecOneIn));
        return store;
    }
};

TYPED_TEST_SUITE(Query2D_prop, TBothPntTypes, CPntTypeName);

/// Compares a query with a random contour over the cloud of the recipe. @return what differs.
template <class T>
std::string DiffContour(const CCldRecipe& recipe)
{
    CRandom random(recipe.seed + 7);
    CTestStore<T> store = Query2D_prop<T>::MakeStore(recipe, random);
    const std::uint64_t nSeed = random.Next();
    CRingMaker maker(store.GetRef(), nSeed);
    const std::vector<PNT_2D> outer = maker.Make();
    std::vector<std::vector<PNT_2D>> holes;
    for (std::int64_t i = random.Int(0, 2); i > 0; --i)
        holes.push_back(maker.Make());

    CRecListener rec;
    Ref::CQuery2D ref(store.GetRef());
    const bool bIntCnt = random.Chance(3);
    if (bIntCnt)
    {
        CQueryContour<T>(*store, &rec).FindPnts2D_IntCnt(outer);
        ref.IntCnt(outer);
    }
    else
    {
        CQueryContour<T>(*store, &rec).FindPnts2D_Cnts(outer, holes);
        ref.Cnts(outer, holes);
    }
    if (rec.GetIndices() == ref.GetIndices())
        return {};
    std::ostringstream diff;
    diff << "ring seed " << nSeed << (bIntCnt ? " IntCnt" : " Cnts") << ", holes " << holes.size()
         << ", corners " << outer.size() << ": " << rec.GetNumPnts() << " delivered, "
         << ref.GetIndices().size() << " wanted\n";
    return diff.str();
}

TYPED_TEST(Query2D_prop, Contours_SameAsModel)
{
    CheckProp(1500,
              [](const CCldRecipe& recipe)
              {
                  const std::string sDiff = DiffContour<TypeParam>(recipe);
                  RC_LOG() << sDiff;
                  RC_ASSERT(sDiff.empty());
              });
}

/// A ring of one long edge through `centre`, its ends whole numbers away, and a way back in many short ones.
std::vector<PNT_2D> MakeHalfDisc(CRandom& random, const PNT_2D& centre, int nWidth)
{
    const auto dX = static_cast<double>(nWidth / 2 + random.Int(1, nWidth));
    const double dY =
        (random.Chance(2) ? dX : static_cast<double>(random.Int(1, nWidth))) * (random.Chance(2) ? 1 : -1);
    std::vector<PNT_2D> ring{{centre.x - dX, centre.y - dY}, {centre.x + dX, centre.y + dY}};
    const std::int64_t nNum = random.Int(60, 75); // about as many as it takes to be cut down to squares
    const double dSide = random.Chance(2) ? 1.0 : -1.0;
    for (std::int64_t i = 1; i < nNum; ++i)
    {
        const double dAngle = 3.14159265358979323846 * static_cast<double>(i) / static_cast<double>(nNum);
        const double dAlong = 3.0 * std::cos(dAngle);
        const double dAside = 3.0 * dSide * std::sin(dAngle);
        ring.emplace_back(centre.x + dX * dAlong - dY * dAside, centre.y + dY * dAlong + dX * dAside);
    }
    return ring;
}

// Such an edge runs from corner to corner through many squares: the least turn of it decides what is left of
// them.
TYPED_TEST(Query2D_prop, Contours_LongEdgesThroughCornersSameAsModel)
{
    CRandom random(31);
    for (int i = 0; i < 600; ++i)
    {
        const int nWidth = random.Pick(std::vector<int>{10, 64, 100, 1000});
        const float fOrg = random.Pick(std::vector<float>{0.0F, 500000.0F});
        std::vector<Ref::CPnt> pnts{{0, 0, 0, 0, 0, 0},
                                    {nWidth * 10000, nWidth * 10000, nWidth * 1000, 0, 0, 0}};
        for (std::int64_t k = random.Int(12, 300); k > 0; --k)
            pnts.push_back({static_cast<std::int32_t>(random.Int(0, nWidth * 10000)),
                            static_cast<std::int32_t>(random.Int(0, nWidth * 10000)), 0, 0, 0, 0});
        CTestStore<TypeParam> store(pnts, {fOrg, fOrg, 0.0F});
        store.ComputeTree();
        const double dCentre = static_cast<double>(fOrg) + nWidth / 2.0;
        const std::vector<PNT_2D> ring = MakeHalfDisc(random, {dCentre, dCentre}, nWidth);
        CRecListener rec;
        Ref::CQuery2D ref(store.GetRef());
        const int nKind = static_cast<int>(random.Int(0, 2));
        std::vector<std::vector<PNT_2D>> holes;
        if (nKind == 1)
            holes = {{{dCentre + 10.0 * nWidth, dCentre},
                      {dCentre + 11.0 * nWidth, dCentre},
                      {dCentre, dCentre + 9.0}}};
        if (nKind == 2)
        {
            CQueryContour<TypeParam>(*store, &rec).FindPnts2D_IntCnt(ring);
            ref.IntCnt(ring);
        }
        else
        {
            CQueryContour<TypeParam>(*store, &rec).FindPnts2D_Cnts(ring, holes);
            ref.Cnts(ring, holes);
        }
        ASSERT_EQ(ref.GetIndices(), rec.GetIndices())
            << "cloud " << i << ", width " << nWidth << ", kind " << nKind;
    }
}

// Regions that lie to and fro across the frames which they are cut down to.
TYPED_TEST(Query2D_prop, Contours_RegionsInPiecesSameAsModel)
{
    for (const CCldRecipe& recipe :
         {CCldRecipe{2, 40, 336034091, false}, CCldRecipe{0, 4484, 146875429, false},
          CCldRecipe{2, 2504, 235935153, false}, CCldRecipe{2, 5255, 451766887, false},
          CCldRecipe{2, 216, 169296374, false}, CCldRecipe{0, 226, 178904868, false},
          CCldRecipe{0, 5095, 378296790, false}, CCldRecipe{0, 194, 572754439, false}})
        EXPECT_EQ("", DiffContour<TypeParam>(recipe)) << recipe;
}

TYPED_TEST(Query2D_prop, ContoursOfManyCorners_SameAsModel)
{
    using TSuite = Query2D_prop<TypeParam>;
    CheckProp(100,
              [](CCldRecipe recipe)
              {
                  recipe.size = recipe.size % 60; // the model cuts the whole region by each square
                  CRandom random(recipe.seed + 8);
                  CTestStore<TypeParam> store = TSuite::MakeStore(recipe, random);
                  CRingMaker maker(store.GetRef(), random.Next());
                  const std::vector<PNT_2D> outer = maker.MakeLarge();
                  std::vector<std::vector<PNT_2D>> holes;
                  for (std::int64_t i = random.Int(0, 2); i > 0; --i)
                      holes.push_back(maker.MakeLarge());
                  CRecListener rec;
                  Ref::CQuery2D ref(store.GetRef());
                  CQueryContour<TypeParam>(*store, &rec).FindPnts2D_Cnts(outer, holes);
                  ref.Cnts(outer, holes);
                  RC_ASSERT(rec.GetIndices() == ref.GetIndices());
              });
}

TYPED_TEST(Query2D_prop, FindPnts2D_NearLine_EndsSameAsModel)
{
    using TSuite = Query2D_prop<TypeParam>;
    CheckProp(
        300,
        [](const CCldRecipe& recipe)
        {
            CRandom random(recipe.seed + 9);
            CTestStore<TypeParam> store = TSuite::MakeStore(recipe, random);
            if (store.GetRef().pnts.empty())
                return;
            const Ref::CPnt& pnt = random.Pick(store.GetRef().pnts);
            // Half a unit inwards, so that truncation gives the point's own offset.
            const auto toCoord = [](std::int32_t n, float org)
            { return (n + (n < 0 ? -0.5 : 0.5)) / 10000.0 + static_cast<double>(org); };
            const PNT_2D place(toCoord(pnt.x, store->m_fOrgX), toCoord(pnt.y, store->m_fOrgY));
            CRecListener rec;
            CQuery2D<TypeParam>(*store, &rec).FindPnts2D_NearLine(place, PNT_2D(1e7, 1e7), 0.0, true, false);
            const int nFound = Ref::CQuery2D(store.GetRef())
                                   .FindExact(Ref::ToCompact(place.x, store->m_fOrgX),
                                              Ref::ToCompact(place.y, store->m_fOrgY));
            RC_ASSERT(rec.GetIndices() == (nFound == -1 ? std::vector<int>{} : std::vector<int>{nFound}));
        });
}

/// Compares what was delivered with a full scan. Squares are halved with truncation, so a point may lie some
/// compact units outside its leaf's: what is nearer to the edge than that may go either way. A cloud whose
/// extent does not fit into the root's edge is not compared: the root's cube does not hold it.
///
/// @param calcDepth  how deep a place lies inside, coordinate units; negative: outside.
template <class F>
std::string DiffToScan(const Ref::CStore& store, const std::vector<int>& vecFound, F calcDepth)
{
    constexpr long double c_dTolerance = 0.003L;
    if (store.tree.cube.edge >= std::numeric_limits<std::int32_t>::max())
        return {};
    std::vector<int> vecCount(store.pnts.size());
    for (const int i : vecFound)
        ++vecCount[static_cast<std::size_t>(i)];
    for (std::size_t i = 0; i < store.pnts.size(); ++i)
    {
        const long double x = store.pnts[i].x / 10000.0L + store.org[0];
        const long double y = store.pnts[i].y / 10000.0L + store.org[1];
        const long double dDepth = calcDepth(x, y);
        const int nCount = vecCount[i];
        const bool bGood = store.deleted[i]        ? nCount == 0
                           : dDepth > c_dTolerance ? nCount == 1
                                                   : (dDepth < -c_dTolerance ? nCount == 0 : nCount <= 1);
        if (!bGood)
            return "point " + std::to_string(i) + " came " + std::to_string(nCount) + " times, depth " +
                   std::to_string(static_cast<double>(dDepth));
    }
    return {};
}

TYPED_TEST(Query2D_prop, GetPnts2D_SameAsModelAndScan)
{
    using TSuite = Query2D_prop<TypeParam>;
    CheckProp(500,
              [](const CCldRecipe& recipe)
              {
                  CRandom random(recipe.seed + 3);
                  CTestStore<TypeParam> store = TSuite::MakeStore(recipe, random);
                  CRingMaker maker(store.GetRef(), random.Next());
                  const PNT_2D a = maker.Anywhere();
                  const PNT_2D b = maker.Anywhere();
                  const bool bInsideOut = random.Chance(8);
                  const double r[4] = {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                                       std::max(a.y, b.y)};
                  const double xmin = bInsideOut ? r[2] : r[0];
                  const double xmax = bInsideOut ? r[0] : r[2];
                  CRecListener rec;
                  CQuery2D<TypeParam>(*store, &rec).GetPnts2D(xmin, r[1], xmax, r[3]);
                  Ref::CQuery ref(store.GetRef());
                  ref.Clip({{-1, 0, 0, xmin}, {0, -1, 0, r[1]}, {1, 0, 0, -xmax}, {0, 1, 0, -r[3]}});
                  RC_ASSERT(rec.GetIndices() == ref.GetIndices());
                  const std::string sDiff = DiffToScan(
                      store.GetRef(), rec.GetIndices(),
                      [&](long double x, long double y)
                      { return std::min(std::min(x - xmin, xmax - x), std::min(y - r[1], r[3] - y)); });
                  RC_ASSERT(sDiff == "");
              });
}

TYPED_TEST(Query2D_prop, FindPnts2D_NearLine_CorridorSameAsScan)
{
    using TSuite = Query2D_prop<TypeParam>;
    CheckProp(500,
              [](const CCldRecipe& recipe)
              {
                  CRandom random(recipe.seed + 5);
                  CTestStore<TypeParam> store = TSuite::MakeStore(recipe, random);
                  CRingMaker maker(store.GetRef(), random.Next());
                  const PNT_2D p1 = maker.Anywhere();
                  PNT_2D p2 = maker.Anywhere();
                  if (random.Chance(5))
                      p2.y = p1.y; // along an axis
                  const long double dLength = std::hypot(p2.x - p1.x, p2.y - p1.y);
                  const double dDist = static_cast<double>(dLength) * random.Unit();
                  CRecListener rec;
                  CQuery2D<TypeParam>(*store, &rec).FindPnts2D_NearLine(p1, p2, dDist, false, false);
                  if (!(dLength > 0.0L) || !(dDist > 0.0))
                  {
                      RC_ASSERT(rec.GetNumPnts() == 0);
                      return;
                  }
                  const long double dX = (static_cast<long double>(p2.x) - p1.x) / dLength;
                  const long double dY = (static_cast<long double>(p2.y) - p1.y) / dLength;
                  const std::string sDiff = DiffToScan(
                      store.GetRef(), rec.GetIndices(),
                      [&](long double x, long double y)
                      {
                          const long double dAlong = (x - p1.x) * dX + (y - p1.y) * dY;
                          const long double dAcross = (y - p1.y) * dX - (x - p1.x) * dY;
                          return std::min(std::min(dAlong, dLength - dAlong), dDist - std::fabs(dAcross));
                      });
                  RC_ASSERT(sDiff == "");
              });
}

} // namespace
