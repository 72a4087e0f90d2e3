#include <zor3geom/CPolygonIndex.h>

#include <gtest/gtest.h>

using zor::geom::CPolygonIndex;
using zor::geom::PNT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;

TRing MakeBox(double dMin, double dMax)
{
    return {{dMin, dMin}, {dMax, dMin}, {dMax, dMax}, {dMin, dMax}};
}

} // namespace

TEST(CPolygonIndex, Contains_InsideAnyPolygonAndNotItsHoles)
{
    const CPolygonIndex polygons({{MakeBox(0, 9), {MakeBox(2, 7)}}, {MakeBox(4, 5), {}}});
    EXPECT_TRUE(polygons.Contains({1, 1}));
    EXPECT_FALSE(polygons.Contains({3, 3}));
    EXPECT_TRUE(polygons.Contains({4.5, 4.5})) << "the second polygon stands in the first one's hole";
    EXPECT_FALSE(polygons.Contains({10, 5}));
}

TEST(CPolygonIndex, Contains_EdgesOfHolesToo)
{
    const CPolygonIndex polygons({{MakeBox(0, 9), {MakeBox(2, 7), MakeBox(6, 11)}}});
    EXPECT_TRUE(polygons.Contains({0, 3}));
    EXPECT_TRUE(polygons.Contains({2, 3}));
    EXPECT_TRUE(polygons.Contains({7, 6.5})) << "in the other hole";
    EXPECT_TRUE(polygons.Contains({11, 10})) << "beside the outer ring";
    EXPECT_FALSE(polygons.Contains({10, 10}));
}

TEST(CPolygonIndex, Contains_RingsThatCannotBeUsedAreNotThere)
{
    const TRing two{{0, 0}, {9, 9}};
    const CPolygonIndex polygons({{two, {MakeBox(0, 9)}}, {MakeBox(20, 30), {two}}});
    EXPECT_FALSE(polygons.Contains({0, 0}));
    EXPECT_FALSE(polygons.Contains({5, 5}));
    EXPECT_TRUE(polygons.Contains({25, 25}));
}
