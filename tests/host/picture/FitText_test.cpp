// Texts that have to fit.
#include <host/picture/FitText.h>
#include <host/picture/Ticks.h>

#include <gtest/gtest.h>

namespace zorcld
{

namespace
{

/// Every character one wide.
double CountCharacters(const std::string& sText)
{
    double dNum = 0.0;
    for (const char c : sText)
        dNum += (static_cast<unsigned char>(c) & 0xC0U) != 0x80 ? 1.0 : 0.0;
    return dNum;
}

std::string Fit(const std::string& sText, double dMaxWidth, enumCut eCut)
{
    return FitText(sText, dMaxWidth, eCut, CountCharacters);
}

} // namespace

TEST(FitText, Long_IsCutWithAnEllipsis)
{
    EXPECT_EQ(Fit("scan.laz", 8.0, Cut_Middle), "scan.laz");
    EXPECT_EQ(Fit("a long name.laz", 8.0, Cut_Middle), "a lo\u2026laz");
    EXPECT_EQ(Fit("a long name", 7.0, Cut_End), "a long\u2026");
    EXPECT_EQ(Fit("a long name", 1.0, Cut_End), "\u2026");
    EXPECT_EQ(Fit("a long name", 0.5, Cut_End), "");
    EXPECT_EQ(Fit("", 0.0, Cut_End), "");
}

TEST(FitText, Numbers_AreNotCut)
{
    const std::string sText = "heights \u00d7 10, 5 358 points, all";
    EXPECT_EQ(Fit(sText, 23.0, Cut_End), "heights \u00d7 10, 5 358 po\u2026");
    EXPECT_EQ(Fit(sText, 19.0, Cut_End), "heights \u00d7 10, \u2026"); // not "5 358"
    EXPECT_EQ(Fit(sText, 16.0, Cut_End), "heights \u00d7 10, \u2026"); // not "5"
    EXPECT_EQ(Fit(sText, 12.0, Cut_End), "heights \u00d7 \u2026");
    EXPECT_EQ(Fit("1.5e+05 units", 5.0, Cut_End), "\u2026");
}

TEST(FitText, Characters_AreNotCutInTwo)
{
    EXPECT_EQ(Fit("\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc", 4.0, Cut_End), "\u00e4\u00f6\u00fc\u2026");
    EXPECT_EQ(Fit("\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc", 3.0, Cut_Middle), "\u00e4\u2026\u00fc");
}

TEST(FormatTick, LongNumbers_ArePowersOfTen)
{
    EXPECT_EQ(FormatTick(1234567.5, 1), "1234567.5");
    EXPECT_EQ(FormatTick(3.4e38, 3), "3.4e+38");
}

} // namespace zorcld
