#include <tests/io/ply/PlyBytes.h>
#include <tests/io/ply/ReadPly.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

using TCall = CReadCall;

/// The calls of a file of vertices without colour, from its points to the end.
TReadCalls CallsOfXyz(int nNumVertices)
{
    TReadCalls vecCalls = {TCall::Type(0), TCall::NumPnts(nNumVertices)};
    for (int i = 0; i < nNumVertices; ++i)
        vecCalls.push_back(TCall::Pnt(i, i + 0.25, i + 0.5));
    vecCalls.push_back(TCall::End());
    return vecCalls;
}

/// The progress values of a reading.
std::vector<int> ProgressOf(const CReading& reading)
{
    std::vector<int> vecPos;
    for (const CReadCall& call : reading.vecCalls)
        if (call.eKind == TCall::Kind_Progress)
            vecPos.push_back(call.nValue);
    return vecPos;
}

TEST(CPlyReader, Read_ColorVerticesAndAFace)
{
    const CReading reading = ReadPly(PlyOfTriangle(), true);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(TReadCalls({TCall::Type(1), TCall::NumPnts(3), TCall::Progress(0),
                          TCall::ColorPnt(0, 0, 0, 255, 0, 0), TCall::Progress(16),
                          TCall::ColorPnt(1, 0, 0.5, 0, 255, 0), TCall::Progress(33),
                          TCall::ColorPnt(0, 1, -2, 0, 0, 255), TCall::Progress(50), TCall::End()}),
              reading.vecCalls);
}

TEST(CPlyReader, Read_WithoutProgressObjectMakesTheSameOtherCalls)
{
    const CReading reading = ReadPly(PlyOfTriangle());
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(TReadCalls({TCall::Type(1), TCall::NumPnts(3), TCall::ColorPnt(0, 0, 0, 255, 0, 0),
                          TCall::ColorPnt(1, 0, 0.5, 0, 255, 0), TCall::ColorPnt(0, 1, -2, 0, 0, 255),
                          TCall::End()}),
              reading.vecCalls);
}

TEST(CPlyReader, Read_WithoutAllThreeChannelsIsWithoutColor)
{
    const std::string sFile = c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz +
                              "property uchar red\nproperty uchar green\nend_header\n" + Floats({1, 2, 3}) +
                              Bytes({4, 5});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(1, 2, 3), TCall::End()}),
              ReadPly(sFile).vecCalls);
}

TEST(CPlyReader, Read_BlankBehindTheNameOfXMakesItFail)
{
    const std::string sFile = c_sPlyMagic +
                              "element vertex 1\nproperty float x \nproperty float y\nproperty float z\n"
                              "end_header\n" +
                              Floats({1, 2, 3});
    EXPECT_EQ((CReading{false, {}}), ReadPly(sFile, true));
}

TEST(CPlyReader, Read_ListsAcrossSeveralWindows)
{
    // 255 doubles a list: each is a fifth of the window, and their ends fall everywhere.
    const std::string sList = Bytes({255}) + std::string(255 * 8, 'l');
    std::string sFile = c_sPlyMagic + "element face 100\nproperty list uchar double a\nproperty char b\n" +
                        "property list uchar double c\nelement vertex 2\n" + c_sPlyXyz + "end_header\n";
    for (int i = 0; i < 100; ++i)
        sFile += sList + Bytes({i}) + sList;
    sFile += Floats({0, 0.25F, 0.5F, 1, 1.25F, 1.5F});
    const CReading reading = ReadPly(sFile);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(CallsOfXyz(2), reading.vecCalls);
}

TEST(CPlyReader, Read_EmptyLists)
{
    const std::string sFile =
        c_sPlyMagic + "element face 30000\nproperty list uchar double a\nelement vertex 1\n" + c_sPlyXyz +
        "end_header\n" + std::string(30000, '\0') + Floats({0, 0.25F, 0.5F});
    const CReading reading = ReadPly(sFile);
    EXPECT_TRUE(reading.bResult);
    EXPECT_EQ(CallsOfXyz(1), reading.vecCalls);
}

