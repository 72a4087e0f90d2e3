#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>

#include <gtest/gtest.h>

using zor::geom::PNT_2D;
using zor::geom::RECT_2D;

TEST(PNT_2D, Constructors)
{
    EXPECT_EQ(PNT_2D(1.5, -2.0).x, 1.5);
    EXPECT_EQ(PNT_2D(1.5, -2.0).y, -2.0);
    EXPECT_EQ(PNT_2D().x, 1.7e200);
    EXPECT_EQ(PNT_2D().y, 1.7e200);
}

TEST(PNT_2D, dist_square_IsSymmetric)
{
    EXPECT_EQ(PNT_2D(1.0, 2.0).dist_square(PNT_2D(4.0, 6.0)), 25.0);
    EXPECT_EQ(PNT_2D(4.0, 6.0).dist_square(PNT_2D(1.0, 2.0)), 25.0);
    EXPECT_EQ(PNT_2D(4.0, 6.0).dist_square(PNT_2D(4.0, 6.0)), 0.0);
}

TEST(RECT_2D, Constructors)
{
    const RECT_2D rect(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(rect.xmin, 1.0);
    EXPECT_EQ(rect.ymin, 2.0);
    EXPECT_EQ(rect.xmax, 3.0);
    EXPECT_EQ(rect.ymax, 4.0);
    EXPECT_EQ(RECT_2D().xmin, 1.7e200);
    EXPECT_EQ(RECT_2D().ymax, 1.7e200);
}
