// The plan-view queries on a store: what they do with deleted points, squares and leaves.

#include <octree/Query2D.h>
#include <octree/contour/QueryContour.h>
#include <tests/support/CRefQuery2D.h>
#include <tests/support/CTestStore.h>
#include <zor3geom/IsPntInsidePolygon.h>

#include <algorithm>
#include <cmath>

using zor::geom::PNT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;

/// Points anywhere in a square, flat; the corners of the square among them, so that it is the root's.
std::vector<Ref::CPnt> MakePnts(int nNumPnts, std::int32_t nEdge)
{
    CRandom random(11);
    std::vector<Ref::CPnt> pnts{{0, 0, 0}, {nEdge, 0, 0}, {0, nEdge, 0}, {nEdge, nEdge, 0}};
    while (static_cast<int>(pnts.size()) < nNumPnts)
        pnts.push_back({static_cast<std::int32_t>(random.Int(0, nEdge)),
                        static_cast<std::int32_t>(random.Int(0, nEdge)), 0});
    return pnts;
}

TRing Box(double xmin, double ymin, double xmax, double ymax)
{
    return {{xmin, ymin}, {xmin, ymax}, {xmax, ymax}, {xmax, ymin}};
}

template <class T>
class Query2D : public ::testing::Test
{
public:
    /// 4000 points over 2000 × 2000 units: squares far larger than the liberty taken near corners.
    Query2D() : m_store(MakePnts(4000, 20000000), {0.0F, 0.0F, 0.0F}) { m_store.ComputeTree(); }

    PNT_2D GetPlace(int i) const
    {
        const Ref::CPnt& pnt = m_store.GetRef().pnts[static_cast<std::size_t>(i)];
        return {pnt.x / 10000.0, pnt.y / 10000.0};
    }

    std::vector<int> Cnts(const TRing& outer, const std::vector<TRing>& holes)
    {
        CRecListener rec;
        CQueryContour<T>(*m_store, &rec).FindPnts2D_Cnts(outer, holes);
        return rec.GetSortedIndices();
    }

    std::vector<int> IntCnt(const TRing& contour)
    {
        CRecListener rec;
        CQueryContour<T>(*m_store, &rec).FindPnts2D_IntCnt(contour);
        return rec.GetSortedIndices();
    }

    /// Live points for which a condition on their place holds.
    template <class F>
    std::vector<int> Scan(F isWanted) const
    {
        std::vector<int> vecIndices;
        for (int i = 0; i < static_cast<int>(m_store.GetRef().pnts.size()); ++i)
            if (!m_store.GetRef().deleted[static_cast<std::size_t>(i)] && isWanted(GetPlace(i)))
                vecIndices.push_back(i);
        return vecIndices;
    }

    CTestStore<T> m_store;
};
TYPED_TEST_SUITE(Query2D, TBothPntTypes, CPntTypeName);

const TRing c_jagged = {
    {310.5, 120.5}, {1700.25, 300.75}, {1500.5, 1650.5}, {1004.5, 900.5}, {420.5, 1800.25}};

} // namespace

TYPED_TEST(Query2D, Cnts_WithoutHoles_ExactlyThePointsInside)
{
    const auto isIn = [](const PNT_2D& pnt) { return zor::geom::IsPntInsidePolygon(c_jagged, pnt); };
    EXPECT_EQ(this->Cnts(c_jagged, {}), this->Scan(isIn));
    for (int i = 0; i < 4000; i += 3)
        this->m_store.Delete(i);
    EXPECT_EQ(this->Cnts(c_jagged, {}), this->Scan(isIn)); // and none that is deleted
}

TYPED_TEST(Query2D, Cnts_WholeAndNothing)
{
    EXPECT_EQ(this->Cnts(Box(-10, -10, 3000, 3000), {}).size(), 4000U);
    EXPECT_EQ(this->Cnts(Box(5000, 5000, 6000, 6000), {}).size(), 0U);
    EXPECT_EQ(this->Cnts({}, {}).size(), 0U);
    EXPECT_EQ(this->Cnts({{0, 0}, {2000, 2000}}, {}).size(), 0U);
}

// Where a contour has holes, leaves that an edge passes through deliver nothing, even far from the hole.
TYPED_TEST(Query2D, Cnts_HoleDropsEveryStraddlingLeaf_Kept)
{
    const TRing hole = Box(700, 500, 1000, 800);
    const std::vector<int> vecFound = this->Cnts(c_jagged, {hole});
    const std::vector<int> vecRight = this->Scan(
        [&](const PNT_2D& pnt) {
            return zor::geom::IsPntInsidePolygon(c_jagged, pnt) && !zor::geom::IsPntInsidePolygon(hole, pnt);
        });
    EXPECT_GT(vecFound.size(), 100U);
    EXPECT_LT(vecFound.size(), vecRight.size());
    EXPECT_TRUE(std::includes(vecRight.begin(), vecRight.end(), vecFound.begin(), vecFound.end()));
    // A hole far away changes nothing of the region and yet drops the leaves on the contour.
    EXPECT_LT(this->Cnts(c_jagged, {Box(9000, 9000, 9001, 9001)}).size(), this->Cnts(c_jagged, {}).size());
}

