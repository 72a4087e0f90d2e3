// How far a stored coordinate is from the one that was given: the bound that the documents promise.

#include <tests/support/CNoColors.h>
#include <tests/support/CRandom.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <cmath>

namespace
{

constexpr double c_dStep = 1e-4;                // a compact unit
constexpr double c_dLost = 1e-10;               // by double, between coordinate and offset
constexpr double c_dReach = 214748.3647 - 16.0; // offsets count from the first point rounded to float

/// A number of any size up to the largest: as many small ones as large ones.
double Draw(CRandom& random, double dSmallest, double dLargest)
{
    const double d = dSmallest * std::pow(dLargest / dSmallest, random.Unit());
    return random.Chance(2) ? d : -d;
}

double HalfStepOf(double d)
{
    return (std::nextafter(std::fabs(d), INFINITY) - std::fabs(d)) / 2.0;
}

} // namespace

// An offset is truncated to a step towards the origin. On the way there and back double rounds four times:
// the difference of two coordinates below 2^18 by at most 2^-36, its 10,000-fold below 2^31 by 2^-23 of a
// step, the 10,000th part of the whole steps by 2^-36, all of which is below 1e-10, and the sum by half a
// step of double.
TEST(Accuracy, AddPnt_WithinAStepOfTheCoordinate)
{
    CRandom random(4);
    CNoColors colors;
    for (int nCloud = 0; nCloud < 300; ++nCloud)
    {
        CPntCld cld(&colors);
        cld.OnReadType(PntCldType_Pnt);
        ASSERT_TRUE(cld.Init(200));
        const double dFirst = Draw(random, 1e-3, 1e8);
        for (int i = 0; i < 200; ++i)
        {
            const double x = i == 0 ? dFirst : dFirst + Draw(random, 1e-6, c_dReach);
            ASSERT_TRUE(cld.AddPnt(x, -x, x / 7.0 + dFirst * 6.0 / 7.0));
            zor::geom::PNT_3D pnt;
            cld.GetPnt(i, pnt);
            const double dBound = c_dStep + c_dLost + HalfStepOf(x) + HalfStepOf(pnt.x);
            ASSERT_LT(std::fabs(pnt.x - x), dBound) << dFirst << ", " << x;
            ASSERT_EQ(pnt.y, -pnt.x) << dFirst << ", " << x; // the same on both sides of the origin
            const double z = x / 7.0 + dFirst * 6.0 / 7.0;
            ASSERT_LT(std::fabs(pnt.z - z), dBound) << dFirst << ", " << x;
        }
    }
}

// Towards the origin: a coordinate is never stored farther from the first point than it was, but for
// roundings.
TEST(Accuracy, AddPnt_TowardsTheOrigin)
{
    CRandom random(5);
    CNoColors colors;
    CPntCld cld(&colors);
    cld.OnReadType(PntCldType_Pnt);
    ASSERT_TRUE(cld.Init(20000));
    ASSERT_TRUE(cld.AddPnt(4096.0, 0.0, 0.0)); // a float: the origin itself
    for (int i = 1; i < 20000; ++i)
    {
        const double x = 4096.0 + Draw(random, 1e-6, c_dReach);
        ASSERT_TRUE(cld.AddPnt(x, 0.0, 0.0));
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        ASSERT_LE(std::fabs(pnt.x - 4096.0), std::fabs(x - 4096.0) + c_dLost) << x;
    }
}

// Beyond what an offset reaches the coordinate is the farthest that it does reach.
TEST(Accuracy, AddPnt_BeyondTheReach)
{
    CNoColors colors;
    CPntCld cld(&colors);
    cld.OnReadType(PntCldType_Pnt);
    ASSERT_TRUE(cld.Init(4));
    cld.AddPnt(0.0, 0.0, 0.0);
    cld.AddPnt(214748.3647, -214748.3648, 214748.36475);
    cld.AddPnt(214749.0, -214749.0, 1e300);
    cld.AddPnt(INFINITY, -INFINITY, NAN);
    const auto get = [&](int i)
    {
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        return pnt;
    };
    for (const int i : {1, 2, 3})
    {
        EXPECT_DOUBLE_EQ(get(i).x, 214748.3647) << i;
        EXPECT_DOUBLE_EQ(get(i).y, -214748.3648) << i;
    }
    EXPECT_DOUBLE_EQ(get(1).z, 214748.3647);
    EXPECT_DOUBLE_EQ(get(2).z, 214748.3647);
    EXPECT_EQ(get(3).z, 0.0);
}
