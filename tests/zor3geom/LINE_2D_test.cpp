#include <zor3geom/LINE_2D.h>

#include <gtest/gtest.h>

#include <limits>

using zor::geom::LINE_2D;

TEST(LINE_2D, intersect_Crossing)
{
    EXPECT_TRUE(LINE_2D(0, 0, 2, 2).intersect(LINE_2D(0, 2, 2, 0)));
    EXPECT_FALSE(LINE_2D(0, 0, 1, 1).intersect(LINE_2D(0, 4, 4, 0)));
    EXPECT_FALSE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(3, 0, 4, 1)));
}

TEST(LINE_2D, intersect_EndPointsCount)
{
    EXPECT_TRUE(LINE_2D(0, 0, 2, 2).intersect(LINE_2D(2, 2, 5, 0)));  // end on end
    EXPECT_TRUE(LINE_2D(0, 0, 4, 0).intersect(LINE_2D(2, 0, 2, 7)));  // end on the middle
    EXPECT_FALSE(LINE_2D(0, 0, 4, 0).intersect(LINE_2D(2, 1, 2, 7))); // just above
}

TEST(LINE_2D, intersect_OverlapCounts)
{
    EXPECT_TRUE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(1, 1, 2, 2)));  // one within the other
    EXPECT_TRUE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(3, 3, 9, 9)));  // in part
    EXPECT_TRUE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(4, 4, 0, 0)));  // the same, backwards
    EXPECT_TRUE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(4, 4, 9, 9)));  // one after the other
    EXPECT_FALSE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(5, 5, 9, 9))); // with a gap
    EXPECT_FALSE(LINE_2D(0, 0, 4, 4).intersect(LINE_2D(0, 1, 4, 5))); // side by side
}

TEST(LINE_2D, intersect_ZeroLengthIsAPoint)
{
    EXPECT_TRUE(LINE_2D(1, 1, 1, 1).intersect(LINE_2D(0, 0, 4, 4)));
    EXPECT_FALSE(LINE_2D(1, 2, 1, 2).intersect(LINE_2D(0, 0, 4, 4)));
    EXPECT_TRUE(LINE_2D(1, 1, 1, 1).intersect(LINE_2D(1, 1, 1, 1)));
    EXPECT_FALSE(LINE_2D(1, 1, 1, 1).intersect(LINE_2D(1, 2, 1, 2)));
}

// Products of 64 bits that differ in the last one: a double alone would call these points collinear.
TEST(LINE_2D, intersect_ExactOverTheWholeSpan)
{
    const double dMin = -2147483648.0;
    const double dMax = 2147483647.0;
    const LINE_2D diagonal(dMin, dMin, dMax, dMax);
    EXPECT_TRUE(diagonal.intersect(LINE_2D(dMax - 1.0, dMax - 1.0, dMax, 0.0)));
    EXPECT_FALSE(diagonal.intersect(LINE_2D(dMax - 1.0, dMax - 2.0, dMax, 0.0)));
    EXPECT_FALSE(LINE_2D(dMin, dMin, dMax, dMax - 1.0).intersect(LINE_2D(0.0, 0.0, -1.0, 5.0)));
}

TEST(LINE_2D, intersect_NothingWithoutNumbers)
{
    const LINE_2D cross(-1, 0, 1, 0);
    const double dInf = std::numeric_limits<double>::infinity();
    const double dNan = std::numeric_limits<double>::quiet_NaN();
    for (const double d : {dInf, -dInf, dNan})
    {
        for (const LINE_2D& line :
             {LINE_2D(d, -1, 0, 1), LINE_2D(0, d, 0, 1), LINE_2D(0, -1, d, 1), LINE_2D(0, -1, 0, d)})
        {
            EXPECT_FALSE(line.intersect(cross));
            EXPECT_FALSE(cross.intersect(line));
            EXPECT_FALSE(line.intersect(line));
        }
    }
}

TEST(LINE_2D, intersect_HugeNumbersGiveSomeAnswer)
{
    const double dMax = std::numeric_limits<double>::max();
    const double dMin = std::numeric_limits<double>::denorm_min();
    for (const double a : {dMax, -dMax, dMin, 0.0, 1.7e200})
        for (const double b : {dMax, -dMax, dMin, 0.0, 1.7e200})
            (void)LINE_2D(a, b, -b, a).intersect(LINE_2D(b, a, -a, -b));
    EXPECT_FALSE(LINE_2D(dMax, dMax, dMax, dMax).intersect(LINE_2D(-dMax, -dMax, -dMax, -dMax)));
}
