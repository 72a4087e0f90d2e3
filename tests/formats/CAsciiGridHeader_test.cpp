#include <formats/CAsciiGridHeader.h>

#include <formats/CAsciiGridText.h>
#include <formats/CFilePtr.h>
#include <tests/io/grid/ReadGrid.h>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using namespace std::string_literals;

constexpr double c_dStart = 1.7e200;

/// A header read from a text.
class CHeader
{
public:
    explicit CHeader(const std::string& sText)
    {
        const CMemFile file(sText);
        const CFilePtr pFile(std::fopen(file.GetPath(), "r"));
        CAsciiGridText text(pFile.get());
        m_bResult = m_header.Read(text);
        std::string sLine;
        m_bHasNext = text.GetLine(sLine);
        m_sNext = sLine;
        CRecReadListener rec; // whatever the header, the oracle must agree about the file
        EXPECT_EQ(ReadGridSlowly(sText), ReadGrid(sText)) << sText;
    }

    const CAsciiGridHeader* operator->() const { return &m_header; }
    explicit operator bool() const { return m_bResult; }

    CAsciiGridHeader m_header;
    bool m_bResult;
    bool m_bHasNext;
    std::string m_sNext; ///< the line that follows
};

const std::string c_sSize = "ncols 3\nnrows 2\n";
const std::string c_sCell = "cellsize 10\n";
const std::string c_sNoData = "NODATA_value -1\n";
const std::string c_sCorner = "xllcorner 100\nyllcorner 200\n";
const std::string c_sCentre = "xllcenter 105\nyllcenter 205\n";

TEST(CAsciiGridHeader, Read_StartsUndefined)
{
    const CHeader header("");
    EXPECT_FALSE(header);
    EXPECT_EQ(0, header->nNumRows);
    EXPECT_EQ(0, header->nNumCols);
    for (const double d : {header->dCellSize, header->dXCentre, header->dYCentre, header->dXCorner,
                           header->dYCorner, header->dNoData})
        EXPECT_EQ(c_dStart, d);
}

