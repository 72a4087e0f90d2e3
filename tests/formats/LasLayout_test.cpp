#include <formats/LasLayout.h>

#include <gtest/gtest.h>

TEST(LasLayout, IsColorTaken_LaterFormatsAreNot_Kept)
{
    for (unsigned n = 0; n < 256; ++n)
        EXPECT_EQ(n == 2 || n == 3 || n == 5, LasLayout::IsColorTaken(n)) << n;
}

TEST(LasLayout, HasColor)
{
    for (unsigned n = 0; n < 256; ++n)
        EXPECT_EQ(n == 2 || n == 3 || n == 5 || n == 7 || n == 8 || n == 10, LasLayout::HasColor(n)) << n;
}

// A colour lies within its point.
TEST(LasLayout, Formats_ColorsLieInThePnt)
{
    for (const CLasFormat& format : LasLayout::c_aFormats)
        EXPECT_LE(format.nPosColor + 6, format.nPntSize);
}

TEST(LasLayout, GetText)
{
    const auto TextOf = [](const std::string& sBytes) {
        return LasLayout::GetText(reinterpret_cast<const unsigned char*>(sBytes.data()),
                                  {1, sBytes.size() - 1});
    };
    EXPECT_EQ("abc", TextOf("-abc"));
    EXPECT_EQ("a b", TextOf(std::string("-a b  \0c", 8)));
    EXPECT_EQ("a?b?", TextOf("-a\nb\xe4"));
    EXPECT_EQ("", TextOf("-   "));
}
