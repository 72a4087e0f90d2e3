// The contour queries against their plain model.

#include <octree/contour/QueryContour.h>
#include <tests/octree/CRingMaker.h>
#include <tests/octree/MakeMarkedStore.h>
#include <tests/support/CRefQuery2D.h>
#include <tests/support/CheckProp.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

using zor::geom::PNT_2D;

namespace
{

template <class T>
class QueryContour_prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(QueryContour_prop, TBothPntTypes, CPntTypeName);

/// Is the ring no wider than what its coordinates are rounded by? Whether such a sliver cuts anything off a
/// square is decided by the rounding of whoever computes it.
bool IsSliver(const std::vector<PNT_2D>& ring)
{
    if (ring.empty())
        return false;
    constexpr double c_dRounding = 1e-15; // of a coordinate, several times over
    double dFarthest = 0.0;
    double dLargest = 0.0;
    PNT_2D end = ring.front();
    for (const PNT_2D& pnt : ring)
    {
        dLargest = std::max({dLargest, std::abs(pnt.x), std::abs(pnt.y)});
        if (pnt.dist_square(ring.front()) > dFarthest)
            end = pnt;
        dFarthest = std::max(dFarthest, pnt.dist_square(ring.front()));
    }
    const double dX = end.x - ring.front().x;
    const double dY = end.y - ring.front().y;
    const double dReach = c_dRounding * dLargest * std::sqrt(dFarthest);
    return std::all_of(
        ring.begin(), ring.end(),
        [&](const PNT_2D& pnt)
        { return std::abs(dX * (pnt.y - ring.front().y) - dY * (pnt.x - ring.front().x)) <= dReach; });
}

/// Compares a query with a random contour over the cloud of the recipe. @return what differs.
template <class T>
std::string DiffContour(const CCldRecipe& recipe)
{
    CRandom random(recipe.seed + 7);
    CTestStore<T> store = MakeMarkedStore<T>(recipe, random);
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
    const bool bSliver = std::any_of(holes.begin(), holes.end(), IsSliver) || IsSliver(outer);
    if (rec.GetIndices() == ref.GetIndices() || bSliver)
        return {};
    std::ostringstream diff;
    diff << "ring seed " << nSeed << (bIntCnt ? " IntCnt" : " Cnts") << ", holes " << holes.size()
         << ", corners " << outer.size() << ": " << rec.GetNumPnts() << " delivered, "
         << ref.GetIndices().size() << " wanted\n";
    return diff.str();
}

TYPED_TEST(QueryContour_prop, Contours_SameAsModel)
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
TYPED_TEST(QueryContour_prop, Contours_LongEdgesThroughCornersSameAsModel)
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
TYPED_TEST(QueryContour_prop, Contours_RegionsInPiecesSameAsModel)
{
    for (const CCldRecipe& recipe :
         {CCldRecipe{2, 40, 336034091, false}, CCldRecipe{0, 4484, 146875429, false},
          CCldRecipe{2, 2504, 235935153, false}, CCldRecipe{2, 5255, 451766887, false},
          CCldRecipe{2, 216, 169296374, false}, CCldRecipe{0, 226, 178904868, false},
          CCldRecipe{0, 5095, 378296790, false}, CCldRecipe{0, 194, 572754439, false}})
        EXPECT_EQ("", DiffContour<TypeParam>(recipe)) << recipe;
}

TYPED_TEST(QueryContour_prop, ContoursOfManyCorners_SameAsModel)
{
    CheckProp(100,
              [](CCldRecipe recipe)
              {
                  recipe.size = recipe.size % 60; // the model cuts the whole region by each square
                  CRandom random(recipe.seed + 8);
                  CTestStore<TypeParam> store = MakeMarkedStore<TypeParam>(recipe, random);
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

} // namespace
