#include <io/ReadForeign.h>
#include <tests/io/CMemFile.h>
#include <tests/io/CRecReadListener.h>
#include <tests/support/CFailingAlloc.h>
#include <tests/support/LasBytes.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <new>

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

/// What loading has come to when every allocation behind the first `nNumGood` fails.
struct CLoading
{
    bool bNoMemory = false;
    bool bResult = false;
    TReadCalls vecCalls;
};

CLoading Load(const zor::String& sPath, std::int64_t nNumGood)
{
    CLoading loading;
    CPntCld cld(nullptr);
    const zor::String sFile = sPath;
    try
    {
        const CFailingAlloc failing(nNumGood);
        loading.bResult = cld.ReadFromFile(nullptr, PntCldFile_Las, sFile);
    }
    catch (const std::bad_alloc&)
    {
        loading.bNoMemory = true;
    }
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        zor::geom::PNT_3D pnt;
        cld.GetPnt(i, pnt);
        unsigned char r = 0;
        unsigned char g = 0;
        unsigned char b = 0;
        cld.GetPntColor(i, r, g, b);
        loading.vecCalls.push_back(CReadCall::ColorPnt(pnt.x, pnt.y, pnt.z, r, g, b));
    }
    return loading;
}

/// Every allocation fails in turn: the exception passes through, or the result is the one that it is with
/// memory enough.
/// @return how often there was none.
std::int64_t FailEveryAllocation(const zor::String& sPath)
{
    constexpr std::int64_t c_nEnough = 1000000;
    const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
    const CLoading expected = Load(sPath, c_nEnough);
    EXPECT_TRUE(expected.bResult);
    const std::int64_t nMost = CFailingAlloc::GetNumAllocs() - nBefore;
    std::int64_t nNumFailed = 0;
    for (std::int64_t nNumGood = 0; nNumGood <= nMost; ++nNumGood)
    {
        const CLoading loading = Load(sPath, nNumGood);
        nNumFailed += loading.bNoMemory ? 1 : 0;
        EXPECT_NE(loading.bNoMemory, loading.bResult) << nNumGood << " allocations let through";
        EXPECT_TRUE(loading.bNoMemory || loading.vecCalls == expected.vecCalls)
            << nNumGood << " allocations let through";
    }
    EXPECT_FALSE(Load(sPath, nMost).bNoMemory);
    return nNumFailed;
}

// Of a file that is not compressed nothing is left behind.
TEST(CLasReader_alloc, ReadFromFile_EveryAllocationFails)
{
    const CMemFile file(LasOf(3, 50).GetBytes());
    const zor::String sPath = file.GetPath();
    const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
    EXPECT_GE(FailEveryAllocation(sPath), 3); // array and two bit sets at least
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
        EXPECT_GE(FailEveryAllocation(file.GetPath()), 100);
    }
}
#endif

} // namespace
