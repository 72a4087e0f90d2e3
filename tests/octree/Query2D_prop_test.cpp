// The plan-view queries against their plain model, and against a full scan where that says the same.

#include <octree/Query2D.h>
#include <tests/octree/CRingMaker.h>
#include <tests/octree/MakeMarkedStore.h>
#include <tests/support/CRefQuery2D.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

using zor::geom::PNT_2D;

namespace
{

template <class T>
class Query2D_prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(Query2D_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(Query2D_prop, FindPnts2D_NearLine_EndsSameAsModel)
{
    CheckPropOfStores<TypeParam>(
        300, 9,
        [](CTestStore<TypeParam>& store, CRandom& random)
        {
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
    CheckPropOfStores<TypeParam>(
        500, 3,
        [](CTestStore<TypeParam>& store, CRandom& random)
        {
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
            const std::string sDiff =
                DiffToScan(store.GetRef(), rec.GetIndices(),
                           [&](long double x, long double y)
                           { return std::min(std::min(x - xmin, xmax - x), std::min(y - r[1], r[3] - y)); });
            RC_ASSERT(sDiff == "");
        });
}

TYPED_TEST(Query2D_prop, FindPnts2D_NearLine_CorridorSameAsScan)
{
    CheckPropOfStores<TypeParam>(
        500, 5,
        [](CTestStore<TypeParam>& store, CRandom& random)
        {
            CRingMaker maker(store.GetRef(), random.Next());
            const PNT_2D p1 = maker.Anywhere();
            PNT_2D p2 = maker.Anywhere();
            if (random.Chance(5))
                p2.y = p1.y; // along an axis
            const long double dLength = std::hypot(p2.x - p1.x, p2.y - p1.y);
            const double dWidest = random.Chance(3) ? 1e5 : 1.0;
            const double dDist = static_cast<double>(dLength) * random.Unit() * dWidest;
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
