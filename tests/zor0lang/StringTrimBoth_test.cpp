#include <zor0lang/StringTrimBoth.h>

#include <gtest/gtest.h>

namespace
{

std::string Trimmed(std::string sText)
{
    zor::StringTrimBoth(sText);
    return sText;
}

TEST(StringTrimBoth, RemovesWhiteSpaceAtBothEnds)
{
    EXPECT_EQ("a", Trimmed("a"));
    EXPECT_EQ("a", Trimmed("  a"));
    EXPECT_EQ("a", Trimmed("a  "));
    EXPECT_EQ("a", Trimmed(" \t\n\v\f\ra \t\n\v\f\r"));
}

TEST(StringTrimBoth, KeepsWhiteSpaceInside)
{
    EXPECT_EQ("a \t\n b", Trimmed(" a \t\n b "));
}

TEST(StringTrimBoth, LeavesNothingOfWhiteSpaceOnly)
{
    EXPECT_EQ("", Trimmed(""));
    EXPECT_EQ("", Trimmed(" "));
    EXPECT_EQ("", Trimmed("\r\n"));
}

TEST(StringTrimBoth, OtherBytesAreText)
{
    EXPECT_EQ("\xA0", Trimmed(" \xA0 ")); // a blank in some locales only
    EXPECT_EQ(std::string(1, '\0'), Trimmed(std::string(" \0 ", 3)));
    EXPECT_EQ("\x1F", Trimmed("\x1F"));
}

} // namespace
