#include <tests/io/grid/ReadGrid.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

namespace
{

using namespace std::string_literals;
using TCall = CReadCall;

const CReading c_refused{false, {}};

/// What a reading of these points comes to.
CReading Points(const TReadCalls& vecPnts)
{
    TReadCalls vecCalls = {TCall::Type(0), TCall::NumPnts(static_cast<int>(vecPnts.size()))};
    vecCalls.insert(vecCalls.end(), vecPnts.begin(), vecPnts.end());
    vecCalls.push_back(TCall::End());
    return {true, vecCalls};
}

/// Heights read from the rows of a grid of the usual header, which has room for nine by nine.
std::vector<double> Heights(const std::string& sRows)
{
    const CReading reading = ReadGrid(GridHeader(9, 9) + sRows);
    EXPECT_EQ(ReadGridSlowly(GridHeader(9, 9) + sRows), reading);
    std::vector<double> vecZ;
    for (const TCall& call : reading.vecCalls)
        if (call.eKind == TCall::Kind_Pnt)
            vecZ.push_back(call.adPos[2]);
    return vecZ;
}

using THeights = std::vector<double>;

// The upper left corner of each cell, top row first.
TEST(CAsciiGridReader, Read_PointsOnUpperLeftCorners_Kept)
{
    EXPECT_EQ(Points({TCall::Pnt(100, 220, 1), TCall::Pnt(110, 220, 2), TCall::Pnt(120, 220, 3),
                      TCall::Pnt(100, 210, 4), TCall::Pnt(110, 210, 5), TCall::Pnt(120, 210, 6)}),
              ReadGrid(GridHeader(3, 2) + "1 2 3\n4 5 6\n"));
}

TEST(CAsciiGridReader, Read_CellsWithoutDataAreLeftOut)
{
    EXPECT_EQ(Points({TCall::Pnt(110, 220, 2), TCall::Pnt(100, 210, 4)}),
              ReadGrid(GridHeader(3, 2) + "-9999 2 -9999.000\n4 -9.999e3 -09999\n"));
}

TEST(CAsciiGridReader, Read_NoCellWithData_IsRefused)
{
    EXPECT_EQ(c_refused, ReadGrid(GridHeader(2, 2) + "-9999 -9999\n-9999 -9999\n"));
    EXPECT_EQ(c_refused, ReadGrid(GridHeader(2, 2)));
    EXPECT_EQ(c_refused, ReadGrid(GridHeader(2, 2) + "\n\n \n\t\n"));
    EXPECT_EQ(c_refused, ReadGrid(GridHeader(2, 1) + "-9999 -9999\n1 2\n")); // data behind the last row only
    EXPECT_EQ(c_refused, ReadGrid(GridHeader(2, 1) + "-9999 -9999 1\n"));
}

TEST(CAsciiGridReader, Read_MissingFile_IsRefused)
{
    for (const char* sPath : {"", "/no/such/file.asc", "/", ".", "/dev/null"})
        EXPECT_EQ(c_refused, ReadGridFile(sPath)) << sPath;
}

TEST(CAsciiGridReader, Read_RowsAndColumnsBeyondTheHeaderAreIgnored)
{
    EXPECT_EQ(Points({TCall::Pnt(100, 220, 1), TCall::Pnt(110, 220, 2), TCall::Pnt(100, 210, 4),
                      TCall::Pnt(110, 210, 5)}),
              ReadGrid(GridHeader(2, 2) + "1 2 3\n4 5 6 7 8\n9 9\n"));
}

TEST(CAsciiGridReader, Read_ShortRowsHaveFewerPoints)
{
    EXPECT_EQ(Points({TCall::Pnt(100, 230, 1), TCall::Pnt(100, 220, 2), TCall::Pnt(110, 220, 3)}),
              ReadGrid(GridHeader(4, 3) + "1\n2 3"));
}

TEST(CAsciiGridReader, Read_EmptyLinesDoNotCountAsRows)
{
    EXPECT_EQ(Points({TCall::Pnt(100, 220, 1), TCall::Pnt(100, 210, 2)}),
              ReadGrid(GridHeader(1, 2) + "\n\n1\n\n2\n\n3\n"));
}

TEST(CAsciiGridReader, Read_LinesOfBlanksCountAsRows)
{
    EXPECT_EQ(Points({TCall::Pnt(100, 230, 1), TCall::Pnt(100, 210, 2)}),
              ReadGrid(GridHeader(1, 3) + "1\n   \n2\n3\n"));
    for (const char* const sBlanks : {" \r\n", "\r\r\n", "\r \n", "\t\n"})
        EXPECT_EQ(Points({TCall::Pnt(100, 230, 1), TCall::Pnt(100, 210, 2)}),
                  ReadGrid(GridHeader(1, 3) + "1\r\n" + sBlanks + "2\r\n3\r\n"));
}

// A line of nothing but its end is empty, whatever its end is.
TEST(CAsciiGridReader, Read_EmptyLinesWithCarriageReturnsDoNotCount)
{
    const CReading expected =
        Points({TCall::Pnt(100, 230, 1), TCall::Pnt(100, 220, 2), TCall::Pnt(100, 210, 3)});
    EXPECT_EQ(expected, ReadGrid(GridHeader(1, 3) + "\r\n1\r\n\r\n\r\n2\r\n\n3\r\n\r\n"));
    const std::string sHeader = "\r\nncols 1\r\nnrows 3\r\n\r\nxllcorner 100\r\nyllcorner 200\r\n\n\r\n"
                                "cellsize 10\r\nNODATA_value -9999\r\n";
    EXPECT_EQ(expected, ReadGrid(sHeader + "\r\n1\r\n\r\n2\r\n3\r"));
    EXPECT_EQ(c_refused, ReadGrid("\r\r\n" + sHeader + "1\r\n")); // a line of blanks is no key
    // Where the end of a block falls between the two characters.
    for (std::size_t n = 65500; n < 65560; ++n)
    {
        const std::string sText = GridHeader(1, 3) + "1" + std::string(n, ' ') + "\r\n\r\n\r\n2\r\n3\r\n";
        ASSERT_EQ(expected, ReadGrid(sText)) << n;
    }
}

TEST(CAsciiGridReader, Read_CarriageReturnsAreBlanks)
{
    EXPECT_EQ(Points({TCall::Pnt(100, 220, 1), TCall::Pnt(110, 220, 2), TCall::Pnt(100, 210, 3)}),
              ReadGrid("ncols 2\r\nnrows 2\r\n\nxllcorner 100\r\nyllcorner 200\r\ncellsize 10\r\n"
                       "NODATA_value -9999\r\n1 2\r\n3\r\n"));
    EXPECT_EQ(THeights({1, 2}), Heights("1\r 2\r\r"));
}

TEST(CAsciiGridReader, Read_SpacesAroundTokens)
{
    EXPECT_EQ(THeights({1, 2, 3, 4}), Heights("  1    2 3  \n    4\n"));
    EXPECT_EQ(THeights({1, 2, 3}), Heights("\t1 \t 2 \v\f3\t\n"));
}

// Only the space ends a token.
TEST(CAsciiGridReader, Read_TabsDoNotSeparate)
{
    EXPECT_EQ(THeights({1, 4}), Heights("1\t2\t3 4\n"));
    EXPECT_EQ(THeights({1}), Heights("1\n\n"));
}

TEST(CAsciiGridReader, Read_NoLineFeedAtTheEnd)
{
    EXPECT_EQ(THeights({1, 2}), Heights("1 2"));
    EXPECT_EQ(THeights({1, 2}), Heights("1 2 "));
}

TEST(CAsciiGridReader, Read_TokensThatAreNoNumbers)
{
    EXPECT_EQ(THeights({0, 0, 0, 7, 0}), Heights("abc - -- 7up +-3\n"));
    EXPECT_EQ(THeights({0, 1, 2}), Heights("* 1 2\n"));
}

TEST(CAsciiGridReader, Read_NotANumberCountsAsData)
{
    const CReading reading = ReadGrid(GridHeader(2, 1) + "nan -9999\n");
    ASSERT_EQ(4U, reading.vecCalls.size());
    EXPECT_NE(reading.vecCalls[2].adPos[2], reading.vecCalls[2].adPos[2]);
}

TEST(CAsciiGridReader, Read_Numbers)
{
    EXPECT_EQ(THeights({1, -1, 1, 0.5, 5, 100, -0.25, 1e22}), Heights("1 -1 +1 .5 5. 1e2 -2.5E-1 1e22\n"));
    EXPECT_EQ(THeights({0, 0, 16}), Heights("0x10 0X1p3 16,5\n"));
    EXPECT_EQ(THeights({9007199254740992.0, 9007199254740992.0, 9007199254740996.0}),
              Heights("9007199254740992 9007199254740993 9007199254740995\n"));
    EXPECT_EQ(THeights({0.1, 0.1, 123456789012345678.0, 1.0}),
              Heights("0.1 0.10000000000000000 123456789012345678 1.0000000000000000000000000000000\n"));
    EXPECT_EQ(THeights({std::numeric_limits<double>::infinity(), 1e-320}), Heights("1e999 1e-320\n"));
}

TEST(CAsciiGridReader, Read_ZeroByteIsACharacterOfItsToken)
{
    EXPECT_EQ(THeights({1, 3}), Heights("1\0002 3\n"s));
    EXPECT_EQ(THeights({0, 3}), Heights("\0 3\n"s));
    EXPECT_EQ(c_refused, ReadGrid("ncols\0 3\n"s));
}

TEST(CAsciiGridReader, Read_ReportsNoProgress)
{
    const CReading reading = ReadGrid(GridHeader(1, 1) + "1\n");
    for (const TCall& call : reading.vecCalls)
        EXPECT_NE(TCall::Kind_Progress, call.eKind);
}

TEST(CAsciiGridReader, ReadFromFile_FillsACloud)
{
    const CMemFile file(GridHeader(3, 2) + "1 2 3\n4 -9999 6\n");
    CPntCld cld(nullptr);
    EXPECT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_AsciiGrid, file.GetPath()));
    EXPECT_EQ(5, cld.GetNumPnts());
    EXPECT_FALSE(cld.IsWithColor());
    zor::geom::RECT_3D rect;
    EXPECT_TRUE(cld.GetBdry(rect));
    EXPECT_EQ(100.0, rect.xmin);
    EXPECT_EQ(120.0, rect.xmax);
    EXPECT_EQ(6.0, rect.zmax);
}

