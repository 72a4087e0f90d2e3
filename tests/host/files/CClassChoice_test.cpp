// --class and --no-class: which classes are kept.
#include <host/files/CClassChoice.h>
#include <host/output/CFailure.h>

#include <gtest/gtest.h>

namespace zorcld
{

namespace
{

std::string Choose(const std::vector<std::string>& vecClasses,
                   const std::vector<std::string>& vecNoClasses = {})
{
    return CClassChoice(CClassOptions{vecClasses, vecNoClasses}).Format();
}

} // namespace

TEST(CClassChoice, NoOption_AllClasses)
{
    EXPECT_FALSE(CClassChoice(CClassOptions{}).IsAsked());
    EXPECT_FALSE(CClassChoice().IsAsked());
    for (int n = 0; n < 256; ++n)
        EXPECT_TRUE(CClassChoice().IsKept(static_cast<std::uint8_t>(n))) << n;
}

TEST(CClassChoice, NumbersNamesAndRanges)
{
    EXPECT_EQ(Choose({"2"}), "class 2 ground");
    EXPECT_EQ(Choose({"2,6"}), "classes 2 ground, 6 building");
    EXPECT_EQ(Choose({"building,Ground"}), "classes 2 ground, 6 building");
    EXPECT_EQ(Choose({"2", "6"}), "classes 2 ground, 6 building");
    EXPECT_EQ(Choose({"vegetation"}), "classes 3 low vegetation, 4 medium vegetation, 5 high vegetation");
    EXPECT_EQ(Choose({"64-255"}), "classes 64 to 255");
    EXPECT_EQ(Choose({"0-63,70,72"}), "classes 0 to 63, 70, 72");
    EXPECT_TRUE(CClassChoice(CClassOptions{{"255"}, {}}).IsKept(255));
}

TEST(CClassChoice, NoClass_TakesAway)
{
    EXPECT_EQ(Choose({}, {"7,18"}), "all but classes 7 low noise, 18 high noise");
    EXPECT_EQ(Choose({}, {"noise"}), "all but classes 7 low noise, 18 high noise");
    EXPECT_EQ(Choose({"vegetation"}, {"4"}), "classes 3 low vegetation, 5 high vegetation");
}

TEST(CClassChoice, WrongUsage)
{
    for (const char* pWrong :
         {"", "2,", ",2", "256", "-1", "3-2", "2-", "2-256", "grass", "2 6", "1.5", "+2"})
    {
        EXPECT_THROW(Choose({pWrong}), CUsageError) << pWrong;
        EXPECT_THROW(Choose({}, {pWrong}), CUsageError) << pWrong;
    }
    EXPECT_THROW(Choose({"2"}, {"ground"}), CUsageError);
}

} // namespace zorcld
