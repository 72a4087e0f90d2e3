#ifndef TESTS_IO_LOADALLOCS_H
#define TESTS_IO_LOADALLOCS_H

#include <io/ReadForeign.h>
#include <tests/io/CIdleListener.h>
#include <tests/io/CMemFile.h>
#include <tests/support/CCldState.h>
#include <tests/support/FailEveryAlloc.h>

#include <cstdint>
#include <string>

/// @return how many allocations it takes to read a file, of which nothing may be left behind.
inline std::int64_t CountAllocsOfReading(enumPntCldFile eType, const std::string& sBytes)
{
    const CMemFile file(sBytes);
    const zor::String sPath = file.GetPath();
    CIdleListener listener;
    const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
    const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
    EXPECT_TRUE(ReadForeign(listener, nullptr, eType, sPath));
    EXPECT_EQ(nNumLive, CFailingAlloc::GetNumLive());
    return CFailingAlloc::GetNumAllocs() - nBefore;
}

/// Lets every allocation of a load fail in turn: the exception passes through, or the cloud is the one that
/// it is with memory enough.
/// @param bNothingLost  nothing may be left behind; not so of libraries that lose memory when it runs out.
/// @return how often there was none.
inline int FailEveryAllocOfLoad(enumPntCldFile eType, const std::string& sBytes, bool bNothingLost = true)
{
    const CMemFile file(sBytes);
    const zor::String sPath = file.GetPath();
    CPntCld whole(nullptr);
    EXPECT_TRUE(whole.ReadFromFile(nullptr, eType, sPath));
    const CCldState expected(whole);
    return FailEveryAlloc(
        [&](CAllocPlan& plan)
        {
            CPntCld cld(nullptr);
            bool bResult = false;
            const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
            if (plan.Run([&] { bResult = cld.ReadFromFile(nullptr, eType, sPath); }))
            {
                EXPECT_TRUE(bResult);
                EXPECT_TRUE(CCldState(cld).HasSame(expected));
            }
            cld = CPntCld(nullptr);
            EXPECT_TRUE(!bNothingLost || nNumLive == CFailingAlloc::GetNumLive());
        });
}

#endif