// Squares wholly inside the contour deliver every point; of leaves on it come the points outside.
TYPED_TEST(Query2D, IntCnt_DeliversTheOutsideOfStraddlingLeaves_Kept)
{
    const auto isIn = [](const PNT_2D& pnt) { return zor::geom::IsPntInsidePolygon(c_jagged, pnt); };
    const std::vector<int> vecFound = this->IntCnt(c_jagged);
    int nNumIn = 0;
    int nNumOut = 0;
    for (const int i : vecFound)
        ++(isIn(this->GetPlace(i)) ? nNumIn : nNumOut);
    EXPECT_GT(nNumIn, 100);
    EXPECT_GT(nNumOut, 100);
    EXPECT_LT(nNumIn, static_cast<int>(this->Scan(isIn).size()));
    // The points missing inside are those of the straddling leaves, which the other query does deliver.
    const std::vector<int> vecCnts = this->Cnts(c_jagged, {});
    const std::vector<int> vecHole =
        this->Cnts(c_jagged, {Box(9000, 9000, 9001, 9001)}); // inside squares alone
    EXPECT_EQ(static_cast<int>(vecHole.size()), nNumIn);
    EXPECT_GT(vecCnts.size(), vecHole.size());
    EXPECT_EQ(this->IntCnt(Box(-10, -10, 3000, 3000)).size(), 4000U);
    EXPECT_EQ(this->IntCnt(Box(5000, 5000, 6000, 6000)).size(), 0U);
}

// A square of which a strip of less than the root of 0.1 is cut away counts as outside: the square of the
// distance is held against 0.1.
TYPED_TEST(Query2D, Cnts_CutNearTheCornersCountsAsNone_Kept)
{
    const auto count = [this](double dStrip)
    { return this->Cnts(Box(2000 - dStrip, -10, 2010, 2010), {}).size(); };
    const auto isThere = [](double dStrip)
    { return [=](const PNT_2D& pnt) { return pnt.x >= 2000 - dStrip; }; };
    EXPECT_GE(this->Scan(isThere(0.2)).size(), 2U); // the corners
    EXPECT_EQ(count(0.2), 0U);
    EXPECT_EQ(count(0.31), 0U);
    EXPECT_EQ(count(0.33), this->Scan(isThere(0.33)).size());
    EXPECT_EQ(count(5.0), this->Scan(isThere(5.0)).size());
}

// So a cloud that is small altogether has no points in a contour that cuts it.
TYPED_TEST(Query2D, Cnts_SmallCloudIsOutsideWhateverIsCut_Kept)
{
    CTestStore<TypeParam> store(MakePnts(3000, 3000), {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CRecListener rec;
    CQueryContour<TypeParam>(*store, &rec).FindPnts2D_Cnts(Box(-1, -1, 0.15, 1), {});
    EXPECT_EQ(rec.GetNumPnts(), 0);
    CQueryContour<TypeParam>(*store, &rec).FindPnts2D_Cnts(Box(-1, -1, 1, 1), {});
    EXPECT_EQ(rec.GetNumPnts(), 3000);
}

// Same points by both ways round, closed or not, from any corner on, with corners repeated and spikes.
TYPED_TEST(Query2D, Contours_HowTheyAreWrittenDoesNotMatter)
{
    const std::vector<int> vecCnts = this->Cnts(c_jagged, {});
    const std::vector<int> vecIntCnt = this->IntCnt(c_jagged);
    TRing ring = c_jagged;
    for (std::size_t i = 0; i < c_jagged.size(); ++i)
    {
        std::rotate(ring.begin(), ring.begin() + 1, ring.end());
        TRing closed = ring;
        closed.push_back(ring.front());
        TRing repeated = ring;
        repeated.insert(repeated.begin() + 2, 4, ring[2]);
        TRing spike = ring;
        spike.insert(spike.begin() + 2, {ring[1], PNT_2D(ring[1].x + 33.3, ring[1].y - 500.1), ring[1]});
        for (const TRing& same : {ring, TRing(ring.rbegin(), ring.rend()), closed, repeated, spike})
        {
            EXPECT_EQ(this->Cnts(same, {}), vecCnts) << i;
            EXPECT_EQ(this->IntCnt(same), vecIntCnt) << i;
        }
    }
}

TYPED_TEST(Query2D, Contours_WithoutAreaHoldTheirBoundaryAtMost)
{
    EXPECT_EQ(this->Cnts({{500.5, 500.5}, {1500.5, 1500.5}, {700.5, 700.5}}, {}).size(), 0U);
    EXPECT_EQ(this->IntCnt({{500.5, 500.5}, {1500.5, 1500.5}, {700.5, 700.5}}).size(), 0U);
    EXPECT_EQ(this->Cnts({{5, 5}, {5, 5}, {5, 5}, {5, 5}}, {}).size(), 0U);
}

TYPED_TEST(Query2D, Contours_CrossingThemselvesByOddEvenRule)
{
    const TRing bow = {{100.5, 100.5}, {1800.5, 1700.5}, {1800.5, 200.5}, {100.5, 1900.5}};
    const TRing twice = {{100.5, 100.5}, {1900.5, 100.5}, {1900.5, 1900.5}, {100.5, 1900.5}, {100.5, 100.5},
                         {600.5, 500.5}, {1400.5, 600.5}, {1300.5, 1400.5}, {500.5, 1500.5}, {600.5, 500.5}};
    for (const TRing& ring : {bow, twice})
        EXPECT_EQ(this->Cnts(ring, {}),
                  this->Scan([&](const PNT_2D& pnt) { return zor::geom::IsPntInsidePolygon(ring, pnt); }));
}

TYPED_TEST(Query2D, NearLine_EndIsTheFirstOfItsPlace)
{
    // Three points at one place, of which the first is deleted, and others around.
    std::vector<Ref::CPnt> pnts = MakePnts(500, 1000000);
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
    CTestStore<TypeParam> store(MakePnts(100, 100000), {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    EXPECT_EQ(CalcMaxSearchDist(*store), 5.0);
    for (int i = 0; i < 100; i += 2)
        store.Delete(i);
    EXPECT_EQ(CalcMaxSearchDist(*store), 5.0);
}
