#include <zor0lang/DoubleDaString.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace
{

using zor::DoubleDaString;

constexpr double c_dInf = std::numeric_limits<double>::infinity();

TEST(DoubleDaString, ReadsDecimalNumbers)
{
    EXPECT_EQ(0.0, DoubleDaString("0"));
    EXPECT_EQ(12.5, DoubleDaString("12.5"));
    EXPECT_EQ(0.5, DoubleDaString(".5"));
    EXPECT_EQ(5.0, DoubleDaString("5."));
    EXPECT_EQ(1e5, DoubleDaString("1e5"));
    EXPECT_EQ(1e-5, DoubleDaString("1E-5"));
    EXPECT_EQ(1726.64599609375, DoubleDaString("1.726645996093750000e+03"));
    EXPECT_EQ(3788627.828, DoubleDaString("3788627.828"));
}

TEST(DoubleDaString, TakesOneSign)
{
    EXPECT_EQ(-1.5, DoubleDaString("-1.5"));
    EXPECT_EQ(1.5, DoubleDaString("+1.5"));
    EXPECT_TRUE(std::signbit(DoubleDaString("-0")));
    EXPECT_EQ(0.0, DoubleDaString("+-1"));
    EXPECT_EQ(0.0, DoubleDaString("--1"));
    EXPECT_EQ(0.0, DoubleDaString("-+1"));
    EXPECT_EQ(0.0, DoubleDaString("- 1"));
}

TEST(DoubleDaString, SkipsWhiteSpaceBeforeTheNumber)
{
    EXPECT_EQ(7.0, DoubleDaString(" \t\n\v\f\r7"));
    EXPECT_EQ(0.0, DoubleDaString("\xA0"
                                  "7"));
}

TEST(DoubleDaString, TakesTheLongestNumber)
{
    EXPECT_EQ(1.5, DoubleDaString("1.5 2"));
    EXPECT_EQ(1.5, DoubleDaString("1.5.2"));
    EXPECT_EQ(1.0, DoubleDaString("1e"));
    EXPECT_EQ(1.0, DoubleDaString("1e+"));
    EXPECT_EQ(1.0, DoubleDaString("1,5"));
    EXPECT_EQ(0.0, DoubleDaString("0x10")); // decimal only
    EXPECT_EQ(30.0, DoubleDaString("30\r\n"));
}

TEST(DoubleDaString, IsZeroWithoutNumber)
{
    EXPECT_EQ(0.0, DoubleDaString(""));
    EXPECT_EQ(0.0, DoubleDaString(" "));
    EXPECT_EQ(0.0, DoubleDaString("-"));
    EXPECT_EQ(0.0, DoubleDaString("."));
    EXPECT_EQ(0.0, DoubleDaString("e5"));
    EXPECT_EQ(0.0, DoubleDaString("x1"));
    EXPECT_EQ(0.0, DoubleDaString(std::string("\0001", 2)));
}

TEST(DoubleDaString, ReadsInfinityAndNotANumber)
{
    EXPECT_EQ(c_dInf, DoubleDaString("inf"));
    EXPECT_EQ(-c_dInf, DoubleDaString(" -INFINITY"));
    EXPECT_TRUE(std::isnan(DoubleDaString("nan")));
    EXPECT_TRUE(std::isnan(DoubleDaString("-NaN")));
}

TEST(DoubleDaString, IsInfiniteBeyondTheRange)
{
    EXPECT_EQ(c_dInf, DoubleDaString("1e309"));
    EXPECT_EQ(-c_dInf, DoubleDaString("-2e308"));
    EXPECT_EQ(c_dInf, DoubleDaString("1e99999999999999999999999"));
    EXPECT_EQ(c_dInf, DoubleDaString("000.00001e400"));
    EXPECT_EQ(c_dInf, DoubleDaString(std::string(400, '9')));
    EXPECT_EQ(c_dInf, DoubleDaString(std::string(400, '9') + ".5"));
    EXPECT_EQ(c_dInf, DoubleDaString(std::string(700, '9') + "e-300"));
    EXPECT_EQ(std::numeric_limits<double>::max(), DoubleDaString("1.7976931348623157e308"));
}

TEST(DoubleDaString, IsZeroOfItsSignWhereTooSmall)
{
    EXPECT_EQ(0.0, DoubleDaString("1e-400"));
    EXPECT_EQ(0.0, DoubleDaString("1e-99999999999999999999999"));
    EXPECT_EQ(0.0, DoubleDaString("0." + std::string(400, '0') + "1"));
    EXPECT_EQ(0.0, DoubleDaString("." + std::string(700, '0') + "1e300"));
    EXPECT_EQ(0.0, DoubleDaString("1234567e-400"));
    EXPECT_TRUE(std::signbit(DoubleDaString("-1e-400")));
    EXPECT_EQ(std::numeric_limits<double>::denorm_min(), DoubleDaString("4.9e-324"));
}

TEST(DoubleDaString, DoesNotDependOnTheLocale)
{
    const std::string sBefore = std::setlocale(LC_ALL, nullptr);
    for (const char* sLocale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) // those that exist here
    {
        std::setlocale(LC_ALL, sLocale);
        EXPECT_EQ(1.5, DoubleDaString("1.5"));
        EXPECT_EQ(1.0, DoubleDaString("1,5"));
    }
    std::setlocale(LC_ALL, sBefore.c_str());
}

} // namespace
