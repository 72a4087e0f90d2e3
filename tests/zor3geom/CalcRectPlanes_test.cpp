#include <zor3geom/CalcRectPlanes.h>
#include <zor3geom/PNT_2D.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using zor::geom::CalcRectPlanes;
using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

namespace
{

bool IsKept(const std::vector<PLANE_3D>& vecPlanes, double x, double y, double z = 0.0)
{
    return std::none_of(vecPlanes.begin(), vecPlanes.end(),
                        [&](const PLANE_3D& plane) { return plane.IsInFrontOf(x, y, z); });
}

} // namespace

TEST(CalcRectPlanes, AxisParallelRectangle)
{
    std::vector<PLANE_3D> vecPlanes(9);
    CalcRectPlanes({1, 2, 0}, {5, 2, 0}, {5, 4, 0}, {1, 4, 0}, vecPlanes);
    ASSERT_EQ(vecPlanes.size(), 4U);
    EXPECT_TRUE(IsKept(vecPlanes, 3, 3));
    for (const double z : {-1e6, 0.0, 1e6}) // vertical
        EXPECT_TRUE(IsKept(vecPlanes, 1, 2, z) && IsKept(vecPlanes, 5, 4, z));
    EXPECT_FALSE(IsKept(vecPlanes, 0.999, 3));
    EXPECT_FALSE(IsKept(vecPlanes, 5.001, 3));
    EXPECT_FALSE(IsKept(vecPlanes, 3, 1.999));
    EXPECT_FALSE(IsKept(vecPlanes, 3, 4.001));
}

TEST(CalcRectPlanes, NormalsOfLengthOne)
{
    std::vector<PLANE_3D> vecPlanes;
    CalcRectPlanes({0, 0, 7}, {300, 400, 8}, {296, 403, 9}, {-4, 3, 1}, vecPlanes);
    for (const PLANE_3D& plane : vecPlanes)
    {
        EXPECT_NEAR(std::hypot(plane.a, plane.b), 1.0, 1e-12);
        EXPECT_EQ(plane.c, 0.0);
    }
}

TEST(CalcRectPlanes, TurnedRectanglesEitherWayRound)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> draw(-1.0, 1.0);
    for (int i = 0; i < 2000; ++i)
    {
        const double dAngle = 3.2 * draw(random);
        const double u[2] = {std::cos(dAngle), std::sin(dAngle)};
        const double dLong = 0.5 + 20.0 * std::fabs(draw(random));
        const double dWide = 0.5 + 5.0 * std::fabs(draw(random));
        const double x0 = 1000.0 * draw(random);
        const double y0 = 1000.0 * draw(random);
        const auto place = [&](double s, double t)
        { return PNT_3D(x0 + s * u[0] - t * u[1], y0 + s * u[1] + t * u[0], 100.0 * draw(random)); };
        std::vector<PLANE_3D> vecPlanes;
        if (i % 2 == 0)
            CalcRectPlanes(place(0, 0), place(dLong, 0), place(dLong, dWide), place(0, dWide), vecPlanes);
        else
            CalcRectPlanes(place(0, 0), place(0, dWide), place(dLong, dWide), place(dLong, 0), vecPlanes);
        const double s = dLong * (1.5 * draw(random) + 0.5);
        const double t = dWide * (1.5 * draw(random) + 0.5);
        if (std::min({std::fabs(s), std::fabs(t), std::fabs(s - dLong), std::fabs(t - dWide)}) < 1e-9)
            continue; // on the boundary, up to rounding
        const PNT_3D pnt = place(s, t);
        ASSERT_EQ(IsKept(vecPlanes, pnt.x, pnt.y, pnt.z), s > 0 && s < dLong && t > 0 && t < dWide) << i;
    }
}

// The rectangle of no width keeps the stretch of the line that it is.
TEST(CalcRectPlanes, WithoutWidth_HoldsItsLineAndNoMore)
{
    for (const bool bAlongAB : {true, false})
    {
        std::vector<PLANE_3D> vecPlanes;
        if (bAlongAB)
            CalcRectPlanes({0, 0, 0}, {4, 0, 0}, {4, 0, 0}, {0, 0, 0}, vecPlanes);
        else
            CalcRectPlanes({0, 0, 0}, {0, 0, 0}, {4, 0, 0}, {4, 0, 0}, vecPlanes);
        ASSERT_EQ(vecPlanes.size(), 4U);
        EXPECT_TRUE(IsKept(vecPlanes, 0, 0) && IsKept(vecPlanes, 3, 0) && IsKept(vecPlanes, 4, 0));
        EXPECT_FALSE(IsKept(vecPlanes, -0.1, 0) || IsKept(vecPlanes, 4.1, 0));
        EXPECT_FALSE(IsKept(vecPlanes, 2, 0.001) || IsKept(vecPlanes, 2, -0.001));
    }
}

