#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/ply/PlyBytes.h>
#include <tests/support/FailEveryAlloc.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace
{

// Whichever allocation fails: std::bad_alloc comes through and nothing leaks, or the cloud is right.
TEST(CPlyReader_alloc, ReadFromFile_EveryAllocationFails)
{
    const CMemFile file(PlyOfTriangle());
    const CMemFile saved;
    const auto save = [&](CPntCld& cld)
    {
        EXPECT_TRUE(cld.WriteToFile(saved.GetPath(), 0));
        return ReadFileBytes(saved.GetPath());
    };
    CPntCld whole(nullptr);
    ASSERT_TRUE(whole.ReadFromFile(nullptr, PntCldFile_Ply, file.GetPath()));
    const std::string sWhole = save(whole);
    const auto attempt = [&](CAllocPlan& plan)
    {
        CPntCld cld(nullptr);
        const zor::String sFile = file.GetPath();
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        if (plan.Run([&] { EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Ply, sFile)); }))
        {
            EXPECT_EQ(sWhole, save(cld));
        }
        cld = CPntCld(nullptr);
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
    };
    EXPECT_GT(FailEveryAlloc(attempt), 0);
}

// Points are read without an allocation each.
TEST(CPlyReader_alloc, Read_AllocationsDoNotGrowWithThePoints)
{
    class CNothing final : public IPntCldReadListener
    {
    public:
        void OnReadType(enumPntCldType) override {}
        void OnReadNumPnts(int) override {}
        void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
        void OnReadPnt(double, double, double) override {}
        void OnReadEnd() override {}
    };
    const auto CountAllocs = [](int nNumPnts)
    {
        const CMemFile file(PlyOfXyz(nNumPnts));
        const zor::String sPath = file.GetPath();
        CNothing listener;
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        EXPECT_TRUE(ReadForeign(listener, nullptr, PntCldFile_Ply, sPath));
        return CFailingAlloc::GetNumAllocs() - nBefore;
    };
    EXPECT_EQ(CountAllocs(10), CountAllocs(50000));
}

} // namespace
