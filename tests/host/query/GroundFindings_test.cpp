#include <host/query/GroundFindings.h>

#include <gtest/gtest.h>

namespace
{

using zorcld::FindOddGround;

void ExpectIn(const std::string& sPart, const std::string& sText)
{
    EXPECT_NE(sText.find(sPart), std::string::npos) << "'" << sText << "' lacks: " << sPart;
}

TEST(FindOddGround, ShareOfGround_NotedBelow2AndAbove99Percent)
{
    EXPECT_EQ(FindOddGround({0, 0, 0.0}), "");
    EXPECT_EQ(FindOddGround({1000, 20, 1.0}), "");
    EXPECT_EQ(FindOddGround({1000, 990, 1.0}), "");
    ExpectIn("hardly any point is ground", FindOddGround({1000, 19, 1.0}));
    ExpectIn("nearly every point is ground", FindOddGround({1000, 991, 1.0}));
}

TEST(FindOddGround, Spacing_NotedWhereWindowsHoldTooFewOrTooMany)
{
    EXPECT_EQ(FindOddGround({1000, 500, 0.0}), ""); // not known
    EXPECT_EQ(FindOddGround({1000, 500, 0.03}), "");
    EXPECT_EQ(FindOddGround({1000, 500, 11.0}), "");
    ExpectIn("degrees", FindOddGround({1000, 500, 0.029}));
    ExpectIn("too sparse", FindOddGround({1000, 500, 11.1}));
    ExpectIn("too sparse", FindOddGround({1000, 1000, 30.0})); // the cause, not what comes of it
}

} // namespace
