// The classes of points of LAS files and their names.
#include <formats/LasClasses.h>

#include <gtest/gtest.h>

namespace
{

TLasClasses Classes(std::initializer_list<std::size_t> classes)
{
    TLasClasses set;
    for (const std::size_t n : classes)
        set.set(n);
    return set;
}

} // namespace

TEST(LasClasses, Names_OfTheStandard)
{
    EXPECT_EQ(GetLasClassName(2), "ground");
    EXPECT_EQ(GetLasClassName(6), "building");
    EXPECT_EQ(GetLasClassName(5), "high vegetation");
    EXPECT_EQ(GetLasClassName(22), "temporal exclusion");
    EXPECT_EQ(GetLasClassName(23), "");
    EXPECT_EQ(GetLasClassName(34), ""); // 32 above one that has a name
    EXPECT_EQ(GetLasClassName(255), "");
    EXPECT_EQ(FormatLasClass(9), "9 water");
    EXPECT_EQ(FormatLasClass(64), "64");
}

// What is told as a name is understood as one, and stands for that class alone.
TEST(LasClasses, Find_EveryNameThatIsTold)
{
    for (std::size_t n = 0; n <= 22; ++n)
        EXPECT_EQ(FindLasClasses(GetLasClassName(static_cast<std::uint8_t>(n))), Classes({n})) << n;
}

TEST(LasClasses, Find_WhateverLettersAndHyphens)
{
    EXPECT_EQ(FindLasClasses("Ground"), Classes({2}));
    EXPECT_EQ(FindLasClasses("low_VEGETATION"), Classes({3}));
    EXPECT_EQ(FindLasClasses(" Low Point (Noise) "), Classes({7}));
    EXPECT_EQ(FindLasClasses("Wire - Guard (Shield)"), Classes({13}));
    EXPECT_EQ(FindLasClasses("Wire-Structure Connector"), Classes({16}));
    EXPECT_EQ(FindLasClasses("vegetation"), Classes({3, 4, 5}));
    EXPECT_EQ(FindLasClasses("noise"), Classes({7, 18}));
    for (const char* pNone : {"", "grund", "2", "-", "ground2"})
        EXPECT_TRUE(FindLasClasses(pNone).none()) << pNone;
}

TEST(LasClasses, List_NamesThatAreFound)
{
    const std::string sList = ListLasClassNames();
    EXPECT_EQ(sList.find("never-classified, "), 0U);
    EXPECT_NE(sList.find("temporal-exclusion, vegetation, noise, wire"), std::string::npos);
    EXPECT_EQ(sList.find("wire-guard-shield"), std::string::npos);
}