TEST(CPlyReader, Read_ListInsideTheVertex)
{
    const std::string sFile =
        c_sPlyMagic +
        "element vertex 2\nproperty float x\nproperty list uchar short l\nproperty float y\n"
        "property float z\nend_header\n" +
        Floats({1}) + Bytes({2, 9, 9, 9, 9}) + Floats({2, 3}) + Floats({4}) + Bytes({0}) + Floats({5, 6});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(2), TCall::Pnt(1, 2, 3), TCall::Pnt(4, 5, 6),
                          TCall::End()}),
              ReadPly(sFile).vecCalls);
}

TEST(CPlyReader, Read_PropertiesOfEverySizeAroundThePoint)
{
    const std::string sFile =
        c_sPlyMagic +
        "element vertex 1\nproperty double a\nproperty uchar blue\nproperty float z\nproperty short b\n"
        "property float x\nproperty char c\nproperty uchar red\nproperty float y\nproperty uchar green\n"
        "property uint d\nend_header\n" +
        BytesOf(7.0) + Bytes({3}) + Floats({30}) + Bytes({8, 8}) + Floats({10}) + Bytes({8, 1}) +
        Floats({20}) + Bytes({2, 8, 8, 8, 8});
    EXPECT_EQ(
        TReadCalls({TCall::Type(1), TCall::NumPnts(1), TCall::ColorPnt(10, 20, 30, 1, 2, 3), TCall::End()}),
        ReadPly(sFile).vecCalls);
}

TEST(CPlyReader, Read_ManyWindows)
{
    for (const int nNum : {832, 833, 834, 1666, 1667, 20000})
    {
        const CReading reading = ReadPly(PlyOfXyz(nNum));
        EXPECT_TRUE(reading.bResult) << nNum;
        EXPECT_EQ(CallsOfXyz(nNum), reading.vecCalls) << nNum;
    }
}

TEST(CPlyReader, Read_ItemLargerThanTheWindow)
{
    std::string sFile = c_sPlyMagic + "element vertex 3\nproperty float x\n";
    for (int i = 0; i < 1500; ++i)
        sFile += "property double p\n";
    sFile += "property float y\nproperty float z\nend_header\n";
    for (const float f : {0.0F, 1.0F, 2.0F})
        sFile += Floats({f}) + std::string(1500 * 8, 'p') + Floats({f + 0.25F, f + 0.5F});
    EXPECT_EQ(CallsOfXyz(3), ReadPly(sFile).vecCalls);
}

// Coordinates are four bytes taken as a float: of a double its low half.
TEST(CPlyReader, Read_DoubleCoordinatesAreTakenAsFloats_Kept)
{
    const std::string sFile = c_sPlyMagic +
                              "element vertex 1\nproperty double x\nproperty double y\nproperty float64 z\n"
                              "end_header\n" +
                              Floats({1.5F, -1}) + BytesOf(2.0) + Floats({3});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(1.5, 0, 3), TCall::End()}),
              ReadPly(sFile).vecCalls);
}

// A coordinate of another type gives its bytes, filled up with zeros, as a float.
TEST(CPlyReader, Read_IntegerCoordinatesAreTakenAsFloats_Kept)
{
    const std::string sFile =
        c_sPlyMagic + "element vertex 2\nproperty int x\nproperty ushort y\nproperty char z\nend_header\n" +
        BytesOf(0x40000000) + Bytes({1, 0, 0}) + BytesOf(0x3f800000) + Bytes({0, 0, 2});
    const double dTiny = std::ldexp(1.0, -149);
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(2), TCall::Pnt(2, dTiny, 0),
                          TCall::Pnt(1, 0, 2 * dTiny), TCall::End()}),
              ReadPly(sFile).vecCalls);
}

