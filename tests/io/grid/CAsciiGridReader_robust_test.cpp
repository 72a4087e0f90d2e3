#include <tests/io/grid/ReadGrid.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace
{

std::vector<std::string> SmallFiles()
{
    return {
        GridHeader(3, 2) + "1 2.5 -3\n4e1 -9999 6\n",
        "NROWS 2\r\nNCOLS 2\r\nXLLCENTER 5\r\nYLLCENTER 6\r\nXLLCORNER 0\r\nYLLCORNER 0\r\n"
        "CELLSIZE 0.5\r\nNODATA_VALUE 0\r\n 1  2\r\n\n 0.0 7 8\r\n",
    };
}

TEST(CAsciiGridReader_robust, Read_EveryTruncation)
{
    CMemFile file;
    for (const std::string& sFile : SmallFiles())
        for (std::size_t n = 0; n <= sFile.size(); ++n)
        {
            file.Set(sFile.substr(0, n));
            ASSERT_EQ(ReadGridSlowly(sFile.substr(0, n)), ReadGridFile(file.GetPath())) << n << " bytes";
        }
}

TEST(CAsciiGridReader_robust, Read_EveryOneByteChange)
{
    CMemFile file;
    for (const std::string& sFile : SmallFiles())
    {
        std::string sChanged = sFile;
        for (std::size_t n = 0; n < sFile.size(); ++n)
        {
            for (int c = 0; c < 256; ++c)
            {
                sChanged[n] = static_cast<char>(c);
                file.Set(sChanged);
                ASSERT_EQ(ReadGridSlowly(sChanged), ReadGridFile(file.GetPath())) << n << ": " << c;
            }
            sChanged[n] = sFile[n];
        }
    }
}

// Numbers of rows and columns ask for no memory: what is announced are the cells that are there.
TEST(CAsciiGridReader_robust, Read_HugeCounts)
{
    const std::string sText = "ncols 2147483647\nnrows 2147483647\nxllcorner 1\nyllcorner 2\ncellsize 1\n"
                              "NODATA_value -1\n5 6\n7\n";
    const CReading reading = ReadGrid(sText);
    EXPECT_EQ(ReadGridSlowly(sText), reading);
    ASSERT_EQ(6U, reading.vecCalls.size());
    EXPECT_EQ(CReadCall::NumPnts(3), reading.vecCalls[1]);
    CPntCld cld(nullptr);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_AsciiGrid, CMemFile(sText).GetPath()));
    EXPECT_EQ(3, cld.GetNumPnts());
}

// Coordinates beyond all bounds saturate.
TEST(CAsciiGridReader_robust, Read_HugeCoordinates)
{
    const std::string sText = "ncols 2\nnrows 2\nxllcorner -inf\nyllcorner 8e199\ncellsize 8e199\n"
                              "NODATA_value -1\n1e308 -1e308\nnan inf\n";
    EXPECT_EQ(ReadGridSlowly(sText).vecCalls.size(), ReadGrid(sText).vecCalls.size());
    CPntCld cld(nullptr);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_AsciiGrid, CMemFile(sText).GetPath()));
    EXPECT_GT(cld.GetNumPnts(), 0);
}

} // namespace
