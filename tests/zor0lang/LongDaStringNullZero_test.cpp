#include <zor0lang/LongDaStringNullZero.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using zor::LongDaStringNullZero;

constexpr long c_nMax = std::numeric_limits<long>::max();
constexpr long c_nMin = std::numeric_limits<long>::min();

TEST(LongDaStringNullZero, ReadsDecimalIntegers)
{
    EXPECT_EQ(0, LongDaStringNullZero("0"));
    EXPECT_EQ(598, LongDaStringNullZero("598"));
    EXPECT_EQ(7, LongDaStringNullZero("007"));
    EXPECT_EQ(3, LongDaStringNullZero(" \t\n\v\f\r3"));
}

TEST(LongDaStringNullZero, TakesOneSign)
{
    EXPECT_EQ(-9999, LongDaStringNullZero("-9999"));
    EXPECT_EQ(5, LongDaStringNullZero("+5"));
    EXPECT_EQ(0, LongDaStringNullZero("+-5"));
    EXPECT_EQ(0, LongDaStringNullZero("--5"));
    EXPECT_EQ(0, LongDaStringNullZero("- 5"));
}

TEST(LongDaStringNullZero, StopsBehindTheDigits)
{
    EXPECT_EQ(12, LongDaStringNullZero("12.9"));
    EXPECT_EQ(1, LongDaStringNullZero("1e5"));
    EXPECT_EQ(0, LongDaStringNullZero("0x10"));
    EXPECT_EQ(3, LongDaStringNullZero("3\r\n"));
}

TEST(LongDaStringNullZero, IsZeroWithoutNumber)
{
    EXPECT_EQ(0, LongDaStringNullZero(""));
    EXPECT_EQ(0, LongDaStringNullZero("-"));
    EXPECT_EQ(0, LongDaStringNullZero("abc"));
    EXPECT_EQ(0, LongDaStringNullZero("inf"));
}

TEST(LongDaStringNullZero, Saturates)
{
    EXPECT_EQ(c_nMax, LongDaStringNullZero(std::to_string(c_nMax)));
    EXPECT_EQ(c_nMin, LongDaStringNullZero(std::to_string(c_nMin)));
    EXPECT_EQ(c_nMax, LongDaStringNullZero("9223372036854775808"));
    EXPECT_EQ(c_nMin, LongDaStringNullZero("-9223372036854775809"));
    EXPECT_EQ(c_nMax, LongDaStringNullZero(std::string(1000, '9')));
    EXPECT_EQ(c_nMin, LongDaStringNullZero("-" + std::string(1000, '9')));
}

} // namespace
