#include <tests/io/LoadAllocs.h>
#include <tests/io/ply/PlyBytes.h>

namespace
{

// Whichever allocation fails: std::bad_alloc comes through and nothing leaks, or the cloud is right.
TEST(CPlyReader_alloc, ReadFromFile_EveryAllocationFails)
{
    EXPECT_GT(FailEveryAllocOfLoad(PntCldFile_Ply, PlyOfTriangle()), 0);
}

// Points are read without an allocation each.
TEST(CPlyReader_alloc, Read_AllocationsDoNotGrowWithThePoints)
{
    EXPECT_EQ(CountAllocsOfReading(PntCldFile_Ply, PlyOfXyz(10)),
              CountAllocsOfReading(PntCldFile_Ply, PlyOfXyz(50000)));
}

} // namespace
