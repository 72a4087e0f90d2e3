#include <zor3geom/CRingIndex.h>
#include <zor3geom/IsPntInsidePolygon.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using zor::geom::CRingIndex;
using zor::geom::PNT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;
using enumPlace = CRingIndex::enumPlace;

} // namespace

TEST(CRingIndex, Find_InsideOutsideOnEdge)
{
    const CRingIndex index({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    EXPECT_EQ(index.Find({2, 2}), enumPlace::Inside);
    EXPECT_EQ(index.Find({4, 2}), enumPlace::OnEdge);
    EXPECT_EQ(index.Find({0, 0}), enumPlace::OnEdge);
    EXPECT_EQ(index.Find({2, 4}), enumPlace::OnEdge);
    EXPECT_EQ(index.Find({4.1, 2}), enumPlace::Outside);
    EXPECT_EQ(index.Find({-1, 2}), enumPlace::Outside);
    EXPECT_EQ(index.GetBox().xmax, 4.0);
}

TEST(CRingIndex, Find_NothingInRingsThatAreNone)
{
    const double dNan = std::numeric_limits<double>::quiet_NaN();
    for (const TRing& ring : {TRing(), TRing{{1, 1}, {2, 2}}, TRing{{0, 0}, {4, dNan}, {4, 4}}})
    {
        const CRingIndex index(ring);
        EXPECT_EQ(index.Find({1, 1}), enumPlace::Outside);
        EXPECT_EQ(index.Find({0, 0}), enumPlace::Outside);
        EXPECT_GT(index.GetBox().xmin, index.GetBox().xmax);
    }
    EXPECT_EQ(CRingIndex({{0, 0}, {4, 0}, {4, 4}}).Find({dNan, 1}), enumPlace::Outside);
    EXPECT_EQ(CRingIndex({{0, 0}, {4, 0}, {4, 4}}).Find({1, dNan}), enumPlace::Outside);
}

TEST(CRingIndex, Find_HugeAndFlatRings)
{
    const double dMax = std::numeric_limits<double>::max();
    const CRingIndex huge({{-dMax, -dMax}, {dMax, -dMax}, {dMax, dMax}, {-dMax, dMax}});
    (void)huge.Find({0, 0}); // some answer
    (void)huge.Find({dMax, -1});
    const CRingIndex flat({{0, 1}, {4, 1}, {2, 1}});
    EXPECT_EQ(flat.Find({3, 1}), enumPlace::OnEdge);
    EXPECT_EQ(flat.Find({5, 1}), enumPlace::Outside);
}

// The plain test is the model: random rings, long ones, upright zigzags that put every edge in every band.
TEST(CRingIndex, Find_SameAsThePlainTest)
{
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i)
    {
        TRing ring;
        const int nNum = i % 10 == 0 ? 2000 : 3 + i % 30;
        std::uniform_int_distribution<int> draw(0, i % 3 == 0 ? 8 : 1000);
        for (int k = 0; k < nNum; ++k)
        {
            if (i % 2 == 0)
                ring.emplace_back(draw(random), draw(random));
            else // a zigzag
                ring.emplace_back(draw(random), k % 2 == 0 ? 0 : 1000);
        }
        const CRingIndex index(ring);
        for (int k = 0; k < 100; ++k)
        {
            const PNT_2D pnt(draw(random) * (k % 2 == 0 ? 1.0 : 0.37), draw(random));
            ASSERT_EQ(index.Find(pnt) != enumPlace::Outside, zor::geom::IsPntInsidePolygon(ring, pnt))
                << i << ": " << pnt.x << ' ' << pnt.y;
        }
    }
}
