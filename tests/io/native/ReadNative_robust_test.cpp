// Damaged native files: the value that the rules name, nothing outside the store, no endless work, and a
// cloud that can be used.

#include <tests/io/CheckLoaded.h>
#include <tests/support/CRandom.h>
#include <tests/support/RandomCld.h>

namespace
{

using namespace NativeBytes;

/// Small files of both types: two leaves; inner nodes two levels deep; one point.
std::vector<std::string> SmallFiles()
{
    std::vector<std::string> vecFiles;
    for (const bool bColor : {false, true})
    {
        std::vector<Ref::CPnt> deep;
        for (int i = 0; i < 14; ++i)
            deep.push_back({i * 300, i % 3 * 40, i % 2, static_cast<std::uint8_t>(i), 7, 9});
        for (int i = 0; i < 3; ++i)
            deep.push_back({90000, 90000, 90000 - i, 1, 2, 3});
        for (std::vector<Ref::CPnt> pnts :
             {std::vector<Ref::CPnt>{{0, 0, 0, 1, 2, 3}, {5000, 2500, 5000, 4, 5, 6}}, deep,
              std::vector<Ref::CPnt>{{7, 8, 9, 1, 2, 3}}})
        {
            const Ref::CTree tree = Ref::BuildTree(pnts);
            vecFiles.push_back(File(bColor, 5, {1.0F, 2.0F, 3.0F}, pnts, tree));
        }
    }
    return vecFiles;
}

TEST(ReadNative_robust, EveryTruncation)
{
    CMemFile file;
    for (const std::string& sFile : SmallFiles())
        for (std::size_t n = 0; n <= sFile.size(); ++n)
        {
            SCOPED_TRACE(std::to_string(n) + " of " + std::to_string(sFile.size()) + " bytes");
            ASSERT_NO_FATAL_FAILURE(CheckLoaded(file, sFile.substr(0, n)));
        }
}

TEST(ReadNative_robust, EveryOneByteChange)
{
    CMemFile file;
    for (const std::string& sFile : SmallFiles())
        for (std::size_t n = 0; n < sFile.size(); ++n)
            for (const int nChange : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xff, 0x7f})
            {
                SCOPED_TRACE("byte " + std::to_string(n) + " of " + std::to_string(sFile.size()) + " xor " +
                             std::to_string(nChange));
                std::string sChanged = sFile;
                sChanged[n] = static_cast<char>(sChanged[n] ^ nChange);
                ASSERT_NO_FATAL_FAILURE(CheckLoaded(file, sChanged));
            }
}

TEST(ReadNative_robust, RandomBytesBehindThePrologue)
{
    CMemFile file;
    CRandom random(1);
    for (int nCase = 0; nCase < 3000; ++nCase)
    {
        SCOPED_TRACE(nCase);
        std::string sBytes = c_sPrologue;
        if (random.Chance(2))
            sBytes = Start(static_cast<int>(random.Int(0, 1)));
        if (sBytes.size() > 5 && random.Chance(2))
            sBytes += Count(static_cast<int>(random.Int(1, 30)));
        for (std::int64_t n = random.Int(0, 1000); n > 0; --n)
            sBytes += static_cast<char>(random.Chance(2) ? random.Int(0, 3) : random.Int(0, 255));
        ASSERT_NO_FATAL_FAILURE(CheckLoaded(file, sBytes));
    }
}

// A count that the file cannot hold: no memory is asked for it, and the points that are there are read.
TEST(ReadNative_robust, CountBeyondTheFile_WholePointsOfItAreRead)
{
    CMemFile file;
    for (const int nNum : {4, 5, 1000, std::numeric_limits<int>::max()})
        for (const bool bColor : {false, true})
        {
            const std::string sBytes = Start(bColor ? 1 : 0) + Count(nNum) + SomePnts(3, bColor) + "1234567";
            ASSERT_NO_FATAL_FAILURE(CheckLoaded(file, sBytes));
            CPntCld cld(nullptr);
            ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
            EXPECT_EQ(3, cld.GetNumPnts());
            zor::geom::PNT_3D pnt;
            cld.GetPnt(2, pnt);
            EXPECT_EQ(0.2, pnt.x);
            CRecListener rec; // the tree is gone: found only once it is built anew
            cld.GetPnts_Clip(&rec, {});
            EXPECT_EQ(0, rec.GetNumPnts());
            EXPECT_TRUE(cld.ComputeTree());
            cld.GetPnts_Clip(&rec, {});
            EXPECT_EQ(3, rec.GetNumPnts());
        }
}