// A colour is the first byte of its value, whatever its type.
TEST(CPlyReader, Read_ColorsAreTheFirstByte_Kept)
{
    const std::string sFile =
        c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz +
        "property ushort red\nproperty float green\nproperty double blue\nend_header\n" + Floats({1, 2, 3}) +
        Bytes({10, 99}) + Bytes({20, 99, 99, 99}) + Bytes({30, 99, 99, 99, 99, 99, 99, 99});
    EXPECT_EQ(
        TReadCalls({TCall::Type(1), TCall::NumPnts(1), TCall::ColorPnt(1, 2, 3, 10, 20, 30), TCall::End()}),
        ReadPly(sFile).vecCalls);
}

// A list has a role by its name but no value.
TEST(CPlyReader, Read_ListNamedXIsZero_Kept)
{
    const std::string sFile =
        c_sPlyMagic +
        "element vertex 1\nproperty list uchar float x\nproperty float y\nproperty float z\n"
        "end_header\n" +
        Bytes({1}) + Floats({9, 2, 3});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(0, 2, 3), TCall::End()}),
              ReadPly(sFile).vecCalls);
}

TEST(CPlyReader, Read_OfTwoPropertiesOfOneNameTheLastCounts)
{
    const std::string sFile = c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz +
                              "property float x\nend_header\n" + Floats({1, 2, 3, 4});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(4, 2, 3), TCall::End()}),
              ReadPly(sFile).vecCalls);
    const std::string sNarrow = c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz +
                                "property char x\nend_header\n" + Floats({1, 2, 3}) + Bytes({0});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(0, 2, 3), TCall::End()}),
              ReadPly(sNarrow).vecCalls);
}

// Sized integer types are read as four bytes each.
TEST(CPlyReader, Read_SizedTypesGoByPrefix_Kept)
{
    const std::string sFile = c_sPlyMagic +
                              "element vertex 1\nproperty float32 x\nproperty float32 y\nproperty float32 z\n"
                              "property uint8 red\nproperty uint16 green\nproperty int8 blue\nend_header\n" +
                              Floats({1, 2, 3}) + Bytes({10, 0, 0, 0, 20, 0, 0, 0, 30, 0, 0, 0});
    EXPECT_EQ(
        TReadCalls({TCall::Type(1), TCall::NumPnts(1), TCall::ColorPnt(1, 2, 3, 10, 20, 30), TCall::End()}),
        ReadPly(sFile).vecCalls);
}

TEST(CPlyReader, Read_NotANumberIsHandedOn)
{
    const float fNan = std::nanf("");
    const float fInf = std::numeric_limits<float>::infinity();
    const std::string sFile =
        c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz + "end_header\n" + Floats({fNan, fInf, -fInf});
    const CReading reading = ReadPly(sFile);
    ASSERT_EQ(4U, reading.vecCalls.size());
    EXPECT_TRUE(std::isnan(reading.vecCalls[2].adPos[0]));
    EXPECT_TRUE(std::isinf(reading.vecCalls[2].adPos[1]));
}

TEST(CPlyReader, Read_CarriageReturnsInTheHeader)
{
    std::string sFile = PlyOfXyz(3);
    const std::size_t nEnd = sFile.find("end_header\n") + std::string("end_header\n").size();
    std::string sHeader = sFile.substr(0, nEnd);
    for (std::size_t n = sHeader.find('\n'); n != std::string::npos; n = sHeader.find('\n', n + 2))
        sHeader.insert(n, 1, '\r');
    EXPECT_EQ(CallsOfXyz(3), ReadPly(sHeader + sFile.substr(nEnd)).vecCalls);
}

TEST(CPlyReader, Read_LineEndsInTheDataAreData)
{
    const std::string sHeader = c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz + "end_header\n";
    const CReading reading = ReadPly(sHeader + "\r\n\r\n" + "\n\n\n\n" + "\r\r\r\r");
    EXPECT_TRUE(reading.bResult);
    ASSERT_EQ(4U, reading.vecCalls.size());
    EXPECT_EQ(BytesOf(0x0a0d0a0d), BytesOf(static_cast<float>(reading.vecCalls[2].adPos[0])));
    EXPECT_EQ(BytesOf(0x0a0a0a0a), BytesOf(static_cast<float>(reading.vecCalls[2].adPos[1])));
    EXPECT_EQ(BytesOf(0x0d0d0d0d), BytesOf(static_cast<float>(reading.vecCalls[2].adPos[2])));
}