// Tokens, blanks and skipped columns that lie across the blocks in which the file is read, wherever.
TEST(CAsciiGridReader, Read_AcrossBlocks)
{
    std::string sRows;
    for (int i = 0; i < 15000; ++i)
        sRows += std::to_string(i * 7919 % 100000 / 1000.0) + (i % 100 == 99 ? "\n" : " ");
    for (const int nCols : {100, 98})
        for (int nPad = 0; nPad < 12; ++nPad)
        {
            const std::string sText = GridHeader(nCols, 150) + std::string(1, ' ') +
                                      std::string(static_cast<std::size_t>(nPad), ' ') + sRows;
            ASSERT_TRUE(ReadGridSlowly(sText) == ReadGrid(sText)) << nCols << " columns, " << nPad;
        }
}

// Longer than any block: numbers of many digits, blanks, tokens without a space, lines of header and data.
TEST(CAsciiGridReader, Read_LongerThanBlocks)
{
    for (const std::size_t nLength : {std::size_t{65530}, std::size_t{65536}, std::size_t{300000}})
    {
        const std::string sZeros(nLength, '0');
        const std::string sBlanks(nLength, ' ');
        const std::string sTabs(nLength, '\t');
        const std::string sLetters(nLength, 'x');
        EXPECT_EQ(THeights({1, 2}), Heights(sZeros + "1 2\n"));
        EXPECT_EQ(THeights({0.5, 2}), Heights("0.5" + sZeros + " 2\n"));
        EXPECT_EQ(THeights({1, 2}), Heights("1" + sBlanks + "2" + sBlanks + "\n"));
        EXPECT_EQ(THeights({1, 2}), Heights(sTabs + "1" + sTabs + "7 2"));
        EXPECT_EQ(THeights({1, 2, 3}), Heights("1" + sLetters + " 2\n3" + sLetters));
        EXPECT_EQ(THeights({1}), Heights("1 " + sBlanks));
        const std::string sText = "ncols" + sBlanks + "1\nnrows 1" + sLetters + "\n" +
                                  GridHeader(1, 1).substr(16) + "4 " + sLetters + " " + sLetters + "\n5";
        EXPECT_EQ(Points({TCall::Pnt(100, 210, 4)}), ReadGrid(sText));
        EXPECT_EQ(c_refused, ReadGrid(sLetters));
    }
}

