#include <zor3geom/PAR_LINE_2D.h>

#include <gtest/gtest.h>

using zor::geom::PAR_LINE_2D;
using zor::geom::PNT_2D;

namespace
{

constexpr double c_dQuarter = 1.5707963267948966;

PNT_2D At(const PAR_LINE_2D& line, double t)
{
    PNT_2D pnt;
    line.calcPt(t, pnt);
    return pnt;
}

} // namespace

TEST(PAR_LINE_2D, length_DistanceOfTheEnds)
{
    EXPECT_EQ(PAR_LINE_2D({1, 2}, {4, 6}).length(), 5.0);
    EXPECT_EQ(PAR_LINE_2D({1, 2}, {1, 2}).length(), 0.0);
    EXPECT_DOUBLE_EQ(PAR_LINE_2D({-3e200, 0}, {0, 4e200}).length(), 5e200); // no square overflows
}

TEST(PAR_LINE_2D, calcPt_BetweenAndBeyond)
{
    const PAR_LINE_2D line({1, 2}, {5, 10});
    EXPECT_EQ(At(line, 0.0).x, 1.0);
    EXPECT_EQ(At(line, 0.0).y, 2.0);
    EXPECT_EQ(At(line, 1.0).x, 5.0);
    EXPECT_EQ(At(line, 1.0).y, 10.0);
    EXPECT_EQ(At(line, 0.25).x, 2.0);
    EXPECT_EQ(At(line, -1.0).y, -6.0);
}

TEST(PAR_LINE_2D, Rotate_CounterClockwise)
{
    PAR_LINE_2D line({1, 2}, {4, 2});
    line.Rotate({1, 2}, c_dQuarter);
    EXPECT_EQ(At(line, 0.0).x, 1.0);
    EXPECT_NEAR(At(line, 1.0).x, 1.0, 1e-15);
    EXPECT_NEAR(At(line, 1.0).y, 5.0, 1e-15);
    line.Rotate({1, 2}, -2.0 * c_dQuarter);
    EXPECT_NEAR(At(line, 1.0).y, -1.0, 1e-15);
}

// Far from the origin the end of a turned line is no place to count from: a large parameter would show how
// it was rounded.
TEST(PAR_LINE_2D, calcPt_FarAlongATurnedLine)
{
    const PNT_2D start(500000.3, 4000000.7);
    const PNT_2D end(500000.83, 4000001.1);
    PAR_LINE_2D line(start, end);
    line.Rotate(start, -c_dQuarter);
    EXPECT_NEAR(At(line, 1e6).x, start.x + 1e6 * (end.y - start.y), 1e-8);
    EXPECT_NEAR(At(line, 1e6).y, start.y - 1e6 * (end.x - start.x), 1e-8);
}

TEST(PAR_LINE_2D, Rotate_AboutAnotherPlace)
{
    PAR_LINE_2D line({1, 0}, {2, 0});
    line.Rotate({0, 0}, c_dQuarter);
    EXPECT_NEAR(At(line, 0.0).y, 1.0, 1e-15);
    EXPECT_NEAR(At(line, 1.0).y, 2.0, 1e-15);
    EXPECT_NEAR(line.length(), 1.0, 1e-15);
}
