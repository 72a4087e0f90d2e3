// The plan-view queries on a store: what they do with deleted points and with points at one place.

#include <octree/Query2D.h>
#include <tests/octree/CPlanTest.h>

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
