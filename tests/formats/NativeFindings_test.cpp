#include <formats/NativeFacts.h>
#include <formats/NativeFindings.h>
#include <formats/NativeFormat.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

/// Facts of a file in which nothing is wrong.
CNativeFacts MakeFacts()
{
    CNativeFacts facts;
    facts.header.nSize = c_nNativeHeaderSize;
    facts.header.bPrologue = true;
    facts.header.nType = 0;
    facts.header.nNumPnts = 3;
    facts.nNumHeld = 3;
    facts.nNumInTree = 3;
    facts.bTreeWhole = true;
    return facts;
}

std::vector<std::string> ListCodes(const CNativeFacts& facts)
{
    std::vector<std::string> vecCodes;
    for (const CFinding& finding : FindNativeFindings(facts))
        vecCodes.emplace_back(finding.pCode);
    return vecCodes;
}

using TCodes = std::vector<std::string>;

} // namespace

TEST(NativeFindings, NothingOfAWholeFile)
{
    EXPECT_EQ(ListCodes(MakeFacts()), TCodes{});
}

TEST(NativeFindings, Counts)
{
    CNativeFacts facts = MakeFacts();
    facts.header.nNumPnts = 4;
    EXPECT_EQ(ListCodes(facts), TCodes{"native-count"});
    facts = MakeFacts();
    facts.nNumInTree = 2;
    EXPECT_EQ(ListCodes(facts), TCodes{"native-octree"});
    facts = MakeFacts();
    facts.header.bPrologue = false;
    EXPECT_EQ(ListCodes(facts), TCodes{"native-marks"});
    facts.header.nSize = c_nNativeHeaderSize - 1;
    EXPECT_EQ(ListCodes(facts), (TCodes{"native-marks", "native-empty"}));
    facts = MakeFacts();
    facts.header.nNumPnts = -1;
    facts.nNumHeld = 0;
    EXPECT_EQ(ListCodes(facts), TCodes{"native-count"});
}

TEST(NativeFindings, ExtentsThatNoPointsHave)
{
    CNativeFacts facts = MakeFacts();
    facts.bTreeHeader = true;
    facts.treeHeader.anExtent = {-10000, 20000, 35000};
    const std::vector<CFinding> vecFindings = FindNativeFindings(facts);
    ASSERT_EQ(vecFindings.size(), 1U);
    EXPECT_STREQ(vecFindings[0].pCode, "native-box");
    EXPECT_NE(vecFindings[0].sText.find(" -1 x 2 x 3.5 units"), std::string::npos) << vecFindings[0].sText;
    EXPECT_TRUE(vecFindings[0].bConvert);
}
