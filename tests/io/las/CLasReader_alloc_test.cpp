#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CCldState.h>
#include <tests/support/FailEveryAlloc.h>
#include <tests/support/LasBytes.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace
{

/// Takes points and does nothing with them.
class CIdleListener final : public IPntCldReadListener
{
public:
    void OnReadType(enumPntCldType) override {}
    void OnReadNumPnts(int) override {}
    void OnReadPnt(double, double, double, unsigned char, unsigned char, unsigned char) override {}
    void OnReadPnt(double, double, double) override {}
    void OnReadEnd() override {}
};

// Points are read without an allocation each, and nothing is left behind.
TEST(CLasReader_alloc, Read_AllocationsDoNotGrowWithThePoints)
{
    const auto CountAllocs = [](int nNumPnts)
    {
        const CMemFile file(LasOf(2, nNumPnts).GetBytes());
        const zor::String sPath = file.GetPath();
        CIdleListener listener;
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        EXPECT_TRUE(ReadForeign(listener, nullptr, PntCldFile_Las, sPath));
        EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
        return CFailingAlloc::GetNumAllocs() - nBefore;
    };
    EXPECT_EQ(CountAllocs(10), CountAllocs(50000));
}

/// Lets every allocation of a load fail in turn: the exception passes through, or the cloud is the one that
/// it is with memory enough.
/// @return how often there was none.
int FailEveryAllocOfLoad(const zor::String& sPath)
{
    CPntCld whole(nullptr);
    EXPECT_TRUE(whole.ReadFromFile(nullptr, PntCldFile_Las, sPath));
    const CCldState expected(whole);
    return FailEveryAlloc(
        [&](CAllocPlan& plan)
        {
            CPntCld cld(nullptr);
            bool bResult = false;
            if (!plan.Run([&] { bResult = cld.ReadFromFile(nullptr, PntCldFile_Las, sPath); }))
                return;
            EXPECT_TRUE(bResult);
            EXPECT_TRUE(CCldState(cld).HasSame(expected));
        });
}

// Of a file that is not compressed nothing is left behind.
TEST(CLasReader_alloc, ReadFromFile_EveryAllocationFails)
{
    const CMemFile file(LasOf(3, 50).GetBytes());
    const zor::String sPath = file.GetPath();
    static_cast<void>(FailEveryAllocOfLoad(sPath)); // what the tests themselves allocate once
    const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
    EXPECT_GE(FailEveryAllocOfLoad(sPath), 3); // array and two bit sets at least
    EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
}

#ifdef ZOR4DATA_TEST_LAZ
// LASzip's own allocations among them: it does not survive that what it has made by halves is taken apart.
TEST(CLasReader_alloc, ReadFromFile_EveryAllocationOfLaszipFails)
{
    for (const int nFormat : {1, 3, 5, 6, 7, 10})
    {
        SCOPED_TRACE(nFormat);
        const CMemFile file(LazBytes(LasOf(nFormat, 40), 16));
        EXPECT_GE(FailEveryAllocOfLoad(file.GetPath()), 100);
    }
}
#endif

} // namespace
