#include <formats/CWktNode.h>

#include <gtest/gtest.h>

#include <string>

namespace
{

TEST(CWktNode, Parse_TextsNumbersWordsAndParts)
{
    const std::vector<CWktNode> vecNodes =
        ParseWktNodes(" Unit [ \"a \"\"b\"\"\" , 0.5e1 ,\n-3, EAST, Id(\"X\",7) ] , OTHER[]");
    ASSERT_EQ(2U, vecNodes.size());
    const CWktNode& unit = vecNodes.front();
    EXPECT_EQ("UNIT", unit.sKeyword);
    EXPECT_EQ("a \"b\"", unit.GetName());
    EXPECT_EQ((std::vector<double>{5.0, -3.0}), unit.vecNumbers);
    EXPECT_EQ(std::vector<std::string>{"EAST"}, unit.vecWords);
    ASSERT_NE(nullptr, unit.Find("ID"));
    EXPECT_EQ(7.0, unit.Find("ID")->vecNumbers.front());
    EXPECT_EQ(nullptr, unit.Find("AXIS"));
    EXPECT_TRUE(vecNodes.back().Is("OTHER"));
    EXPECT_EQ("", vecNodes.back().GetName());
}

TEST(CWktNode, Parse_WhatIsCutOffIsTakenAsFarAsItGoes)
{
    const std::vector<CWktNode> vecNodes = ParseWktNodes("A[\"x\",B[1],C[2");
    ASSERT_EQ(1U, vecNodes.size());
    EXPECT_EQ("x", vecNodes[0].GetName());
    ASSERT_EQ(2U, vecNodes[0].vecNodes.size());
    EXPECT_TRUE(vecNodes[0].vecNodes[1].Is("C"));
}

TEST(CWktNode, Parse_NothingOfWhatIsNoText)
{
    for (const char* pText : {"", " ", "A", "A,", "[", "]", "\"", ",,,", "1", "A]", "\x80\xff"})
        EXPECT_TRUE(ParseWktNodes(pText).empty()) << pText;
}

TEST(CWktNode, Parse_DepthIsBounded)
{
    std::string sDeep;
    for (int i = 0; i < 100000; ++i)
        sDeep += "A[";
    const std::vector<CWktNode> vecNodes = ParseWktNodes(sDeep);
    ASSERT_EQ(1U, vecNodes.size());
    int nDepth = 0;
    for (const CWktNode* pNode = &vecNodes[0]; pNode != nullptr; pNode = pNode->Find("A"))
        ++nDepth;
    EXPECT_LE(nDepth, 41);
}

} // namespace