TEST(CAsciiGridHeader, Read_Fields)
{
    const CHeader header(c_sSize + c_sCorner + c_sCell + c_sNoData + "1 2 3\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(2, header->nNumRows);
    EXPECT_EQ(3, header->nNumCols);
    EXPECT_EQ(10.0, header->dCellSize);
    EXPECT_EQ(100.0, header->dXCorner);
    EXPECT_EQ(200.0, header->dYCorner);
    EXPECT_EQ(-1.0, header->dNoData);
    EXPECT_EQ(c_dStart, header->dXCentre);
    EXPECT_EQ("1 2 3", header.m_sNext);
}

TEST(CAsciiGridHeader, Read_UpperCase)
{
    const CHeader header("NROWS 2\nNCOLS 3\nCELLSIZE 10\nXLLCENTER 7\nYLLCENTER 8\nXLLCORNER 100\n"
                         "YLLCORNER 200\nNODATA_VALUE -1\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(7.0, header->dXCentre);
    EXPECT_EQ(8.0, header->dYCentre);
    EXPECT_EQ(100.0, header->dXCorner);
    EXPECT_EQ(-1.0, header->dNoData);
}

TEST(CAsciiGridHeader, Read_OtherSpellingsFail)
{
    for (const char* sKey : {"nCols 3", "Nrows 2", "NCols 3", "nodata_value -1", "NODATA_Value -1",
                             "Nodata_value -1", "dx 10", "XLLcorner 0", "xllCorner 0", "CellSize 10", "#",
                             "3 4 5", "-9999", "ncols: 3", "\xEF\xBB\xBFncols 3"})
    {
        EXPECT_FALSE(CHeader(sKey + "\n"s + c_sSize + c_sCorner + c_sCell + c_sNoData + "1\n")) << sKey;
        EXPECT_FALSE(CHeader(c_sSize + c_sCorner + sKey + "\n"s + c_sCell + c_sNoData + "1\n")) << sKey;
    }
}

// Behind the last line that is needed everything is data.
TEST(CAsciiGridHeader, Read_EndsWithTheLineThatCompletesIt)
{
    const CHeader header(c_sSize + c_sCorner + c_sNoData + c_sCell + "ncols 7\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(3, header->nNumCols);
    EXPECT_EQ("ncols 7", header.m_sNext);
}

TEST(CAsciiGridHeader, Read_LastOneOfAKeyCounts)
{
    const CHeader header("ncols 1\nncols 9\nNCOLS 3\n" + c_sCorner + "xllcorner 5\n" + c_sCell + c_sNoData +
                         "nrows 2\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(3, header->nNumCols);
    EXPECT_EQ(5.0, header->dXCorner);
}

TEST(CAsciiGridHeader, Read_EveryFieldIsNeeded)
{
    EXPECT_FALSE(CHeader("ncols 3\n" + c_sCorner + c_sCell + c_sNoData));
    EXPECT_FALSE(CHeader("nrows 3\n" + c_sCorner + c_sCell + c_sNoData));
    EXPECT_FALSE(CHeader(c_sSize + c_sCell + c_sNoData));
    EXPECT_FALSE(CHeader(c_sSize + c_sCorner + c_sNoData));
    EXPECT_FALSE(CHeader(c_sSize + c_sCorner + c_sCell)); // the no-data value too
    EXPECT_FALSE(CHeader(c_sSize + "xllcorner 1\nyllcenter 2\n" + c_sCell + c_sNoData));
    EXPECT_FALSE(CHeader(c_sSize + "yllcorner 1\n" + c_sCell + c_sNoData));
    EXPECT_TRUE(CHeader(c_sSize + c_sCentre + c_sCell + c_sNoData));
}

TEST(CAsciiGridHeader, Read_ValuesThatDoNotCount)
{
    for (const char* sRows : {"0", "-1", "x", "-99999999999999999999"})
        EXPECT_FALSE(CHeader("ncols 3\nnrows "s + sRows + "\n" + c_sCorner + c_sCell + c_sNoData)) << sRows;
    for (const char* sCell : {"0", "-1", "nan", "1e200", "8.6e199", "inf", "x"})
        EXPECT_FALSE(CHeader(c_sSize + c_sCorner + "cellsize " + sCell + "\n" + c_sNoData)) << sCell;
    for (const char* sValue : {"nan", "1e200", "8.6e199", "inf"})
    {
        EXPECT_FALSE(CHeader(c_sSize + c_sCorner + c_sCell + "NODATA_value " + sValue + "\n")) << sValue;
        EXPECT_FALSE(CHeader(c_sSize + "xllcorner 1\nyllcorner " + sValue + "\n" + c_sCell + c_sNoData));
    }
    EXPECT_TRUE(CHeader(c_sSize + c_sCorner + "cellsize 8.5e199\n" + c_sNoData));
    EXPECT_TRUE(CHeader(c_sSize + c_sCorner + c_sCell + "NODATA_value -inf\n"));
}

TEST(CAsciiGridHeader, Read_CountsSaturate)
{
    const CHeader header("ncols 4294967297\nnrows 99999999999999999999\n" + c_sCorner + c_sCell + c_sNoData +
                         "1\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(std::numeric_limits<int>::max(), header->nNumCols);
    EXPECT_EQ(std::numeric_limits<int>::max(), header->nNumRows);
}

TEST(CAsciiGridHeader, Read_KeyWithoutValueFails)
{
    for (const char* sLine : {"ncols", "ncols ", "ncols\t", "NODATA_value", " NODATA_value \r"})
        EXPECT_FALSE(CHeader(c_sSize + c_sCorner + c_sCell + sLine + "\n" + c_sNoData + "1\n")) << sLine;
}

// A tab does not separate: the whole line is an unknown key.
TEST(CAsciiGridHeader, Read_TabBetweenKeyAndValueFails)
{
    EXPECT_FALSE(CHeader("ncols\t3\nnrows 2\n" + c_sCorner + c_sCell + c_sNoData + "1\n"));
    EXPECT_FALSE(CHeader("ncols\t 3\nnrows 2\n" + c_sCorner + c_sCell + c_sNoData + "1\n"));
    EXPECT_TRUE(CHeader("ncols \t3\nnrows 2\n" + c_sCorner + c_sCell + c_sNoData + "1\n"));
}

TEST(CAsciiGridHeader, Read_BlanksAndEmptyLines)
{
    const CHeader header("\n\n  ncols    3  \r\n\n\tnrows 2 and more\n" + c_sCorner + "\n\n" + c_sCell +
                         c_sNoData + "\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(3, header->nNumCols);
    EXPECT_EQ(2, header->nNumRows);
    EXPECT_FALSE(CHeader("ncols 3\n \nnrows 2\n" + c_sCorner + c_sCell + c_sNoData + "1\n"));
    EXPECT_TRUE(CHeader("ncols 3\n\r\nnrows 2\n" + c_sCorner + c_sCell + c_sNoData + "1\n"));
    EXPECT_FALSE(CHeader("ncols 3\n \r\nnrows 2\n" + c_sCorner + c_sCell + c_sNoData + "1\n"));
}

TEST(CAsciiGridHeader, Read_CornerFromCentreWhereItIsZero_Kept)
{
    const std::string sRest = c_sSize + c_sCell + c_sNoData;
    const CHeader header("XLLCENTER 105\nYLLCENTER 205\nXLLCORNER 0\nYLLCORNER 0\n" + sRest);
    EXPECT_TRUE(header);
    EXPECT_EQ(100.0, header->dXCorner);
    EXPECT_EQ(200.0, header->dYCorner);
    const CHeader negative(c_sCentre + "xllcorner -0\nyllcorner -0.0\n" + sRest);
    EXPECT_EQ(100.0, negative->dXCorner);
    const CHeader oneZero("xllcenter 0\nyllcenter 205\nxllcorner 0\nyllcorner 0\n" + sRest);
    EXPECT_EQ(-5.0, oneZero->dXCorner);
    EXPECT_EQ(200.0, oneZero->dYCorner);
    const CHeader bothZero("xllcenter 0\nyllcenter 0\nxllcorner 0\nyllcorner 0\n" + sRest);
    EXPECT_EQ(0.0, bothZero->dXCorner);
    const CHeader oneCorner(c_sCentre + "xllcorner 0\nyllcorner 1\n" + sRest);
    EXPECT_EQ(0.0, oneCorner->dXCorner);
    EXPECT_EQ(1.0, oneCorner->dYCorner);
}

TEST(CAsciiGridHeader, Read_CentreAloneLeavesTheCornerUndefined_Kept)
{
    const CHeader header(c_sSize + c_sCentre + c_sCell + c_sNoData + "1 2 3\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(c_dStart, header->dXCorner);
    EXPECT_EQ(c_dStart, header->dYCorner);
}

TEST(CAsciiGridHeader, Read_ZeroCornerWithoutCentreBecomesUndefined_Kept)
{
    const CHeader header(c_sSize + "xllcorner 0\nyllcorner 0\n" + c_sCell + c_sNoData + "1 2 3\n");
    EXPECT_TRUE(header);
    EXPECT_EQ(c_dStart - 5.0, header->dXCorner);
    EXPECT_EQ(c_dStart - 5.0, header->dYCorner);
}

} // namespace
