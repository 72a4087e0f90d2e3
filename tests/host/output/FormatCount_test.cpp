// Numbers as messages show them.
#include <host/output/FormatCount.h>

#include <gtest/gtest.h>

#include <limits>

namespace zorcld
{

TEST(FormatCount, OneIsSingular)
{
    EXPECT_EQ(FormatCount(1, "point"), "1 point");
    for (const std::int64_t nCount : {0, 2, 11, 21, -1})
        EXPECT_EQ(FormatCount(nCount, "point"), std::to_string(nCount) + " points");
}

TEST(FormatCount, DigitsInGroupsOfThree)
{
    EXPECT_EQ(GroupDigits(999), "999");
    EXPECT_EQ(GroupDigits(1000), "1 000");
    EXPECT_EQ(GroupDigits(1234567), "1 234 567");
    EXPECT_EQ(GroupDigits(-1000), "-1 000");
    EXPECT_EQ(GroupDigits(std::numeric_limits<std::int64_t>::min()), "-9 223 372 036 854 775 808");
    EXPECT_EQ(FormatCount(1000000, "corner"), "1 000 000 corners");
}

} // namespace zorcld
