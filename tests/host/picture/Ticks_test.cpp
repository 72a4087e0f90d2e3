// Marks on scales.
#include <host/picture/Ticks.h>

#include <gtest/gtest.h>

namespace zorcld
{

namespace
{

std::vector<std::string> LabelsOf(const std::vector<CTick>& vecTicks)
{
    std::vector<std::string> vecLabels;
    for (const CTick& tick : vecTicks)
        vecLabels.push_back(tick.sLabel);
    return vecLabels;
}

using TLabels = std::vector<std::string>;

} // namespace

TEST(Ticks, RoundDown_OneTwoFive)
{
    EXPECT_DOUBLE_EQ(RoundDown(1.0), 1.0);
    EXPECT_DOUBLE_EQ(RoundDown(1.99), 1.0);
    EXPECT_DOUBLE_EQ(RoundDown(4.9), 2.0);
    EXPECT_DOUBLE_EQ(RoundDown(9.9), 5.0);
    EXPECT_DOUBLE_EQ(RoundDown(7000.0), 5000.0);
    EXPECT_DOUBLE_EQ(RoundDown(0.03), 0.02);
}

TEST(Ticks, MakeTicks_EndsIncludedAndDecimalsOfTheStep)
{
    EXPECT_EQ(LabelsOf(MakeTicks(0.0, 10.0, 5.0)), (TLabels{"0", "5", "10"}));
    EXPECT_EQ(LabelsOf(MakeTicks(-0.3, 0.21, 0.2)), (TLabels{"-0.2", "0.0", "0.2"}));
    EXPECT_TRUE(MakeTicks(0.1, 0.9, 1.0).empty());
}

// A step lost in the size of the numbers would never arrive.
TEST(Ticks, MakeTicks_EndsWhateverTheStep)
{
    EXPECT_LE(MakeTicks(1e17, 1e17 + 1e6, 0.5).size(), 1000U);
}

} // namespace zorcld
