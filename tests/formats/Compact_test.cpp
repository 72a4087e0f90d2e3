// Compact coordinates: truncation, saturation, not-a-number, and back.

#include <formats/Compact.h>

#include <gtest/gtest.h>

namespace
{

constexpr std::int32_t c_nMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t c_nMax = std::numeric_limits<std::int32_t>::max();
constexpr double c_dNan = std::numeric_limits<double>::quiet_NaN();
constexpr double c_dInf = std::numeric_limits<double>::infinity();

TEST(Compact, SaturateToInt32_TruncatesTowardZero)
{
    EXPECT_EQ(SaturateToInt32(-15.44), -15);
    EXPECT_EQ(SaturateToInt32(15.99), 15);
    EXPECT_EQ(SaturateToInt32(-0.9), 0);
}

TEST(Compact, SaturateToInt32_StopsAtTheEnds)
{
    EXPECT_EQ(SaturateToInt32(2147483647.0), c_nMax);
    EXPECT_EQ(SaturateToInt32(2147483647.9), c_nMax);
    EXPECT_EQ(SaturateToInt32(2147483648.0), c_nMax);
    EXPECT_EQ(SaturateToInt32(2147483646.9), c_nMax - 1);
    EXPECT_EQ(SaturateToInt32(-2147483648.0), c_nMin);
    EXPECT_EQ(SaturateToInt32(-2147483648.9), c_nMin);
    EXPECT_EQ(SaturateToInt32(-2147483647.9), c_nMin + 1);
    EXPECT_EQ(SaturateToInt32(1e308), c_nMax);
    EXPECT_EQ(SaturateToInt32(-c_dInf), c_nMin);
    EXPECT_EQ(SaturateToInt32(c_dNan), 0);
    EXPECT_EQ(SaturateToInt32(std::int64_t{1} << 40), c_nMax);
    EXPECT_EQ(SaturateToInt32(-(std::int64_t{1} << 40)), c_nMin);
    EXPECT_EQ(SaturateToInt32(std::int64_t{-7}), -7);
}

TEST(Compact, SaturateToFloat_StopsAtTheLargestFinite)
{
    constexpr float c_fMax = std::numeric_limits<float>::max();
    EXPECT_EQ(SaturateToFloat(500000.123456), 500000.125F);
    EXPECT_EQ(SaturateToFloat(1e39), c_fMax);
    EXPECT_EQ(SaturateToFloat(-1e39), -c_fMax);
    EXPECT_EQ(SaturateToFloat(c_dInf), c_fMax);
    EXPECT_EQ(SaturateToFloat(-c_dInf), -c_fMax);
    EXPECT_EQ(SaturateToFloat(c_dNan), 0.0F);
}

TEST(Compact, CompactFromCoord_AgainstTheRoundedOrigin)
{
    EXPECT_EQ(CompactFromCoord(500000.123456, 500000.125F), -15);
    EXPECT_DOUBLE_EQ(CoordFromCompact(-15, 500000.125F), 500000.1235);
    EXPECT_EQ(CompactFromCoord(214748.3648, 0.0F), c_nMax);
    EXPECT_EQ(CompactFromCoord(-214748.3649, 0.0F), c_nMin);
    EXPECT_EQ(CompactFromCoord(c_dNan, 0.0F), 0);
    EXPECT_EQ(CompactFromCoord(1.0, std::numeric_limits<float>::max()), c_nMin);
}

TEST(Compact, WrapAdd_GoesRound)
{
    EXPECT_EQ(WrapAdd(c_nMax, 1), c_nMin);
    EXPECT_EQ(WrapAdd(-1, 1), 0);
}

} // namespace
