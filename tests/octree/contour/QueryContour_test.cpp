// The contour queries on a store: what they do with deleted points, squares and leaves.

#include <octree/contour/QueryContour.h>
#include <tests/octree/CPlanTest.h>
#include <zor3geom/IsPntInsidePolygon.h>

#include <algorithm>

using zor::geom::PNT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;

TRing Box(double xmin, double ymin, double xmax, double ymax)
{
    return {{xmin, ymin}, {xmin, ymax}, {xmax, ymax}, {xmax, ymin}};
}

template <class T>
class QueryContour : public CPlanTest<T>
{
public:
    std::vector<int> Cnts(const TRing& outer, const std::vector<TRing>& holes)
    {
        CRecListener rec;
        CQueryContour<T>(*this->m_store, &rec).FindPnts2D_Cnts(outer, holes);
        return rec.GetSortedIndices();
    }

    std::vector<int> IntCnt(const TRing& contour)
    {
        CRecListener rec;
        CQueryContour<T>(*this->m_store, &rec).FindPnts2D_IntCnt(contour);
        return rec.GetSortedIndices();
    }
};
TYPED_TEST_SUITE(QueryContour, TBothPntTypes, CPntTypeName);

const TRing c_jagged = {
    {310.5, 120.5}, {1700.25, 300.75}, {1500.5, 1650.5}, {1004.5, 900.5}, {420.5, 1800.25}};

} // namespace

TYPED_TEST(QueryContour, Cnts_WithoutHoles_ExactlyThePointsInside)
{
    const auto isIn = [](const PNT_2D& pnt) { return zor::geom::IsPntInsidePolygon(c_jagged, pnt); };
    EXPECT_EQ(this->Cnts(c_jagged, {}), this->Scan(isIn));
    for (int i = 0; i < 4000; i += 3)
        this->m_store.Delete(i);
    EXPECT_EQ(this->Cnts(c_jagged, {}), this->Scan(isIn)); // and none that is deleted
}

TYPED_TEST(QueryContour, Cnts_WholeAndNothing)
{
    EXPECT_EQ(this->Cnts(Box(-10, -10, 3000, 3000), {}).size(), 4000U);
    EXPECT_EQ(this->Cnts(Box(5000, 5000, 6000, 6000), {}).size(), 0U);
    EXPECT_EQ(this->Cnts({}, {}).size(), 0U);
    EXPECT_EQ(this->Cnts({{0, 0}, {2000, 2000}}, {}).size(), 0U);
}

// Where a contour has holes, leaves that an edge passes through deliver nothing, even far from the hole.
TYPED_TEST(QueryContour, Cnts_HoleDropsEveryStraddlingLeaf_Kept)
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
TYPED_TEST(QueryContour, IntCnt_DeliversTheOutsideOfStraddlingLeaves_Kept)
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
TYPED_TEST(QueryContour, Cnts_CutNearTheCornersCountsAsNone_Kept)
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
TYPED_TEST(QueryContour, Cnts_SmallCloudIsOutsideWhateverIsCut_Kept)
{
    CTestStore<TypeParam> store(MakePlanPnts(3000, 3000), {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CRecListener rec;
    CQueryContour<TypeParam>(*store, &rec).FindPnts2D_Cnts(Box(-1, -1, 0.15, 1), {});
    EXPECT_EQ(rec.GetNumPnts(), 0);
    CQueryContour<TypeParam>(*store, &rec).FindPnts2D_Cnts(Box(-1, -1, 1, 1), {});
    EXPECT_EQ(rec.GetNumPnts(), 3000);
}

// Same points by both ways round, closed or not, from any corner on, with corners repeated and spikes.
TYPED_TEST(QueryContour, Contours_HowTheyAreWrittenDoesNotMatter)
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

TYPED_TEST(QueryContour, Contours_WithoutAreaHoldTheirBoundaryAtMost)
{
    EXPECT_EQ(this->Cnts({{500.5, 500.5}, {1500.5, 1500.5}, {700.5, 700.5}}, {}).size(), 0U);
    EXPECT_EQ(this->IntCnt({{500.5, 500.5}, {1500.5, 1500.5}, {700.5, 700.5}}).size(), 0U);
    EXPECT_EQ(this->Cnts({{5, 5}, {5, 5}, {5, 5}, {5, 5}}, {}).size(), 0U);
}

TYPED_TEST(QueryContour, Contours_CrossingThemselvesByOddEvenRule)
{
    const TRing bow = {{100.5, 100.5}, {1800.5, 1700.5}, {1800.5, 200.5}, {100.5, 1900.5}};
    const TRing twice = {{100.5, 100.5}, {1900.5, 100.5}, {1900.5, 1900.5}, {100.5, 1900.5}, {100.5, 100.5},
                         {600.5, 500.5}, {1400.5, 600.5}, {1300.5, 1400.5}, {500.5, 1500.5}, {600.5, 500.5}};
    for (const TRing& ring : {bow, twice})
        EXPECT_EQ(this->Cnts(ring, {}),
                  this->Scan([&](const PNT_2D& pnt) { return zor::geom::IsPntInsidePolygon(ring, pnt); }));
}
