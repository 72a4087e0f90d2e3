#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>
#include <zor3geom/TPlanBox.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

using zor::geom::PNT_2D;
using zor::geom::RECT_2D;
using zor::geom::TPlanBox;

namespace
{

template <class T>
class TPlanBox_Numbers : public ::testing::Test
{
};
using TNumbers = ::testing::Types<double, float, std::int32_t, std::int64_t>;
TYPED_TEST_SUITE(TPlanBox_Numbers, TNumbers);

template <class T>
void ExpectBox(const TPlanBox<T>& box, T xmin, T ymin, T xmax, T ymax)
{
    EXPECT_EQ(box.xmin, xmin);
    EXPECT_EQ(box.ymin, ymin);
    EXPECT_EQ(box.xmax, xmax);
    EXPECT_EQ(box.ymax, ymax);
}

} // namespace

TYPED_TEST(TPlanBox_Numbers, Around_TakesThePlacesInAnyOrder)
{
    ExpectBox<TypeParam>(TPlanBox<TypeParam>::Around(3, -1, 1, 4), 1, -1, 3, 4);
    ExpectBox<TypeParam>(TPlanBox<TypeParam>::Around(1, 4, 3, -1), 1, -1, 3, 4);
}

TYPED_TEST(TPlanBox_Numbers, Contains_EdgesBelongToIt)
{
    const TPlanBox<TypeParam> box{1, 2, 5, 7};
    for (int x = 0; x <= 6; ++x)
        for (int y = 1; y <= 8; ++y)
            EXPECT_EQ(box.Contains(static_cast<TypeParam>(x), static_cast<TypeParam>(y)),
                      x >= 1 && x <= 5 && y >= 2 && y <= 7);
}

TYPED_TEST(TPlanBox_Numbers, Meets_TouchingCounts)
{
    const TPlanBox<TypeParam> box{1, 2, 5, 7};
    EXPECT_TRUE(box.Meets({5, 7, 9, 9}));
    EXPECT_TRUE(box.Meets({2, 3, 3, 4}));
    EXPECT_TRUE(box.Meets({0, 0, 9, 9}));
    EXPECT_FALSE(box.Meets({6, 2, 9, 7}));
    EXPECT_FALSE(box.Meets({1, 0, 5, 1}));
}

TYPED_TEST(TPlanBox_Numbers, Empty_HoldsNothingAndGrowsByAdd)
{
    TPlanBox<TypeParam> box = TPlanBox<TypeParam>::GetEmpty();
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_FALSE(box.Contains(0, 0));
    EXPECT_FALSE(box.Meets({-9, -9, 9, 9}));
    box.Add(3, -4);
    EXPECT_FALSE(box.IsEmpty());
    ExpectBox<TypeParam>(box, 3, -4, 3, -4);
    box.Extend({-1, 0, 2, 8});
    ExpectBox<TypeParam>(box, -1, -4, 3, 8);
    box.Extend(TPlanBox<TypeParam>::GetEmpty());
    ExpectBox<TypeParam>(box, -1, -4, 3, 8);
}

TYPED_TEST(TPlanBox_Numbers, GetGrown_ReachesFartherOnEverySide)
{
    ExpectBox<TypeParam>(TPlanBox<TypeParam>{1, 2, 5, 7}.GetGrown(3), -2, -1, 8, 10);
}

TEST(TPlanBox, NotANumber_IsNowhereAndAddsNothing)
{
    const double dNaN = std::nan("");
    TPlanBox<double> box{0.0, 0.0, 1.0, 1.0};
    EXPECT_FALSE(box.Contains(dNaN, 0.5));
    EXPECT_FALSE(box.Contains(PNT_2D(0.5, dNaN)));
    box.Add(dNaN, dNaN);
    ExpectBox(box, 0.0, 0.0, 1.0, 1.0);
    box.xmax = dNaN;
    EXPECT_TRUE(box.IsEmpty());
}

TEST(TPlanBox, RECT_2D_IsABox)
{
    const RECT_2D rect(1.0, 2.0, 3.0, 4.0);
    EXPECT_TRUE(rect.Contains(PNT_2D(3.0, 2.0)));
    EXPECT_TRUE(TPlanBox<double>({3.0, 4.0, 5.0, 6.0}).Meets(rect));
}
