#include <formats/ParseDouble.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace
{

double Parse(const std::string& sWord, bool bWholeWanted = true)
{
    bool bWhole = !bWholeWanted;
    const double d = ParseDouble(sWord, bWhole);
    EXPECT_EQ(bWholeWanted, bWhole) << sWord;
    return d;
}

TEST(ParseDouble, Numbers_WithAndWithoutASign)
{
    EXPECT_EQ(1.5, Parse("1.5"));
    EXPECT_EQ(1.5, Parse("+1.5"));
    EXPECT_EQ(-2500.0, Parse("-2.5e3"));
}

TEST(ParseDouble, WhatIsNoNumber_IsNotWhole)
{
    EXPECT_EQ(0.0, Parse("", false));
    EXPECT_EQ(0.0, Parse("+", false));
    EXPECT_EQ(0.0, Parse("x1", false));
    EXPECT_EQ(1.0, Parse("1,5", false));
}

TEST(ParseDouble, TooLarge_IsInfinite)
{
    for (const std::string& sWord : {std::string("1e999"), std::string("0.001e+999"), std::string("7.5E400"),
                                     '1' + std::string(400, '0'), '1' + std::string(400, '0') + ".5e-20",
                                     std::string("1e99999999999999999999")})
    {
        EXPECT_EQ(std::numeric_limits<double>::infinity(), Parse(sWord)) << sWord;
        EXPECT_EQ(-std::numeric_limits<double>::infinity(), Parse('-' + sWord)) << sWord;
    }
}

TEST(ParseDouble, TooSmall_IsZeroAndKeepsItsSign)
{
    for (const std::string& sWord :
         {std::string("1e-999"), std::string("1000.5E-999"), "0." + std::string(400, '0') + '1',
          "0." + std::string(400, '0') + "1e20", std::string("1e-99999999999999999999")})
    {
        EXPECT_EQ(0.0, Parse(sWord)) << sWord;
        EXPECT_FALSE(std::signbit(Parse(sWord))) << sWord;
        EXPECT_EQ(0.0, Parse('-' + sWord)) << sWord;
        EXPECT_TRUE(std::signbit(Parse('-' + sWord))) << sWord;
    }
}

} // namespace
