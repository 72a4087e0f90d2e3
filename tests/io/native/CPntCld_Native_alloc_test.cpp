// Saving and loading when memory runs out: the cloud is as before, and nothing leaks.

#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/CFailingAlloc.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>

namespace
{

/// Fails the first allocation of `operation`, the second, and so on, until it gets through.
/// @return how many were made to fail.
int FailEach(CPntCld& cld, const std::function<bool(CPntCld&)>& operation,
             const std::function<void(CPntCld&)>& check)
{
    for (int nNumGood = 0; nNumGood < 1000; ++nNumGood)
    {
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        try
        {
            const CFailingAlloc failing(nNumGood);
            EXPECT_TRUE(operation(cld));
            return nNumGood;
        }
        catch (const std::bad_alloc&)
        {
            EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
            check(cld);
        }
    }
    ADD_FAILURE() << "it never ends";
    return 0;
}

/// @param bFalling  the runs of the leaves stand in the order opposite to the array's.
std::string FileOf(int nNumPnts, bool bColor, bool bFalling = false)
{
    using namespace NativeBytes;
    std::string sBytes = Start(bColor ? 1 : 0, 5) + Count(nNumPnts) + SomePnts(nNumPnts, bColor);
    sBytes += SomeTreeHeader() + Masks(0xff, 0);
    for (std::uint32_t i = 0; i < 8; ++i)
        sBytes += Masks(1, 1) + Leaf(1, bFalling ? 7 - i : i);
    return sBytes;
}

TEST(CPntCld_Native_alloc, ReadFromFile)
{
    for (const bool bColor : {false, true})
    {
        const CMemFile file(FileOf(8, bColor, bColor)); // runs that fall take memory to be told apart
        const zor::String sPath = file.GetPath();
        CPntCld cld(nullptr);
        cld.ReadFromFile(nullptr, static_cast<enumPntCldFile>(9), sPath); // makes room for the path
        const int nNumFailures = FailEach(
            cld, [&](CPntCld& c) { return c.ReadFromFile(nullptr, PntCldFile_Native, sPath); },
            [](CPntCld& c)
            {
                EXPECT_EQ(-1, c.GetVersion()); // it has no type yet
                for (const enumPntCldType eType : {PntCldType_Pnt, PntCldType_PntColor})
                {
                    CPntCld copy(c);
                    copy.OnReadType(eType);
                    EXPECT_EQ(0, copy.GetNumPnts());
                    EXPECT_EQ(0, copy.GetVersion());
                    zor::geom::RECT_3D rect;
                    EXPECT_FALSE(copy.GetBdry(rect));
                }
            });
        EXPECT_GT(nNumFailures, 5); // array, bit sets, tree, block, arena and their owners
        EXPECT_EQ(8, cld.GetNumPnts());
    }
}

TEST(CPntCld_Native_alloc, WriteToFile)
{
    const CMemFile in(FileOf(8, false));
    CPntCld cld(nullptr);
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, in.GetPath()));
    const CMemFile out("what was there before");
    const zor::String sPath = out.GetPath();
    const int nNumFailures = FailEach(
        cld, [&](CPntCld& c) { return c.WriteToFile(sPath, 0); },
        [&](CPntCld& c)
        {
            EXPECT_EQ(8, c.GetNumPnts());
            EXPECT_EQ("what was there before", ReadFileBytes(out.GetPath()));
        });
    EXPECT_GT(nNumFailures, 0);
    EXPECT_EQ(ReadFileBytes(in.GetPath()), ReadFileBytes(out.GetPath()));
}

// Points are read and written without an allocation each.
TEST(CPntCld_Native_alloc, AllocationsDoNotGrowWithThePoints)
{
    const auto CountAllocs = [](int nNumPnts)
    {
        const CMemFile file(FileOf(nNumPnts, true));
        const CMemFile out;
        const zor::String sPath = file.GetPath();
        const zor::String sOut = out.GetPath();
        CPntCld cld(nullptr);
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, sPath));
        EXPECT_TRUE(cld.WriteToFile(sOut, 0));
        return CFailingAlloc::GetNumAllocs() - nBefore;
    };
    EXPECT_EQ(CountAllocs(8), CountAllocs(50000));
}

} // namespace