TEST(CPlyReader, Read_BytesBehindTheLastItemAreNotLookedAt)
{
    EXPECT_EQ(CallsOfXyz(2), ReadPly(PlyOfXyz(2) + std::string(30000, 'x')).vecCalls);
}

TEST(CPlyReader, Read_TwoVertexElementsAreAnnouncedTwice)
{
    const std::string sFile = c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz + "element vertex 1\n" +
                              c_sPlyXyz + c_sPlyRgb + "end_header\n" + Floats({1, 2, 3, 4, 5, 6}) +
                              Bytes({7, 8, 9});
    EXPECT_EQ(TReadCalls({TCall::Type(0), TCall::NumPnts(1), TCall::Pnt(1, 2, 3), TCall::Type(1),
                          TCall::NumPnts(1), TCall::ColorPnt(4, 5, 6, 7, 8, 9), TCall::End()}),
              ReadPly(sFile).vecCalls);
}

// A file of other elements is read to its end: it has an end, and no points.
TEST(CPlyReader, Read_WithoutVertexElementOnlyEnds_Kept)
{
    const std::string sFile = c_sPlyMagic + "element face 2\nproperty char a\nend_header\n" + Bytes({1, 2});
    EXPECT_EQ((CReading{true, {TCall::End()}}), ReadPly(sFile));
    EXPECT_EQ((CReading{true, {TCall::Progress(0), TCall::Progress(50), TCall::End()}}),
              ReadPly(sFile, true));
}

// A header cut off behind a complete element without properties reads like a whole one.
TEST(CPlyReader, Read_CutOffHeaderWithNothingToReadSucceeds_Kept)
{
    EXPECT_EQ((CReading{true, {TCall::End()}}), ReadPly(c_sPlyMagic + "element a 1\nelement b 2\n"));
}

// The last value of the file may be cut off: what it lacks is what the window held there before.
TEST(CPlyReader, Read_CutOffValueKeepsOldBytes_Kept)
{
    const std::string sHeader = c_sPlyMagic + "element vertex 1\n" + c_sPlyXyz + "end_header\n";
    const std::string sX = "\x01\x02\x80\x3f"; // the window is filled anew from z on: these are in its place
    const std::string sFile = sHeader + sX + Floats({2}) + "\x55\x66";
    float fX = 0.0F;
    float fZ = 0.0F;
    std::memcpy(&fX, sX.data(), 4);
    std::memcpy(&fZ, ("\x55\x66" + sX.substr(2)).data(), 4);
    EXPECT_EQ((CReading{true,
                        {TCall::Type(0), TCall::NumPnts(1),
                         TCall::Pnt(static_cast<double>(fX), 2, static_cast<double>(fZ)), TCall::End()}}),
              ReadPly(sFile));
}

TEST(CPlyReader, Read_ListEntriesBehindTheEndOfTheFileAreNotMissed)
{
    const std::string sFile =
        c_sPlyMagic + "element face 1\nproperty list uchar int a\nend_header\n" + Bytes({200});
    EXPECT_EQ((CReading{true, {TCall::End()}}), ReadPly(sFile));
    const std::string sTwo =
        c_sPlyMagic + "element face 2\nproperty list uchar int a\nend_header\n" + Bytes({200, 0});
    EXPECT_EQ((CReading{false, {}}), ReadPly(sTwo));
}

TEST(CPlyReader, Progress_IsTheIntegerPartOfTheShareDone)
{
    std::vector<int> vecExpected;
    for (int i = 0; i < 1000; ++i)
        vecExpected.push_back(static_cast<int>(100 * (i / 1000.0)));
    EXPECT_EQ(vecExpected, ProgressOf(ReadPly(PlyOfXyz(1000), true)));
}

