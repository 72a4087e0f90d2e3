// The plan-view queries on a store: what they do with deleted points and with points at one place.

#include <octree/Query2D.h>
#include <tests/octree/CPlanTest.h>

#include <algorithm>
#include <array>
#include <cmath>

using zor::geom::PNT_2D;

namespace
{

template <class T>
class Query2D : public CPlanTest<T>
{
};
TYPED_TEST_SUITE(Query2D, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(Query2D, NearLine_EndIsTheFirstOfItsPlace)
{
    // Three points at one place, of which the first is deleted, and others around.
    std::vector<Ref::CPnt> pnts = MakePlanPnts(500, 1000000);
    for (int i = 0; i < 3; ++i)
        pnts.push_back({333333, 444444, 100000 * i});
    CTestStore<TypeParam> store(pnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    std::vector<int> vecThere;
    for (std::size_t i = 0; i < store.GetRef().pnts.size(); ++i)
        if (store.GetRef().pnts[i].x == 333333 && store.GetRef().pnts[i].y == 444444)
            vecThere.push_back(static_cast<int>(i));
    ASSERT_EQ(vecThere.size(), 3U);
    const auto find = [&](double x, double y)
    {
        CRecListener rec;
        CQuery2D<TypeParam>(*store, &rec).FindPnts2D_NearLine({x, y}, {9, 9}, 0.0, true, false);
        return rec.GetIndices();
    };
    for (const int i : vecThere)
    {
        EXPECT_EQ(find(33.33335, 44.44445), std::vector<int>{i}); // anywhere in the step towards zero
        store.Delete(i);
    }
    EXPECT_EQ(find(33.33335, 44.44445), std::vector<int>());
    EXPECT_EQ(find(33.33345, 44.44445), std::vector<int>());
}

TYPED_TEST(Query2D, NearLine_CorridorEndsSquareAndReachesBothSides)
{
    const double dLength = std::hypot(1200.0, 500.0);
    CRecListener rec;
    CQuery2D<TypeParam>(*this->m_store, &rec)
        .FindPnts2D_NearLine({300, 400}, {1500, 900}, 60.0, false, false);
    EXPECT_EQ(rec.GetSortedIndices(),
              this->Scan(
                  [&](const PNT_2D& pnt)
                  {
                      const double dAlong = ((pnt.x - 300) * 1200 + (pnt.y - 400) * 500) / dLength;
                      const double dAcross = ((pnt.y - 400) * 1200 - (pnt.x - 300) * 500) / dLength;
                      return dAlong >= 0 && dAlong <= dLength && std::fabs(dAcross) <= 60.0;
                  }));
    EXPECT_GT(rec.GetNumPnts(), 50);
    EXPECT_EQ(rec.GetBatches(), std::vector<int>(static_cast<std::size_t>(rec.GetNumPnts()), 1));
}

// A corridor of length 1 that reaches 100,000 to either side, far from the origin, against exact arithmetic:
// its ends are where they belong to a hundredth of a compact unit, in the middle and far aside.
TYPED_TEST(Query2D, NearLine_MuchWiderThanLongEndsWhereItBelongs)
{
    constexpr double c_dDist = 100000.0;
    constexpr std::array<float, 3> c_org{500000.0F, 4000000.0F, 0.0F};
    CRandom random(1);
    for (int nCase = 0; nCase < 500; ++nCase)
    {
        SCOPED_TRACE(nCase);
        const double dAngle = 6.3 * random.Unit();
        const PNT_2D along(std::cos(dAngle), std::sin(dAngle));
        const PNT_2D p1(500000.0 + random.Unit(), 4000000.0 + random.Unit());
        const PNT_2D p2(p1.x + along.x, p1.y + along.y);
        std::vector<Ref::CPnt> pnts; // few and far apart: each leaf is cut by an end, and its points tested
        for (int i = 0; i < 10; ++i)
        {
            const double dAlong = (i % 2) + 0.0004 * (random.Unit() - 0.5);
            const double dAcross = 0.9 * c_dDist * (2.0 * random.Unit() - 1.0);
            pnts.push_back({Ref::ToCompact(p1.x + dAlong * along.x - dAcross * along.y, c_org[0]),
                            Ref::ToCompact(p1.y + dAlong * along.y + dAcross * along.x, c_org[1]), i});
        }
        CTestStore<TypeParam> store(pnts, c_org);
        store.ComputeTree();
        CRecListener rec;
        CQuery2D<TypeParam>(*store, &rec).FindPnts2D_NearLine(p1, p2, c_dDist, false, false);
        const std::vector<int> vecFound = rec.GetSortedIndices();
        const long double dX = static_cast<long double>(p2.x) - p1.x;
        const long double dY = static_cast<long double>(p2.y) - p1.y;
        const long double dLength = std::hypot(dX, dY);
        for (int i = 0; i < 10; ++i)
        {
            const Ref::CPnt& pnt = store.GetRef().pnts[static_cast<std::size_t>(i)];
            const long double x = pnt.x / 10000.0L + c_org[0] - p1.x;
            const long double y = pnt.y / 10000.0L + c_org[1] - p1.y;
            const long double dAlong = (x * dX + y * dY) / dLength;
            const long double dDepth = std::min(dAlong, dLength - dAlong);
            if (std::fabs(dDepth) < 1e-6L)
                continue;
            EXPECT_EQ(std::binary_search(vecFound.begin(), vecFound.end(), i), dDepth > 0.0L)
                << static_cast<double>(dDepth);
        }
    }
}

// The number of points in the formula is the store's, deleted ones included.
TYPED_TEST(Query2D, CalcMaxSearchDist_CountsDeletedPoints)
{
    CTestStore<TypeParam> store(MakePlanPnts(100, 100000), {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    EXPECT_EQ(CalcMaxSearchDist(*store), 5.0);
    for (int i = 0; i < 100; i += 2)
        store.Delete(i);
    EXPECT_EQ(CalcMaxSearchDist(*store), 5.0);
}
