#include <tests/io/LoadAllocs.h>
#include <tests/io/grid/ReadGrid.h>

namespace
{

// Whichever allocation fails: std::bad_alloc comes through and nothing leaks, or the cloud is right.
TEST(CAsciiGridReader_alloc, ReadFromFile_EveryAllocationFails)
{
    const std::string sText =
        GridHeader(3, 2) + "1 2 3.00000000000000000000000000000000000000000000\n4 5 6\n";
    EXPECT_GT(FailEveryAllocOfLoad(PntCldFile_AsciiGrid, sText), 5);
}

// One allocation for very many cells, none for a cell.
TEST(CAsciiGridReader_alloc, Read_AllocationsDoNotGrowWithTheCells)
{
    const auto countAllocs = [](int nNumCols)
    {
        std::string sText = GridHeader(nNumCols, 1);
        for (int i = 0; i < nNumCols; ++i)
            sText += "123.25 ";
        return CountAllocsOfReading(PntCldFile_AsciiGrid, sText);
    };
    EXPECT_EQ(countAllocs(10), countAllocs(50000));
}

} // namespace
