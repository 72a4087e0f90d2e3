// Saving and loading when memory runs out: the cloud is as before, and nothing leaks.

#include <tests/io/CMemFile.h>
#include <tests/io/native/NativeBytes.h>
#include <tests/support/FailEveryAlloc.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <functional>

namespace
{

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

/// A cloud as it was before anything was read into it.
void CheckUntouched(const CPntCld& cld)
{
    EXPECT_EQ(-1, cld.GetVersion()); // it has no type yet
    for (const enumPntCldType eType : {PntCldType_Pnt, PntCldType_PntColor})
    {
        CPntCld copy(cld);
        copy.OnReadType(eType);
        EXPECT_EQ(0, copy.GetNumPnts());
        EXPECT_EQ(0, copy.GetVersion());
        zor::geom::RECT_3D rect;
        EXPECT_FALSE(copy.GetBdry(rect));
    }
}

TEST(CPntCld_Native_alloc, ReadFromFile)
{
    for (const bool bColor : {false, true})
    {
        const CMemFile file(FileOf(8, bColor, bColor)); // runs that fall take memory to be told apart
        const CMemFile saved;
        const zor::String sPath = file.GetPath();
        const auto attempt = [&](CAllocPlan& plan)
        {
            CPntCld cld(nullptr);
            cld.ReadFromFile(nullptr, static_cast<enumPntCldFile>(9), sPath); // makes room for the path
            const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
            if (!plan.Run([&] { EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, sPath)); }))
            {
                EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
                CheckUntouched(cld);
                return;
            }
            EXPECT_EQ(8, cld.GetNumPnts());
            EXPECT_TRUE(cld.WriteToFile(saved.GetPath(), 0));
            EXPECT_EQ(ReadFileBytes(file.GetPath()), ReadFileBytes(saved.GetPath()));
        };
        EXPECT_GT(FailEveryAlloc(attempt), 5); // array, bit sets, tree, block, arena and their owners
    }
}

TEST(CPntCld_Native_alloc, WriteToFile)
{
    const CMemFile in(FileOf(8, false));
    CPntCld cld(nullptr);
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Native, in.GetPath()));
    CMemFile out;
    const zor::String sPath = out.GetPath();
    const std::string sBefore = "what was there before";
    const auto attempt = [&](CAllocPlan& plan)
    {
        out.Set(sBefore);
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        const bool bThrough = plan.Run([&] { EXPECT_TRUE(cld.WriteToFile(sPath, 0)); });
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
        EXPECT_EQ(8, cld.GetNumPnts());
        EXPECT_EQ(bThrough ? ReadFileBytes(in.GetPath()) : sBefore, ReadFileBytes(out.GetPath()));
    };
    EXPECT_GT(FailEveryAlloc(attempt), 0);
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
