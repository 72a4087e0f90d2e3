// Points in polygons against a scan in exact arithmetic: random clouds with deletions, points on and right
// beside edges, holes, several polygons, inside and outside, with and without an octree.

#include <octree/contour/QueryPolygons.h>
#include <tests/companions/CExactPolygons.h>
#include <tests/octree/CRingMaker.h>
#include <tests/octree/MakeMarkedStore.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;

namespace
{

using TPolygons = std::vector<TMultiPartPolygon>;

template <class T>
class FindPntsInPolygons_prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(FindPntsInPolygons_prop, TBothPntTypes, CPntTypeName);

/// Makes polygons of rings that `makeRing` gives.
template <class TFn>
TPolygons MakePolygons(CRandom& random, TFn makeRing)
{
    TPolygons vecPolygons(static_cast<std::size_t>(random.Int(0, 3)));
    for (TMultiPartPolygon& polygon : vecPolygons)
    {
        polygon.outer = makeRing();
        polygon.holes.resize(static_cast<std::size_t>(random.Int(0, 2)));
        for (std::vector<PNT_2D>& hole : polygon.holes)
            hole = makeRing();
    }
    return vecPolygons;
}

template <class T>
std::vector<int> Scan(const COcTree<T>& store, const TPolygons& vecPolygons, bool bOutside)
{
    const CExactPolygons exact(vecPolygons);
    std::vector<int> vecIndices;
    for (std::int32_t i = 0; i < store.m_nNumPnts; ++i)
    {
        const PNT_2D pnt(store.m_pPnts[i].m_nX / 10000.0 + static_cast<double>(store.m_fOrgX),
                         store.m_pPnts[i].m_nY / 10000.0 + static_cast<double>(store.m_fOrgY));
        if (!store.IsDeleted(i) && exact.IsInside(pnt) != bOutside)
            vecIndices.push_back(i);
    }
    return vecIndices;
}

/// Every batch full but the last.
bool AreFull(const std::vector<int>& vecBatches, int nBatch)
{
    for (std::size_t i = 0; i < vecBatches.size(); ++i)
        if (vecBatches[i] > nBatch || (i + 1 < vecBatches.size() && vecBatches[i] < nBatch))
            return false;
    return true;
}

/// @return what differs; the order of a tree's walk is that of the array.
template <class T>
std::string Diff(const COcTree<T>& store, const TPolygons& vecPolygons, CRandom& random)
{
    std::string sDiff;
    for (const bool bOutside : {false, true})
    {
        const std::vector<int> vecWanted = Scan(store, vecPolygons, bOutside);
        const int nBatch = static_cast<int>(random.Int(1, 40));
        CRecListener rec;
        QueryPolygons(store, &rec, vecPolygons, bOutside, nBatch);
        if (rec.GetIndices() != vecWanted)
            sDiff += (bOutside ? "outside: " : "inside: ") + std::to_string(rec.GetNumPnts()) +
                     " delivered, " + std::to_string(vecWanted.size()) + " wanted\n";
        if (!AreFull(rec.GetBatches(), nBatch))
            sDiff += "batches\n";
    }
    return sDiff;
}

/// Moves some corners to the next double on some side: points on edges come to lie right beside them.
void NudgeSome(std::vector<PNT_2D>& ring, CRandom& random)
{
    constexpr double c_dFar = std::numeric_limits<double>::infinity();
    for (PNT_2D& pnt : ring)
    {
        if (random.Chance(6))
            pnt.x = std::nextafter(pnt.x, random.Chance(2) ? c_dFar : -c_dFar);
        if (random.Chance(6))
            pnt.y = std::nextafter(pnt.y, random.Chance(2) ? c_dFar : -c_dFar);
    }
}

void CheckSame(const std::string& sDiff)
{
    RC_LOG() << sDiff;
    RC_ASSERT(sDiff.empty());
}

/// Compares on so many random clouds, with polygons of rings that `makeRing(maker, random)` gives.
template <class T, class TFn>
void CheckRandomClouds(int nNumCases, std::uint32_t nSalt, bool bTree, TFn makeRing)
{
    CheckPropOfStores<T>(nNumCases, nSalt,
                         [&](CTestStore<T>& store, CRandom& random)
                         {
                             CRingMaker maker(store.GetRef(), random.Next());
                             const TPolygons vecPolygons =
                                 MakePolygons(random, [&] { return makeRing(maker, random); });
                             if (!bTree)
                                 store->m_pTree = nullptr;
                             CheckSame(Diff(*store, vecPolygons, random));
                         });
}

TYPED_TEST(FindPntsInPolygons_prop, RandomClouds_SameAsExactScan)
{
    CheckRandomClouds<TypeParam>(400, 21, true,
                                 [](CRingMaker& maker, CRandom& random)
                                 {
                                     std::vector<PNT_2D> ring = maker.Make();
                                     if (random.Chance(3))
                                         NudgeSome(ring, random);
                                     return ring;
                                 });
}

TYPED_TEST(FindPntsInPolygons_prop, LongRings_SameAsExactScan)
{
    CheckRandomClouds<TypeParam>(40, 22, true, [](CRingMaker& maker, CRandom&) { return maker.MakeLarge(); });
}

TYPED_TEST(FindPntsInPolygons_prop, WithoutOctree_SameAsExactScan)
{
    CheckRandomClouds<TypeParam>(150, 23, false, [](CRingMaker& maker, CRandom&) { return maker.Make(); });
}

/// A ring with corners on a lattice of sixteenths, its edges mostly along few directions: it runs through
/// many of the lattice's points, over itself and over other rings.
std::vector<PNT_2D> MakeLatticeRing(CRandom& random, int nSize, double dOrg)
{
    static const std::vector<std::pair<int, int>> vecSteps{{1, 0}, {0, 1},  {1, 1}, {1, -1},
                                                           {2, 1}, {-1, 3}, {3, 2}};
    std::vector<PNT_2D> ring;
    std::int64_t x = random.Int(0, nSize);
    std::int64_t y = random.Int(0, nSize);
    for (std::int64_t n = random.Int(3, 9); n > 0; --n)
    {
        ring.emplace_back(dOrg + static_cast<double>(x) / 16.0, dOrg + static_cast<double>(y) / 16.0);
        const std::pair<int, int> step = random.Pick(vecSteps);
        const std::int64_t nTimes = random.Int(-nSize / 2, nSize / 2);
        x += step.first * nTimes;
        y += step.second * nTimes;
    }
    return ring;
}

TYPED_TEST(FindPntsInPolygons_prop, PntsOnEdgesAndCorners_SameAsExactScan)
{
    CheckProp(400,
              [](std::uint32_t nSeed)
              {
                  CRandom random(nSeed);
                  const int nSize = static_cast<int>(random.Int(2, 40));
                  const float fOrg = random.Pick(std::vector<float>{0.0F, -12.5F, 500000.0625F});
                  std::vector<Ref::CPnt> pnts;
                  for (int i = 0; i <= nSize * nSize;
                       ++i) // 625 units are a sixteenth: coordinates without rounding
                      pnts.push_back({i % nSize * 625, i / nSize * 625,
                                      static_cast<std::int32_t>(random.Int(0, 9000)), 0, 0, 0});
                  CTestStore<TypeParam> store(pnts, {fOrg, fOrg, 0.0F});
                  store.ComputeTree();
                  store.Mark(random, random.Chance(2) ? 9 : 0, 0);
                  const TPolygons vecPolygons =
                      MakePolygons(random,
                                   [&]
                                   {
                                       std::vector<PNT_2D> ring =
                                           MakeLatticeRing(random, nSize, static_cast<double>(fOrg));
                                       if (random.Chance(3))
                                           NudgeSome(ring, random);
                                       return ring;
                                   });
                  CheckSame(Diff(*store, vecPolygons, random));
              });
}

} // namespace