// Narrower than coordinates far from the origin can tell: its corners are rounding, its sides must not be.
TEST(CalcRectPlanes, NarrowerThanRounding_HoldsNothingAside)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> draw(-1.0, 1.0);
    for (int i = 0; i < 3000; ++i)
    {
        const double x = 500000.0 + 10.0 * draw(random);
        const double y = 4000000.0 + 10.0 * draw(random);
        const double dX = 5.0 * draw(random);
        const double dY = 5.0 * draw(random);
        const double dWide = std::pow(10.0, -13.0 + 5.0 * draw(random));
        const double dLength = std::hypot(dX, dY);
        const PNT_2D off(-dY / dLength * dWide, dX / dLength * dWide);
        std::vector<PLANE_3D> vecPlanes;
        CalcRectPlanes({x + off.x, y + off.y, 0}, {x - off.x, y - off.y, 0},
                       {x + dX - off.x, y + dY - off.y, 0}, {x + dX + off.x, y + dY + off.y, 0}, vecPlanes);
        for (const double s : {-0.01, 0.01}) // aside, and beyond the ends
        {
            EXPECT_FALSE(IsKept(vecPlanes, x + dX / 2 - dY / dLength * s, y + dY / 2 + dX / dLength * s))
                << i;
            const double dEnd = s < 0 ? 0.0 : 1.0;
            EXPECT_FALSE(
                IsKept(vecPlanes, x + dX * dEnd + dX / dLength * s, y + dY * dEnd + dY / dLength * s))
                << i;
        }
    }
}

// A place on an edge, beyond its corners too, lies on its plane: each plane has its own edge's direction,
// also where another edge is a million times as long and the corners are rounded.
TEST(CalcRectPlanes, EachPlaneHoldsItsOwnEdge)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> draw(-1.0, 1.0);
    for (int i = 0; i < 2000; ++i)
    {
        const double dAngle = 3.2 * draw(random);
        const PNT_2D along(std::cos(dAngle), std::sin(dAngle));
        const double dWide = std::pow(10.0, 6.0 * draw(random));
        const auto place = [&](double s, double t) { // rounded to a hundredth of the shorter side
            const double dStep = 0.01 * std::min(1.0, dWide);
            const auto round = [&](double d) { return std::round(d / dStep) * dStep; };
            return PNT_3D(round(s * along.x - t * along.y), round(s * along.y + t * along.x), 0.0);
        };
        const PNT_3D corners[] = {place(0, 0), place(1, 0), place(1, dWide), place(0, dWide)};
        std::vector<PLANE_3D> vecPlanes;
        CalcRectPlanes(corners[0], corners[1], corners[2], corners[3], vecPlanes);
        for (std::size_t n = 0; n < 4; ++n)
        {
            const PLANE_3D& plane = vecPlanes[n];
            for (const PNT_3D& corner : {corners[n], corners[(n + 1) % 4]})
                EXPECT_NEAR(plane.a * corner.x + plane.b * corner.y + plane.d, 0.0, 1e-9 * (1.0 + dWide))
                    << i;
        }
        EXPECT_TRUE(IsKept(vecPlanes, (corners[0].x + corners[2].x) / 2, (corners[0].y + corners[2].y) / 2));
    }
}

TEST(CalcRectPlanes, AllCornersAtOnePlace_HoldsNothing)
{
    std::vector<PLANE_3D> vecPlanes;
    CalcRectPlanes({1, 1, 0}, {1, 1, 0}, {1, 1, 0}, {1, 1, 0}, vecPlanes);
    EXPECT_EQ(vecPlanes.size(), 4U);
    EXPECT_FALSE(IsKept(vecPlanes, 55, -7) || IsKept(vecPlanes, 1, 1));
}

TEST(CalcRectPlanes, WithoutNumbers_HoldsNothing)
{
    const double dInf = std::numeric_limits<double>::infinity();
    for (const double d : {dInf, -dInf, std::numeric_limits<double>::quiet_NaN(), 1.7e308})
    {
        std::vector<PLANE_3D> vecPlanes;
        CalcRectPlanes({d, 0, 0}, {4, d, 0}, {4, 4, 0}, {0, 4, 0}, vecPlanes);
        EXPECT_EQ(vecPlanes.size(), 4U);
        EXPECT_FALSE(IsKept(vecPlanes, 3, 3));
        CalcRectPlanes({0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {d, d, 0}, vecPlanes);
        EXPECT_FALSE(IsKept(vecPlanes, 3, 3));
    }
}
