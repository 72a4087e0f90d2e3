#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/ply/PlyBytes.h>
#include <tests/support/CFailingAlloc.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <new>

namespace
{

/// @return how many allocations reading the file takes: all that came before were made to fail, one by
/// one.
std::int64_t ReadWithFailingAllocs(const char* sPath)
{
    for (std::int64_t nNumGood = 0;; ++nNumGood)
    {
        CPntCld cld(nullptr);
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        bool bResult = false;
        bool bNoMemory = false;
        {
            const zor::String sFile = sPath;
            const CFailingAlloc failing(nNumGood);
            try
            {
                bResult = cld.ReadFromFile(nullptr, PntCldFile_Ply, sFile);
            }
            catch (const std::bad_alloc&)
            {
                bNoMemory = true;
            }
        }
        cld = CPntCld(nullptr);
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive()) << nNumGood << " allocations let through";
        if (bResult)
            return nNumGood;
        EXPECT_TRUE(bNoMemory) << nNumGood << " allocations let through";
        if (nNumGood > 10000)
        {
            ADD_FAILURE() << "it never ends";
            return -1;
        }
    }
}

TEST(CPlyReader_alloc, ReadFromFile_EveryAllocationFails)
{
    EXPECT_GT(ReadWithFailingAllocs(CMemFile(PlyOfTriangle()).GetPath()), 0);
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