TEST(ReadNative_robust, NegativeCount_IsNone)
{
    CMemFile file;
    for (const int nNum : {-1, -1000, std::numeric_limits<int>::min()})
    {
        file.Set(Start(0, 9) + Count(nNum) + SomePnts(3, false) + SomeTreeHeader() + Masks(1, 1) +
                 Leaf(3, 0));
        CPntCld cld(nullptr);
        EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
        EXPECT_EQ(0, cld.GetNumPnts());
        EXPECT_EQ(9, cld.GetVersion());
        EXPECT_TRUE(cld.Init(2)); // the store is empty
    }
}

/// The points that a tree of these node bytes finds, over five points.
std::vector<int> FoundIn(const std::string& sNodes)
{
    CMemFile file;
    const std::string sBytes = Start(0) + Count(5) + SomePnts(5, false) + SomeTreeHeader() + sNodes;
    CheckLoaded(file, sBytes);
    CPntCld cld(nullptr);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
    CRecListener rec;
    cld.GetPnts_Clip(&rec, {});
    for (const CRecListener& recPlan : AskInPlan(cld, 1e6)) // takes whole nodes too, gaps or not
        EXPECT_EQ(rec.GetIndices(), recPlan.GetIndices());
    return rec.GetIndices();
}

using TIndices = std::vector<int>;

TEST(ReadNative_robust, LeavesOutsideTheArray_AreDroppedAndTheOthersKept)
{
    const std::string sMasks = Masks(7, 7);
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(sMasks + Leaf(1, 0) + Leaf(3, 1) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({1, 2, 3, 4}), FoundIn(sMasks + Leaf(1, 5) + Leaf(3, 1) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({0, 4}), FoundIn(sMasks + Leaf(1, 0) + Leaf(3, 3) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({0, 4}), FoundIn(sMasks + Leaf(1, 0) + Leaf(0x80000000U, 1) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({0, 4}), FoundIn(sMasks + Leaf(1, 0) + Leaf(3, 0xffffffffU) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({0, 4}), FoundIn(sMasks + Leaf(1, 0) + Leaf(0xffffffffU, 0xffffffffU) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({0, 1, 2, 3}), FoundIn(sMasks + Leaf(1, 0) + Leaf(3, 1) + Leaf(2, 4)));
}

// Runs that do not overlap are used in whatever order they stand; queries of the tree follow the tree.
TEST(ReadNative_robust, LeavesInAnyOrder_AreUsedAsTheyStand)
{
    EXPECT_EQ(TIndices({4, 1, 2, 3, 0}), FoundIn(Masks(7, 7) + Leaf(1, 4) + Leaf(3, 1) + Leaf(1, 0)));
    EXPECT_EQ(TIndices({2, 3, 0, 1}), FoundIn(Masks(0x81, 0x81) + Leaf(2, 2) + Leaf(2, 0))); // 4 is in none
    EXPECT_EQ(TIndices({3, 4, 1, 2, 0}),
              FoundIn(Masks(0x83, 0x82) + Masks(3, 3) + Leaf(1, 3) + Leaf(1, 4) + Leaf(2, 1) + Leaf(1, 0)));
    // Of those that overlap the first one counts here too.
    EXPECT_EQ(TIndices({3, 4, 0, 1}),
              FoundIn(Masks(15, 15) + Leaf(2, 3) + Leaf(2, 0) + Leaf(5, 0) + Leaf(2, 2)));
}

TEST(ReadNative_robust, LeavesWithoutPoints_FindNothing)
{
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(7, 7) + Leaf(1, 0) + Leaf(0, 1) + Leaf(4, 1)));
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(7, 7) + Leaf(0, 3) + Leaf(5, 0) + Leaf(0, 5)));
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(7, 7) + Leaf(0, 6) + Leaf(5, 0) + Leaf(0, ~0U)));
}

// A point belongs to one leaf: a tree whose leaves each name the whole array would make every query run for
// the number of leaves times the number of points.
TEST(ReadNative_robust, OverlappingLeaves_FirstOneCounts)
{
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(7, 7) + Leaf(5, 0) + Leaf(5, 0) + Leaf(5, 0)));
    EXPECT_EQ(TIndices({0, 1, 2, 4}), FoundIn(Masks(7, 7) + Leaf(3, 0) + Leaf(2, 2) + Leaf(1, 4)));
    EXPECT_EQ(TIndices({3, 4, 0}), FoundIn(Masks(7, 7) + Leaf(2, 3) + Leaf(1, 0) + Leaf(3, 1)));
}