// More cells than one piece of memory holds, with gaps across its end.
TEST(CAsciiGridReader, Read_ManyCells)
{
    std::string sRows;
    for (int i = 0; i < 300000; ++i)
        sRows += (i % 65536 < 3 || i % 7 == 0 ? "-9999" : std::to_string(i)) + (i % 600 == 599 ? "\n" : " ");
    const std::string sText = GridHeader(600, 500) + sRows;
    EXPECT_TRUE(ReadGridSlowly(sText) == ReadGrid(sText));
}

// Whether values wait in memory or the file is read again is not to be seen.
TEST(CAsciiGridReader, Read_SameCallsHoweverManyValuesMayWait)
{
    const CMemFile file(GridHeader(3, 3) + "1 2 -9999\n\n4 -9999 6\n7 x 9 10\n11\n");
    const CReading whole = ReadGridFile(file.GetPath());
    ASSERT_TRUE(whole.bResult);
    for (int nMaxWaiting = 0; nMaxWaiting <= 8; ++nMaxWaiting)
    {
        CRecReadListener rec;
        EXPECT_TRUE(ReadForeign(rec, &rec, PntCldFile_AsciiGrid, file.GetPath(), nMaxWaiting));
        EXPECT_EQ(rec.m_vecCalls, whole.vecCalls) << nMaxWaiting;
    }
}

} // namespace
