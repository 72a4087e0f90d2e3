// Rings cut down to a box: inside it nothing changes, outside it nothing is left.

#include <zor3geom/ClipRing.h>
#include <zor3geom/IsPntInsidePolygon.h>

#include <gtest/gtest.h>

#include <random>

using zor::geom::ClipRing;
using zor::geom::PNT_2D;
using zor::geom::RECT_2D;

namespace
{

using TRing = std::vector<PNT_2D>;

TRing Clip(TRing ring, const RECT_2D& box)
{
    ClipRing(ring, box);
    return ring;
}

bool IsSame(const TRing& a, const TRing& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const PNT_2D& p, const PNT_2D& q) { return p.x == q.x && p.y == q.y; });
}

TRing MakeRing(std::mt19937& random, double dReach)
{
    std::uniform_real_distribution<double> draw(-dReach, dReach);
    TRing ring(std::uniform_int_distribution<std::size_t>(3, 30)(random));
    for (PNT_2D& pnt : ring)
        pnt = PNT_2D(draw(random), draw(random));
    return ring;
}

} // namespace

// Rings that cross themselves many times, reaching out over every side and corner.
TEST(ClipRing_prop, PlacesInTheBox_InsideAsBefore)
{
    std::mt19937 random(7);
    const RECT_2D box(-1.0, -0.5, 1.0, 0.75);
    std::uniform_real_distribution<double> drawX(box.xmin, box.xmax);
    std::uniform_real_distribution<double> drawY(box.ymin, box.ymax);
    int nNumInside = 0;
    for (int nCase = 0; nCase < 3000; ++nCase)
    {
        SCOPED_TRACE(nCase);
        const TRing ring = MakeRing(random, nCase % 3 == 0 ? 1.2 : 4.0);
        const TRing clipped = Clip(ring, box);
        for (const PNT_2D& pnt : clipped)
            ASSERT_TRUE(pnt.x >= box.xmin && pnt.x <= box.xmax && pnt.y >= box.ymin && pnt.y <= box.ymax);
        for (int i = 0; i < 20; ++i)
        {
            const PNT_2D pnt(drawX(random), drawY(random));
            const bool bInside = zor::geom::IsPntInsidePolygon(ring, pnt);
            ASSERT_EQ(bInside, zor::geom::IsPntInsidePolygon(clipped, pnt));
            nNumInside += bInside ? 1 : 0;
        }
    }
    EXPECT_GT(nNumInside, 10000);
}

TEST(ClipRing, WithinTheBox_StaysAsItIs)
{
    const TRing ring = {{0, 0}, {1, 0}, {1, 1}, {0, 0}};
    EXPECT_TRUE(IsSame(Clip(ring, {0, 0, 1, 1}), ring));
}

TEST(ClipRing, BeyondOneSide_NothingIsLeft)
{
    EXPECT_TRUE(Clip({{2, 0}, {3, 0}, {2, 1}}, {0, 0, 1, 1}).empty());
    EXPECT_TRUE(Clip({{0, -3}, {1, -3}, {0, -2}}, {0, 0, 1, 1}).empty());
    EXPECT_TRUE(Clip({}, {0, 0, 1, 1}).empty());
}

TEST(ClipRing, AroundTheBox_IsTheBox)
{
    const TRing clipped = Clip({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}, {0, 0, 1, 1});
    EXPECT_EQ(clipped.size(), 4U);
    EXPECT_TRUE(zor::geom::IsPntInsidePolygon(clipped, {0, 0}));
    EXPECT_TRUE(zor::geom::IsPntInsidePolygon(clipped, {1, 1}));
}

TEST(ClipRing, CutEdges_EndOnTheSides)
{
    EXPECT_TRUE(IsSame(Clip({{0, 0.5}, {2, 0.5}, {2, 1}, {0, 1}}, {0, 0, 1, 1}),
                       {{0, 0.5}, {1, 0.5}, {1, 1}, {0, 1}}));
}
