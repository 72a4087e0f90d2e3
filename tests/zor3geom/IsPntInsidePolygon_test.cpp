#include <zor3geom/IsPntInsidePolygon.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using zor::geom::IsPntInsidePolygon;
using zor::geom::PNT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;

const TRing c_square = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};

} // namespace

TEST(IsPntInsidePolygon, InsideAndOutside)
{
    EXPECT_TRUE(IsPntInsidePolygon(c_square, {2, 2}));
    EXPECT_FALSE(IsPntInsidePolygon(c_square, {5, 2}));
    EXPECT_FALSE(IsPntInsidePolygon(c_square, {-1, 2}));
    EXPECT_FALSE(IsPntInsidePolygon(c_square, {2, 5}));
    const TRing notch = {{0, 0}, {6, 0}, {6, 6}, {3, 1}, {0, 6}};
    EXPECT_FALSE(IsPntInsidePolygon(notch, {3, 4}));
    EXPECT_TRUE(IsPntInsidePolygon(notch, {1, 2}));
    EXPECT_TRUE(IsPntInsidePolygon(notch, {5, 2}));
}

TEST(IsPntInsidePolygon, BoundaryIsInside)
{
    for (const PNT_2D& pnt : {PNT_2D(0, 0), PNT_2D(4, 4), PNT_2D(0, 4), PNT_2D(4, 0), PNT_2D(2, 0),
                              PNT_2D(2, 4), PNT_2D(0, 2), PNT_2D(4, 2)})
        EXPECT_TRUE(IsPntInsidePolygon(c_square, pnt)) << pnt.x << ' ' << pnt.y;
    EXPECT_TRUE(IsPntInsidePolygon({{0, 0}, {6, 2}, {0, 2}}, {3, 1}));
}

TEST(IsPntInsidePolygon, WindingStartAndClosingDoNotMatter)
{
    TRing ring = {{0, 0}, {7, 1}, {3, 2}, {6, 6}, {1, 5}};
    const auto find = [](const TRing& r)
    {
        std::vector<bool> vecInside;
        for (int x = -1; x < 9; ++x)
            for (int y = -1; y < 9; ++y)
                vecInside.push_back(IsPntInsidePolygon(r, PNT_2D(x, y)));
        return vecInside;
    };
    const std::vector<bool> vecInside = find(ring);
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        std::rotate(ring.begin(), ring.begin() + 1, ring.end());
        EXPECT_EQ(find(ring), vecInside);
        EXPECT_EQ(find(TRing(ring.rbegin(), ring.rend())), vecInside);
        TRing closed = ring;
        closed.push_back(ring.front());
        EXPECT_EQ(find(closed), vecInside);
        closed.insert(closed.begin() + 2, 3, closed[2]); // repeated points
        EXPECT_EQ(find(closed), vecInside);
    }
}

TEST(IsPntInsidePolygon, FewerThanThreePointsHoldNothing)
{
    EXPECT_FALSE(IsPntInsidePolygon({}, {0, 0}));
    EXPECT_FALSE(IsPntInsidePolygon({{0, 0}}, {0, 0}));
    EXPECT_FALSE(IsPntInsidePolygon({{0, 0}, {4, 0}}, {2, 0}));
}

// Without area a ring still has a boundary.
TEST(IsPntInsidePolygon, RingWithoutAreaHoldsItsBoundary)
{
    EXPECT_TRUE(IsPntInsidePolygon({{0, 0}, {4, 0}, {2, 0}}, {3, 0}));
    EXPECT_FALSE(IsPntInsidePolygon({{0, 0}, {4, 0}, {2, 0}}, {3, 1}));
    EXPECT_TRUE(IsPntInsidePolygon({{1, 1}, {1, 1}, {1, 1}}, {1, 1}));
    EXPECT_FALSE(IsPntInsidePolygon({{1, 1}, {1, 1}, {1, 1}}, {1, 2}));
}

TEST(IsPntInsidePolygon, SelfCrossingByOddEvenRule)
{
    const TRing bow = {{0, 0}, {4, 4}, {4, 0}, {0, 4}};
    EXPECT_TRUE(IsPntInsidePolygon(bow, {0.5, 2}));
    EXPECT_TRUE(IsPntInsidePolygon(bow, {3.5, 2}));
    EXPECT_FALSE(IsPntInsidePolygon(bow, {2, 3}));
    const TRing twice = {{0, 0}, {6, 0}, {6, 6}, {0, 6}, {0, 0}, {2, 2}, {4, 2}, {4, 4}, {2, 4}, {2, 2}};
    EXPECT_FALSE(IsPntInsidePolygon(twice, {3, 3})); // surrounded twice
    EXPECT_TRUE(IsPntInsidePolygon(twice, {1, 3}));
}

TEST(IsPntInsidePolygon, SpikeHoldsOnlyItself)
{
    const TRing spike = {{0, 0}, {4, 0}, {4, 4}, {9, 4}, {4, 4}, {0, 4}};
    EXPECT_TRUE(IsPntInsidePolygon(spike, {7, 4}));
    EXPECT_FALSE(IsPntInsidePolygon(spike, {7, 3.9}));
    EXPECT_FALSE(IsPntInsidePolygon(spike, {9.1, 4}));
}

TEST(IsPntInsidePolygon, NothingWithoutNumbers)
{
    const double dInf = std::numeric_limits<double>::infinity();
    for (const double d : {dInf, -dInf, std::numeric_limits<double>::quiet_NaN()})
    {
        EXPECT_FALSE(IsPntInsidePolygon(c_square, {d, 2}));
        EXPECT_FALSE(IsPntInsidePolygon(c_square, {2, d}));
        for (std::size_t i = 0; i < 4; ++i)
        {
            TRing ring = c_square;
            ring[i].x = d;
            EXPECT_FALSE(IsPntInsidePolygon(ring, {2, 2}));
            ring = c_square;
            ring[i].y = d;
            EXPECT_FALSE(IsPntInsidePolygon(ring, {2, 2}));
        }
    }
}

// No product of these overflows into an answer that depends on the order of corners.
TEST(IsPntInsidePolygon, HugeCoordinates)
{
    EXPECT_TRUE(
        IsPntInsidePolygon({{-1e150, -1e150}, {1e150, -1e150}, {1e150, 1e150}, {-1e150, 1e150}}, {0, 0}));
    EXPECT_FALSE(IsPntInsidePolygon({{-1e150, 1}, {1e150, 1}, {1e150, 1e150}, {-1e150, 1e150}}, {0, 0}));
    const double dMax = std::numeric_limits<double>::max();
    (void)IsPntInsidePolygon({{-dMax, -dMax}, {dMax, -dMax}, {dMax, dMax}}, {0, 0}); // some answer
}
