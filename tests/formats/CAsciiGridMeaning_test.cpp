// One header, two readings: what the library makes of it and what it means. Where they part is pinned here.
#include <formats/AsciiGridKeys.h>
#include <formats/CAsciiGridMeaning.h>
#include <formats/CByteReader.h>
#include <tests/io/grid/ReadGrid.h>

#include <gtest/gtest.h>

namespace
{

using namespace std::string_literals;

/// @param bOther  the cause may be that of a header which goes on behind what the library takes.
CAsciiGridMeaning Read(const std::string& sText, bool bOther = false)
{
    const CMemFile file(sText);
    CByteReader reader(CFilePtr(std::fopen(file.GetPath(), "rb")));
    const CAsciiGridMeaning meaning = ReadAsciiGridMeaning(reader);
    EXPECT_EQ(meaning.nDataOffset, reader.GetPos());
    EXPECT_EQ(meaning.taken.bComplete, meaning.nTakenDataOffset >= 0);
    if (!bOther)
    {
        EXPECT_EQ(ReadGrid(sText).bResult, meaning.FindTakenCause().empty()) << meaning.FindTakenCause();
    }
    return meaning;
}

const std::string c_sSize = "ncols 2\nnrows 1\n";
const std::string c_sPlace = "xllcorner 10\nyllcorner 20\n";
const std::string c_sCell = "cellsize 5\n";
const std::string c_sNoData = "NODATA_value -1\n";
const std::string c_sRow = "3 4\n";

TEST(CAsciiGridMeaning, Alike_WhereTheHeaderIsUsual)
{
    const std::string sHead = c_sSize + c_sPlace + c_sCell + c_sNoData;
    for (const std::string& sText : {sHead + c_sRow, "\n" + sHead + c_sRow})
    {
        const CAsciiGridMeaning meaning = Read(sText);
        EXPECT_EQ("", meaning.FindCause());
        EXPECT_EQ(meaning.nDataOffset, meaning.nTakenDataOffset);
        EXPECT_EQ(static_cast<std::int64_t>(sText.size() - c_sRow.size()), meaning.nDataOffset);
        EXPECT_EQ(2, meaning.nNumCols);
        EXPECT_EQ(2, meaning.taken.nNumCols);
        EXPECT_EQ(10.0, meaning.GetXCorner());
        EXPECT_EQ(20.0, meaning.taken.dYCorner);
        EXPECT_FALSE(meaning.IsPlaceLost());
    }
}

// The library takes square cells only, and no such key.
TEST(CAsciiGridMeaning, CellsThatAreNotSquare)
{
    const CAsciiGridMeaning meaning =
        Read(c_sSize + "xllcenter 10\nyllcenter 20\nDX 4\ndy 6\n" + c_sNoData + c_sRow);
    EXPECT_EQ("", meaning.FindCause());
    EXPECT_NE(std::string::npos, meaning.FindTakenCause().sText.find("(dx, dy)")) << meaning.FindTakenCause();
    EXPECT_EQ(4.0, meaning.GetCellWidth());
    EXPECT_EQ(6.0, meaning.GetCellHeight());
    EXPECT_EQ(8.0, meaning.GetXCorner());
    EXPECT_EQ(17.0, meaning.GetYCorner());
    EXPECT_EQ("", Read(c_sSize + c_sPlace + c_sCell + "dx 4\n" + c_sNoData + c_sRow).FindCause());
    for (const char* pKeys : {"dx 4\n", "dy 4\n", "dx 4\ndy 0\n", "dx nan\ndy 4\n", "cellsize 5\ndx -1\n"})
        EXPECT_EQ("its header gives no cell size above 0",
                  Read(c_sSize + c_sPlace + pKeys + c_sNoData + c_sRow).FindCause())
            << pKeys;
}

TEST(CAsciiGridMeaning, MixedCaseKeys)
{
    const CAsciiGridMeaning meaning =
        Read("NCols 2\nnRows 1\nXLLcorner 10\nyllcorner 20\nCellSize 5\nnodata -1\n" + c_sRow);
    EXPECT_EQ("", meaning.FindCause());
    EXPECT_EQ("its header has the key 'NCols': only 'ncols' or 'NCOLS' is accepted",
              meaning.FindTakenCause());
    EXPECT_EQ(-1.0, *meaning.noData);
    EXPECT_EQ(10.0, meaning.GetXCorner());
    EXPECT_EQ("its header has the key 'nodata': only 'NODATA_value' or 'NODATA_VALUE' is accepted",
              Read(c_sSize + c_sPlace + c_sCell + "nodata -1\n" + c_sRow).FindTakenCause());
    EXPECT_EQ("", Read("NCOLS 2\nNROWS 1\nXLLCORNER 1\nYLLCORNER 1\nCELLSIZE 5\nNODATA_VALUE 0\n" + c_sRow)
                      .FindTakenCause());
}

TEST(CAsciiGridMeaning, Tabs)
{
    const CAsciiGridMeaning meaning = Read("ncols\t2\nnrows 1\n" + c_sPlace + c_sCell + c_sNoData + c_sRow);
    EXPECT_EQ("", meaning.FindCause());
    EXPECT_EQ(2, meaning.nNumCols);
    EXPECT_TRUE(meaning.bTabs);
    EXPECT_EQ("a tab separates key and value in its header: only blanks do", meaning.FindTakenCause());
    EXPECT_FALSE(Read("ncols \t2\nnrows 1\n" + c_sPlace + c_sCell + c_sNoData + c_sRow).bTabs);
}

TEST(CAsciiGridMeaning, CarriageReturns)
{
    const CAsciiGridMeaning meaning = Read(
        "ncols 2\r\nnrows 1\r\nxllcorner 10\r\nyllcorner 20\r\ncellsize 5\r\nNODATA_value -1\r\n3 4\r\n");
    EXPECT_EQ(meaning.nDataOffset, meaning.nTakenDataOffset);
    EXPECT_EQ(5.0, *meaning.cellSize);
    EXPECT_EQ(5.0, meaning.taken.dCellSize);
    const CAsciiGridMeaning alone =
        Read("ncols 2\rnrows 1\rxllcorner 10\ryllcorner 20\rcellsize 5\rNODATA_value -1\r3 4\r");
    EXPECT_NE("", alone.FindCause()); // one line, to both
    EXPECT_EQ(alone.FindCause(), alone.FindTakenCause());
}

TEST(CAsciiGridMeaning, WithoutNoData)
{
    const CAsciiGridMeaning meaning = Read(c_sSize + c_sPlace + c_sCell + c_sRow);
    EXPECT_EQ("", meaning.FindCause());
    EXPECT_FALSE(meaning.noData);
    EXPECT_EQ("its header has no line NODATA_value, which is required", meaning.FindTakenCause());
    EXPECT_EQ("its no-data value is not a number, so its header is not complete",
              Read(c_sSize + c_sPlace + c_sCell + "NODATA_value nan\n" + c_sRow).FindTakenCause());
}

TEST(CAsciiGridMeaning, Place)
{
    const std::string sRest = c_sSize + c_sCell + c_sNoData;
    const CAsciiGridMeaning centre = Read("xllcenter 12.5\nyllcenter 22.5\n" + sRest + c_sRow);
    EXPECT_EQ(10.0, centre.GetXCorner());
    EXPECT_TRUE(centre.IsPlaceLost());
    const CAsciiGridMeaning zero = Read("xllcorner 0\nyllcorner 0\n" + sRest + c_sRow);
    EXPECT_EQ(0.0, zero.GetXCorner());
    EXPECT_TRUE(zero.IsPlaceLost());
    const CAsciiGridMeaning both =
        Read("xllcorner 0\nyllcorner 0\nxllcenter 12.5\nyllcenter 22.5\n" + sRest + c_sRow);
    EXPECT_EQ(0.0, both.GetXCorner());
    EXPECT_EQ(10.0, both.taken.dXCorner);
    EXPECT_FALSE(both.IsPlaceLost());
    const CAsciiGridMeaning mixed = Read("xllcorner 10\nyllcenter 22.5\n" + sRest + c_sRow);
    EXPECT_EQ("", mixed.FindCause());
    EXPECT_EQ("its header mixes corner and centre: both values of one of them are required",
              mixed.FindTakenCause());
}

TEST(CAsciiGridMeaning, Refused)
{
    EXPECT_NE("", Read(c_sSize + c_sPlace + "cellsize 1e200\n" + c_sNoData + c_sRow).FindTakenCause());
    EXPECT_NE("", Read("ncols 2\n \nnrows 1\n" + c_sPlace + c_sCell + c_sNoData + c_sRow).FindTakenCause());
    EXPECT_EQ("not a grid: its header gives no number of rows and columns above 0",
              Read("hello\n").FindCause());
    EXPECT_EQ(0, Read("hello\n").nDataOffset);
    const std::string sLong = "ncols " + std::string(300, ' ') + "2\n"; // no line of a header, by its length
    EXPECT_NE("", Read(sLong + "nrows 1\n" + c_sPlace + c_sCell + c_sNoData + c_sRow, true).FindCause());
}

// Behind the line that completes its header everything is data to the library.
TEST(CAsciiGridMeaning, KeysBehindTheLibrarysHeader)
{
    const std::string sHead = c_sSize + c_sPlace + c_sNoData + c_sCell;
    const CAsciiGridMeaning meaning = Read(sHead + "ncols 3\n1 2 3\n", true);
    EXPECT_EQ(3, meaning.nNumCols);
    EXPECT_EQ(2, meaning.taken.nNumCols);
    EXPECT_EQ(static_cast<std::int64_t>(sHead.size()), meaning.nTakenDataOffset);
    EXPECT_EQ(meaning.nTakenDataOffset + 8, meaning.nDataOffset);
}

TEST(AsciiGridKeys, IsAsciiGridStart)
{
    for (const char* sText : {"ncols 3", "NROWS", "xLLcorner", "xllcenter 4"})
        EXPECT_TRUE(IsAsciiGridStart(sText)) << sText;
    for (const char* sText : {"", "ncol", " ncols", "cellsize 3"})
        EXPECT_FALSE(IsAsciiGridStart(sText)) << sText;
}

} // namespace
