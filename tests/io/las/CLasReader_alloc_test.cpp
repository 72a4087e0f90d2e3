#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CFailingAlloc.h>
#include <tests/support/LasBytes.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <new>

namespace
{

/// Remembers how many allocations came before the points were announced.
class CAnnounceListener final : public IPntCldReadListener
{
public:
    void OnReadType(enumPntCldType) override {}
    void OnReadNumPnts(int) override { m_nNumAllocs = CFailingAlloc::GetNumAllocs(); }
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
    void OnReadPnt(double, double, double) override {}
    void OnReadEnd() override {}

    std::int64_t m_nNumAllocs = 0;
};

// Points are read without an allocation each, and nothing is left behind.
TEST(CLasReader_alloc, Read_AllocationsDoNotGrowWithThePoints)
{
    const auto CountAllocs = [](int nNumPnts)
    {
        const CMemFile file(LasOf(2, nNumPnts).GetBytes());
        const zor::String sPath = file.GetPath();
        CAnnounceListener listener;
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        EXPECT_TRUE(ReadForeign(listener, nullptr, PntCldFile_Las, sPath));
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
        return CFailingAlloc::GetNumAllocs() - nBefore;
    };
    EXPECT_EQ(CountAllocs(10), CountAllocs(50000));
}

std::int64_t CountAllocsOfOpening(const zor::String& sPath)
{
    CAnnounceListener listener;
    const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
    EXPECT_TRUE(ReadForeign(listener, nullptr, PntCldFile_Las, sPath));
    return listener.m_nNumAllocs - nBefore;
}

// Every allocation of the cloud fails in turn: the exception passes through, and nothing is left behind.
// Those of opening the file are the reading library's own; LASzip does not survive that they fail.
TEST(CLasReader_alloc, ReadFromFile_EveryAllocationOfTheCloudFails)
{
    const CMemFile file(LasOf(3, 50).GetBytes());
    const zor::String sPath = file.GetPath();
    std::int64_t nNumFailed = 0;
    for (std::int64_t nNumGood = CountAllocsOfOpening(sPath);; ++nNumGood, ++nNumFailed)
    {
        ASSERT_LT(nNumFailed, 10000);
        CPntCld cld(nullptr);
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        bool bResult = false;
        bool bNoMemory = false;
        {
            const zor::String sFile = sPath;
            const CFailingAlloc failing(nNumGood);
            try
            {
                bResult = cld.ReadFromFile(nullptr, PntCldFile_Las, sFile);
            }
            catch (const std::bad_alloc&)
            {
                bNoMemory = true;
            }
        }
        cld = CPntCld(nullptr);
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive()) << nNumGood << " allocations let through";
        if (bResult)
            break;
        EXPECT_TRUE(bNoMemory) << nNumGood << " allocations let through";
    }
    EXPECT_GE(nNumFailed, 3); // array and two bit sets at least
}

} // namespace