TEST(CPlyReader, Progress_GivesEachElementTheSameShare)
{
    const std::string sFile =
        c_sPlyMagic +
        "element a 3\nproperty char p\nelement b 1\nelement c 2\nproperty list uchar char l\n"
        "end_header\n" +
        Bytes({1, 2, 3, 0, 0});
    EXPECT_EQ(std::vector<int>({0, 11, 22, 33, 66, 82}), ProgressOf(ReadPly(sFile, true)));
}

// The share is a whole number: of more than a hundred elements nothing is reported.
TEST(CPlyReader, Progress_ShareIsRoundedDown_Kept)
{
    std::string sLines;
    for (int i = 0; i < 101; ++i)
        sLines += "element a 1\n";
    EXPECT_EQ(std::vector<int>(101, 0), ProgressOf(ReadPly(c_sPlyMagic + sLines + "end_header\n", true)));
}

TEST(CPlyReader, Progress_IsReportedForTheItemThatFails)
{
    const std::string sFile = PlyOfXyz(4);
    const CReading reading = ReadPly(sFile.substr(0, sFile.size() - 12), true);
    EXPECT_FALSE(reading.bResult);
    EXPECT_EQ(std::vector<int>({0, 25, 50, 75}), ProgressOf(reading));
}

// One call an item, but not two thousand million where there is nothing to read.
TEST(CPlyReader, Progress_ItemsWithoutPropertiesAreToldAThousandTimesAtMost)
{
    const auto read = [](const std::string& sElements)
    { return ProgressOf(ReadPly(c_sPlyMagic + sElements + "end_header\n", true)); };
    EXPECT_EQ(std::vector<int>({0, 16, 33, 50}), read("element a 3\nelement b 1\n"));
    EXPECT_EQ(999U, read("element a 999\n").size());
    for (const char* const sCount : {"1000", "1001", "54321", "2000000000", "2147483647"})
    {
        const std::vector<int> vecProgress = read("element a " + std::string(sCount) + "\n");
        EXPECT_GE(vecProgress.size(), 100U);
        EXPECT_LE(vecProgress.size(), 1000U);
        EXPECT_EQ(0, vecProgress.front());
        EXPECT_EQ(99, vecProgress.back());
        EXPECT_TRUE(std::is_sorted(vecProgress.begin(), vecProgress.end()));
    }
}

TEST(CPlyReader, Read_ItemsWithoutPropertiesTakeNoTime)
{
    std::string sLines;
    for (int i = 0; i < 100; ++i)
        sLines += "element a 2147483647\n";
    EXPECT_EQ((CReading{true, {TCall::End()}}), ReadPly(c_sPlyMagic + sLines + "end_header\n"));
}

TEST(CPlyReader, ReadFromFile_FillsACloud)
{
    const CMemFile file(PlyOfTriangle());
    CPntCld cld(nullptr);
    ASSERT_TRUE(cld.ReadFromFile(nullptr, PntCldFile_Ply, file.GetPath()));
    EXPECT_TRUE(cld.IsWithColor());
    EXPECT_EQ(3, cld.GetNumPnts());
    zor::geom::RECT_3D rect;
    ASSERT_TRUE(cld.GetBdry(rect));
    EXPECT_EQ(-2.0, rect.zmin);
    EXPECT_EQ(0.5, rect.zmax);
}

TEST(CPlyReader, ReadFromFile_FailedLeavesThePointsAndNoOctree)
{
    const std::string sFile = PlyOfXyz(5);
    const CMemFile file(sFile.substr(0, sFile.size() - 20));
    CPntCld cld(nullptr);
    EXPECT_FALSE(cld.ReadFromFile(nullptr, PntCldFile_Ply, file.GetPath()));
    EXPECT_EQ(PntCldFile_Ply, cld.GetFileType());
    EXPECT_EQ(0, cld.GetFilePath().Compare(file.GetPath()));
    EXPECT_EQ(5, cld.GetNumPnts()); // as announced
    zor::geom::PNT_3D pnt;
    cld.GetPnt(2, pnt);
    EXPECT_EQ(2.25, pnt.y);
    zor::geom::RECT_3D rect;
    EXPECT_FALSE(cld.GetBdry(rect));
}

} // namespace
