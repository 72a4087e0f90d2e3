#include <formats/CByteReader.h>
#include <formats/NativeFacts.h>
#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using namespace NativeBytes;

CNativeFacts Find(const std::string& sBytes)
{
    const CMemFile file(sBytes);
    CByteReader reader(CFilePtr(std::fopen(file.GetPath(), "rb")));
    return FindNativeFacts(reader);
}

/// Up to the root node, of four points.
std::string Head(bool bColor = false)
{
    return Start(bColor ? 1 : 0, 7) + Count(4, {1.0F, 2.0F, 3.0F}) + SomePnts(4, bColor) + SomeTreeHeader();
}

TEST(NativeFacts, WholeFile)
{
    for (const bool bColor : {false, true})
    {
        const std::string sTree =
            Masks(0x83, 0x81) + Leaf(1, 0) + Masks(0x10, 0x10) + Leaf(2, 1) + Leaf(1, 3);
        const std::string sBytes = Head(bColor) + sTree;
        const CNativeFacts facts = Find(sBytes);
        EXPECT_TRUE(facts.IsWhole());
        EXPECT_EQ("", facts.header.FindCause());
        EXPECT_EQ(7, facts.header.nVersion);
        EXPECT_EQ(bColor ? 1 : 0, facts.header.nType);
        EXPECT_EQ((std::array<float, 3>{1.0F, 2.0F, 3.0F}), facts.header.afOrg);
        EXPECT_EQ(4, facts.nNumHeld);
        EXPECT_EQ(4, facts.nNumInTree);
        EXPECT_EQ(3, Find(sBytes + "abc").nNumBehind);
        EXPECT_FALSE(Find(sBytes + "abc").IsWhole());
        for (std::size_t n = 0; n < sBytes.size(); ++n)
            EXPECT_FALSE(Find(sBytes.substr(0, n)).IsWhole()) << n;
    }
}

// What is not usable counts for nothing: runs outside the array, runs that overlap, empty ones.
TEST(NativeFacts, UsableRuns)
{
    EXPECT_EQ(2, Find(Head() + Masks(7, 7) + Leaf(2, 0) + Leaf(2, 1) + Leaf(3, 2)).nNumInTree);
    EXPECT_EQ(4, Find(Head() + Masks(7, 7) + Leaf(2, 0) + Leaf(0, 2) + Leaf(2, 2)).nNumInTree);
    EXPECT_EQ(1, Find(Head() + Masks(3, 3) + Leaf(0xFFFFFFFFU, 1) + Leaf(1, 3)).nNumInTree);
    EXPECT_TRUE(Find(Head() + Masks(3, 3) + Leaf(9, 9) + Leaf(1, 3)).bTreeWhole);
}

TEST(NativeFacts, Depth)
{
    const auto chain = [](int nDepth)
    {
        std::string sTree;
        for (int i = 0; i < nDepth; ++i)
            sTree += Masks(1, 0);
        return Find(Head() + sTree + Masks(1, 1) + Leaf(4, 0));
    };
    EXPECT_TRUE(chain(20).IsWhole());
    EXPECT_FALSE(chain(21).bTreeWhole);
    EXPECT_EQ(0, chain(21).nNumInTree);
}

// What the octree says of its points, and whether it can be.
TEST(NativeFacts, BoxOfTheTree)
{
    const auto file = [](const Ref::CTree& tree)
    { return Start(0) + Count(4) + SomePnts(4, false) + TreeHeader(tree) + Masks(1, 1) + Leaf(4, 0); };
    const auto hasBox = [](const std::string& sBytes)
    {
        const CMemFile memFile(sBytes);
        CByteReader reader(CFilePtr(std::fopen(memFile.GetPath(), "rb")));
        const CNativeFacts facts = FindNativeFacts(reader);
        EXPECT_TRUE(facts.bTreeHeader);
        return HasBoxOfItsPnts(reader, facts);
    };
    Ref::CTree tree; // points from 0, 0, 0 to 3000, 30, -3
    tree.cube = {1500, 15, -1, 3000};
    tree.extent = {3000, 30, 3};
    EXPECT_TRUE(Find(file(tree)).IsWhole());
    EXPECT_TRUE(hasBox(file(tree)));
    Ref::CTree elsewhere = tree;
    elsewhere.cube.y = 16;
    EXPECT_TRUE(Find(file(elsewhere)).IsWhole());
    EXPECT_FALSE(hasBox(file(elsewhere)));
    for (std::size_t k = 0; k < 3; ++k)
    {
        Ref::CTree negative = tree;
        negative.extent[k] = -5000;
        EXPECT_FALSE(Find(file(negative)).IsWhole()) << k;
        EXPECT_FALSE(Find(file(negative)).treeHeader.IsPossible()) << k;
    }
    Ref::CTree edge = tree;
    edge.cube.edge = 2999;
    EXPECT_FALSE(Find(file(edge)).IsWhole());
}

TEST(NativeFacts, Causes)
{
    EXPECT_EQ("not a native cloud file: it has 4 bytes only",
              Find(c_sPrologue.substr(0, 4)).header.FindCause());
    EXPECT_EQ("its point type is 2, 0 and 1 are known", Find(Start(2)).header.FindCause());
    EXPECT_EQ("not a native cloud file: its point type is -1, 0 and 1 are known",
              Find("x" + Start(-1).substr(1)).header.FindCause());
    EXPECT_EQ("its origin is no finite number: it is damaged",
              Find(Start(0) + Count(1, {0, std::numeric_limits<float>::infinity(), 0})).header.FindCause());
    EXPECT_EQ("", Find(Start(1)).header.FindCause()); // never built
}

TEST(NativeFacts, Counts)
{
    EXPECT_EQ(0, Find(Start(0) + Count(-3)).nNumHeld);
    EXPECT_EQ(-3, Find(Start(0) + Count(-3)).header.nNumPnts);
    EXPECT_EQ(2, Find(Start(0) + Count(2000000000) + SomePnts(2, false) + "12345678901").nNumHeld);
    EXPECT_EQ(1, Find(Start(1) + Count(2) + SomePnts(2, true).substr(0, 29)).nNumHeld);
}

} // namespace