TEST(ReadNative_robust, ManyLeavesOfTheWholeArray_QueriesStayLinear)
{
    constexpr int c_nNumPnts = 100000;
    std::string sBytes = Start(0) + Count(c_nNumPnts) + SomePnts(c_nNumPnts, false) + SomeTreeHeader();
    sBytes += Masks(0xff, 0) + Masks(0xff, 0); // eight times eight inner nodes of eight leaves ...
    for (int i = 0; i < 100000; ++i)
        sBytes += Masks(0xff, 0x7f) + Leaf(c_nNumPnts, 0);
    CMemFile file(sBytes);
    CPntCld cld(nullptr);
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
    CRecListener rec;
    cld.GetPnts_Clip(&rec, {});
    EXPECT_LE(rec.GetNumPnts(), c_nNumPnts);
}

// Inner nodes all the way down: the tree ends where a build would have leaves only.
TEST(ReadNative_robust, MasksThatNeverEnd_EndAtTheDepthLimit)
{
    for (const std::string& sMasks : {Masks(0xff, 0), Masks(1, 0), Masks(0x80, 0), Masks(0xff, 0x0f)})
    {
        std::string sNodes;
        for (int i = 0; i < 200000; ++i)
            sNodes += sMasks;
        FoundIn(sNodes);
    }
}

/// Inner nodes down to the given depth, each in octant 0, then a leaf.
std::string Chain(int nDepth)
{
    std::string sNodes;
    for (int n = 0; n < nDepth; ++n)
        sNodes += Masks(1, 0);
    return sNodes + Masks(1, 1) + Leaf(5, 0);
}

TEST(ReadNative_robust, NodesBelowTheDepthLimit_AreDropped)
{
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Chain(20)));
    EXPECT_EQ(TIndices(), FoundIn(Chain(21)));
    // What comes before such a node stays, what comes after is gone.
    EXPECT_EQ(TIndices({0}), FoundIn(Masks(7, 5) + Leaf(1, 0) + Chain(20) + Leaf(1, 4)));
}

TEST(ReadNative_robust, LeafBitWithoutChildBit_MeansNothing)
{
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(0x11, 0xff) + Leaf(2, 0) + Leaf(3, 2)));
}

TEST(ReadNative_robust, NodesWithoutPoints_FindNothing)
{
    EXPECT_EQ(TIndices(), FoundIn(Masks(0, 0)));
    EXPECT_EQ(TIndices(), FoundIn(Masks(0, 0xff)));
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(3, 2) + Masks(0, 0) + Leaf(5, 0)));
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(3, 1) + Leaf(5, 0) + Masks(1, 0) + Masks(0, 0)));
    // A node that loses all its leaves goes with them.
    EXPECT_EQ(TIndices({0, 1, 2, 3, 4}), FoundIn(Masks(3, 2) + Masks(1, 1) + Leaf(2, 4) + Leaf(5, 0)));
}

TEST(ReadNative_robust, BytesBehindTheTree_AreNotLookedAt)
{
    CMemFile file;
    for (const std::string& sFile : SmallFiles())
    {
        file.Set(sFile + "and more");
        CPntCld cld(nullptr);
        EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, file.GetPath()));
        EXPECT_EQ(sFile, SavedBytes(cld));
    }
}

// Numbers of the header that no build makes: cubes and boxes are computed without overflow.
TEST(ReadNative_robust, OddTreeHeaders)
{
    constexpr std::int32_t c_nMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t c_nMax = std::numeric_limits<std::int32_t>::max();
    CMemFile file;
    for (const std::int32_t nCentre : {c_nMin, c_nMax, 0})
        for (const std::int32_t nEdge : {c_nMin, -1, 0, c_nMax})
        {
            std::string sHeader;
            for (const std::int32_t n : {nCentre, nCentre, nCentre, nEdge, nEdge, nEdge, nEdge})
                sHeader += BytesOf(n);
            ASSERT_NO_FATAL_FAILURE(
                CheckLoaded(file, Start(0) + Count(5) + SomePnts(5, false) + sHeader + Chain(20)));
        }
}

TEST(ReadNative_robust, OddOrigins)
{
    constexpr float c_fInf = std::numeric_limits<float>::infinity();
    CMemFile file;
    for (const float fOrg : {c_fInf, -c_fInf, std::numeric_limits<float>::quiet_NaN(), 3e38F, -0.0F})
        ASSERT_NO_FATAL_FAILURE(CheckLoaded(file, Start(0) + Count(5, {fOrg, fOrg, fOrg}) +
                                                      SomePnts(5, false) + SomeTreeHeader() + Chain(3)));
}

} // namespace
