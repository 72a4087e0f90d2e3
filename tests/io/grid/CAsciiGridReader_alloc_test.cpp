#include <tests/io/grid/ReadGrid.h>
#include <tests/support/FailEveryAlloc.h>
#include <tests/support/RealFiles.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace
{

// Whichever allocation fails: std::bad_alloc comes through and nothing leaks, or the cloud is right.
TEST(CAsciiGridReader_alloc, ReadFromFile_EveryAllocationFails)
{
    const CMemFile file(GridHeader(3, 2) + "1 2 3.00000000000000000000000000000000000000000000\n4 5 6\n");
    const zor::String sPath = file.GetPath();
    const CMemFile saved;
    const auto save = [&](CPntCld& cld)
    {
        EXPECT_TRUE(cld.WriteToFile(saved.GetPath(), 0));
        return ReadFileBytes(saved.GetPath());
    };
    CPntCld whole(nullptr);
    ASSERT_TRUE(whole.ReadFromFile(nullptr, PntCldFile_AsciiGrid, sPath));
    const std::string sWhole = save(whole);
    const auto attempt = [&](CAllocPlan& plan)
    {
        CPntCld cld(nullptr);
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        if (plan.Run([&] { EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_AsciiGrid, sPath)); }))
        {
            EXPECT_EQ(sWhole, save(cld));
        }
        cld = CPntCld(nullptr);
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
    };
    EXPECT_GT(FailEveryAlloc(attempt), 5);
}

// One allocation for very many cells, none for a cell.
TEST(CAsciiGridReader_alloc, Read_AllocationsDoNotGrowWithTheCells)
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
    const auto CountAllocs = [](int nNumCols)
    {
        std::string sText = GridHeader(nNumCols, 1);
        for (int i = 0; i < nNumCols; ++i)
            sText += "123.25 ";
        const CMemFile file(sText);
        const zor::String sPath = file.GetPath();
        CNothing listener;
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        EXPECT_TRUE(ReadForeign(listener, nullptr, PntCldFile_AsciiGrid, sPath));
        return CFailingAlloc::GetNumAllocs() - nBefore;
    };
    EXPECT_EQ(CountAllocs(10), CountAllocs(50000));
}

} // namespace
