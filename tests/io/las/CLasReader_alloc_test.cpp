#include <tests/io/LoadAllocs.h>
#include <tests/support/LasBytes.h>
#ifdef ZOR4DATA_TEST_LAZ
#include <tests/support/LazBytes.h>
#endif

namespace
{

// Points are read without an allocation each, and nothing is left behind.
TEST(CLasReader_alloc, Read_AllocationsDoNotGrowWithThePoints)
{
    EXPECT_EQ(CountAllocsOfReading(PntCldFile_Las, LasOf(2, 10).GetBytes()),
              CountAllocsOfReading(PntCldFile_Las, LasOf(2, 50000).GetBytes()));
}

// Of a file that is not compressed nothing is left behind.
TEST(CLasReader_alloc, ReadFromFile_EveryAllocationFails)
{
    // Array and two bit sets at least.
    EXPECT_GE(FailEveryAllocOfLoad(PntCldFile_Las, LasOf(3, 50).GetBytes()), 3);
}

#ifdef ZOR4DATA_TEST_LAZ
// LASzip's own allocations among them: it does not survive that what it has made by halves is taken apart.
TEST(CLasReader_alloc, ReadFromFile_EveryAllocationOfLaszipFails)
{
    for (const int nFormat : {1, 3, 5, 6, 7, 10})
    {
        SCOPED_TRACE(nFormat);
        EXPECT_GE(FailEveryAllocOfLoad(PntCldFile_Las, LazBytes(LasOf(nFormat, 40), 16), false), 100);
    }
}
#endif

} // namespace
