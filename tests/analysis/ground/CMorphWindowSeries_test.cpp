#include <analysis/ground/CMorphWindowSeries.h>

#include <gtest/gtest.h>

#include <vector>

namespace
{

std::vector<CMorphWindow> CollectWindows(const CMorphParams& params)
{
    CMorphWindowSeries series(params);
    std::vector<CMorphWindow> vecWindows;
    CMorphWindow window;
    while (vecWindows.size() < 1000 && series.FindNext(window))
        vecWindows.push_back(window);
    return vecWindows;
}

} // namespace

TEST(CMorphWindowSeries, FindNext_ExponentialPastLargestSize)
{
    const auto vecWindows = CollectWindows({20, 1.0F, 3.0F, 0.5F, 1.0F, 2.0F, true});
    ASSERT_EQ(vecWindows.size(), 5U);
    const float sizes[] = {3.0F, 5.0F, 9.0F, 17.0F, 33.0F};
    const float diffs[] = {0.5F, 2.5F, 3.0F, 3.0F, 3.0F};
    for (std::size_t i = 0; i < 5; ++i)
    {
        EXPECT_EQ(vecWindows[i].fSize, sizes[i]);
        EXPECT_EQ(vecWindows[i].fMaxDiff, diffs[i]);
    }
}

TEST(CMorphWindowSeries, FindNext_Linear)
{
    const auto vecWindows = CollectWindows({12, 0.1F, 10.0F, 0.5F, 0.5F, 3.0F, false});
    ASSERT_EQ(vecWindows.size(), 4U);
    EXPECT_EQ(vecWindows[0].fSize, 3.5F);
    EXPECT_EQ(vecWindows[3].fSize, 12.5F);
    EXPECT_EQ(vecWindows[3].fMaxDiff, 0.1F * 3.0F * 0.5F + 0.5F);
}

TEST(CMorphWindowSeries, FindNext_NoneWithoutLargestSize)
{
    EXPECT_TRUE(CollectWindows({0, 1.0F, 3.0F, 0.5F, 1.0F, 2.0F, true}).empty());
    EXPECT_TRUE(CollectWindows({-7, 1.0F, 3.0F, 0.5F, 1.0F, 2.0F, true}).empty());
}

TEST(CMorphWindowSeries, FindNext_EndsWhereNothingGrows)
{
    EXPECT_EQ(CollectWindows({20, 1.0F, 3.0F, 0.5F, 1.0F, 1.0F, true}).size(), 1U);  // base 1
    EXPECT_EQ(CollectWindows({20, 1.0F, 3.0F, 0.5F, 1.0F, 0.5F, true}).size(), 1U);  // shrinks
    EXPECT_EQ(CollectWindows({20, 1.0F, 3.0F, 0.5F, 0.0F, 2.0F, true}).size(), 1U);  // no size
    EXPECT_EQ(CollectWindows({20, 1.0F, 3.0F, 0.5F, -1.0F, 2.0F, true}).size(), 1U); // below 0
    EXPECT_EQ(CollectWindows({20, 1.0F, 3.0F, 0.5F, 1.0F, 0.0F, false}).size(), 1U);
    EXPECT_EQ(CollectWindows({20, 1.0F, 3.0F, 0.5F, 1.0F, -2.0F, false}).size(), 1U);
    EXPECT_EQ(CollectWindows({5, 1.0F, 3.0F, 0.5F, -1.0F, -2.0F, false}).size(),
              2U); // 3, 7: both below 0 grow
}
