// What `convert` makes of files that the library does not take as they are meant, and how it writes.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace
{

const std::string c_sColors = "property uchar red\nproperty uchar green\nproperty uchar blue\n";
const std::string c_sThree = "1 2 3 10 20 30\n4 5 6 40 50 60\n7 8 9 70 80 90\n";

std::string MakeHead(const std::string& sFormat, const std::string& sType, int nCount)
{
    return "ply\nformat " + sFormat + " 1.0\nelement vertex " + std::to_string(nCount) + "\nproperty " +
           sType + " x\nproperty " + sType + " y\nproperty " + sType + " z\n";
}

template <class T>
std::string Pack(T value, bool bBig)
{
    std::string sBytes(sizeof value, '\0');
    std::memcpy(sBytes.data(), &value, sizeof value);
    if (bBig)
        std::reverse(sBytes.begin(), sBytes.end());
    return sBytes;
}

/// The three points of c_sThree.
template <class T>
std::string PackThree(bool bBig)
{
    std::string sBytes;
    for (int i = 0; i < 3; ++i)
    {
        for (int k = 1; k <= 3; ++k)
            sBytes += Pack(static_cast<T>(3 * i + k), bBig);
        for (int k = 1; k <= 3; ++k)
            sBytes += static_cast<char>(30 * i + 10 * k);
    }
    return sBytes;
}

/// The points of a file that the library takes, sorted, a line each: "1.0000,2.0000,3.0000,10,20,30".
std::string GetPnts(const CZorcld& zorcld, const std::string& sFile)
{
    const std::string sCsv = zorcld.GetPath("points.csv");
    const CRun run = zorcld.Run({"points", sFile, "-o", sCsv});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    std::istringstream stream(ReadBytes(sCsv));
    std::vector<std::string> vecLines;
    std::string sLine;
    std::getline(stream, sLine);
    while (std::getline(stream, sLine))
        vecLines.push_back(sLine);
    std::sort(vecLines.begin(), vecLines.end());
    std::string sText;
    for (const std::string& s : vecLines)
        sText += s + '\n';
    return sText;
}

/// Converted to both kinds of files, each holds these points, and nothing is wrong with it.
void ExpectPnts(const CZorcld& zorcld, const std::string& sFile, const std::string& sPnts)
{
    for (const char* pOut : {"out.cld", "out.ply"})
    {
        const std::string sOut = zorcld.GetPath(pOut);
        const CRun run = zorcld.Run({"convert", sFile, sOut});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_EQ(run.sOut, "");
        EXPECT_EQ(GetPnts(zorcld, sOut), sPnts) << pOut;
    }
}

void ExpectCause(const CZorcld& zorcld, const std::string& sFile, const std::string& sCause)
{
    const CRun run = zorcld.Run({"convert", sFile, zorcld.GetPath("none.cld")});
    EXPECT_EQ(run.nStatus, 1) << sCause;
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find(sCause), std::string::npos) << run.sErr;
    EXPECT_EQ(ReadBytes(zorcld.GetPath("none.cld")), "");
}

const std::string c_sThreePnts = "1.0000,2.0000,3.0000,10,20,30\n4.0000,5.0000,6.0000,40,50,60\n"
                                 "7.0000,8.0000,9.0000,70,80,90\n";

} // namespace

TEST(ZorcldConvert, Ply_FormatsAndTypes)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes)
    { ExpectPnts(zorcld, zorcld.Write("in.ply", sBytes), c_sThreePnts); };
    const std::string sEnd = c_sColors + "end_header\n";
    expect(MakeHead("ascii", "float", 3) + sEnd + c_sThree);
    expect(MakeHead("binary_little_endian", "float", 3) + sEnd + PackThree<float>(false));
    expect(MakeHead("binary_little_endian", "double", 3) + sEnd + PackThree<double>(false));
    expect(MakeHead("binary_little_endian", "float64", 3) + sEnd + PackThree<double>(false));
    expect(MakeHead("binary_little_endian", "int16", 3) + sEnd + PackThree<std::int16_t>(false));
    expect(MakeHead("binary_little_endian", "int8", 3) + sEnd + PackThree<std::int8_t>(false));
    expect(MakeHead("binary_big_endian", "float", 3) + sEnd + PackThree<float>(true));
    expect(MakeHead("binary_big_endian", "double", 3) + sEnd + PackThree<double>(true));
    expect(MakeHead("binary_big_endian", "uint32", 3) + sEnd + PackThree<std::uint32_t>(true));
    std::string sSized = sEnd;
    for (std::size_t nPos = 0; (nPos = sSized.find("uchar", nPos)) != std::string::npos;)
        sSized.replace(nPos, 5, "uint8");
    expect(MakeHead("binary_little_endian", "float32", 3) + sSized + PackThree<float>(false));
}

TEST(ZorcldConvert, Ply_ElementsListsAndLineEnds)
{
    const CZorcld zorcld;
    const std::string sFaces = "element face 2\nproperty list uchar int32 i\nproperty bool b\n";
    const std::string sVertices =
        "element vertex 3\nproperty float x\nproperty list int float w\nproperty float y\n"
        "property float z\n";
    std::string sText =
        "ply\nformat ascii 1.0\ncomment a\n" + sFaces + sVertices + c_sColors +
        "end_header\n3 0 1 2 1\n0 0\n1 2 9 9 2 3 10 20 30\n4 0 5 6 40 50 60\n7 1 9 8 9 70 80 90\n";
    ExpectPnts(zorcld, zorcld.Write("in.ply", sText), c_sThreePnts);
    std::string sDos;
    for (const char c : sText)
        sDos += c == '\n' ? std::string("\r\n") : std::string(1, c);
    ExpectPnts(zorcld, zorcld.Write("in.ply", sDos), c_sThreePnts);
    std::replace(sText.begin(), sText.end(), '\n', '\r');
    ExpectPnts(zorcld, zorcld.Write("in.ply", sText), c_sThreePnts);

    std::string sBinary = MakePlyHeader(sFaces + "element vertex 1\nproperty float x\nproperty float y\n"
                                                 "property float z\n");
    sBinary += "\2" + std::string(8, '\0') + "a" + std::string("\0", 1) + "b" + PackFloats({1, 2, 3});
    ExpectPnts(zorcld, zorcld.Write("in.ply", sBinary), "1.0000,2.0000,3.0000\n");
}

TEST(ZorcldConvert, Ply_ColorsOfOtherTypes)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sType, const std::string& sValues, const std::string& sColor)
    {
        std::string sText = MakeHead("ascii", "float", 1);
        for (const char* pName : {"red", "green", "blue"})
            sText += "property " + sType + " " + pName + "\n";
        ExpectPnts(zorcld, zorcld.Write("in.ply", sText + "end_header\n1 2 3 " + sValues + "\n"),
                   "1.0000,2.0000,3.0000," + sColor + "\n");
    };
    expect("float", "0 0.5 1", "0,128,255");
    expect("float", "-1 nan 7", "0,0,255");
    expect("ushort", "65535 256 255", "255,1,0"); // 16 bits in all channels
    expect("ushort", "255 128 0", "255,128,0");
    expect("int", "-5 10 20", "0,10,20");
}

TEST(ZorcldConvert, Ply_Damaged)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes, const std::string& sCause)
    { ExpectCause(zorcld, zorcld.Write("in.ply", sBytes), sCause); };
    const std::string sHead = MakeHead("ascii", "float", 3);
    expect(sHead + "end_header\n1.00 2.00 3.00\n4 5 6\n7 8", "after 2 of 3 vertices");
    expect(sHead + "end_header\n1 2 3\n4 5 6\n7 8 x\n", "after 2 of 3 vertices");
    expect(sHead + "end_header\n1 2 3\n4 5 6\n" + std::string(1000, '7') + " 8 9\n", "after 2 of 3 vertices");
    expect(MakeHead("ascii", "float", 2000000000) + "end_header\n1 2 3\n", "have room for 1 at most");
    expect(MakeHead("binary_big_endian", "float", 3) + "end_header\n" + std::string(35, 'a'), "3 vertices");
    expect(MakeHead("ascii", "quad", 3) + "end_header\n1 2 3\n", "property type not known: 'quad' of x");
    expect(MakeHead("binary_middle", "float", 3) + "end_header\n", "format 'binary_middle' is not known");
    expect(
        "ply\nformat ascii 1.0\nelement face 1\nproperty list int int i\nelement vertex 1\nproperty float x\n"
        "property float y\nproperty float z\nend_header\n4000000000 1 2 3\n",
        "item of element face");
    expect("ply\nformat ascii 1.0\nelement vertex -3\nend_header\n", "has no vertices");
    expect("ply\nformat ascii 1.0\nelement vertex 3", "'end_header' is missing");
    expect("ply\nformat ascii 1.0\nelement vertex three\nend_header\n", "is not a number");
}

TEST(ZorcldConvert, LargeCoordinates_ShiftedInPly)
{
    const CZorcld zorcld;
    const std::string sFile =
        zorcld.Write("in.ply", MakeHead("ascii", "double", 2) +
                                   "end_header\n500123.25 4000234.5 12.5\n500124 4000235 13\n");
    const std::string sCld = zorcld.GetPath("out.cld");
    ASSERT_EQ(zorcld.Run({"convert", sFile, sCld}).nStatus, 0);
    EXPECT_NE(GetPnts(zorcld, sCld).find("500123.2500,4000234.5000,12.5000\n"), std::string::npos);
    const std::string sPly = zorcld.GetPath("out.ply");
    const CRun run = zorcld.Run({"convert", sFile, sPly});
    EXPECT_NE(run.sErr.find("coordinates are shifted: add 500000 4000000 0"), std::string::npos) << run.sErr;
    EXPECT_NE(ReadBytes(sPly).find("comment coordinates are shifted: add 500000 4000000 0\n"),
              std::string::npos);
    EXPECT_NE(GetPnts(zorcld, sPly).find("124.0000,235.0000,13.0000"), std::string::npos);
    const std::string sWide =
        zorcld.Write("wide.ply", MakeHead("ascii", "double", 2) + "end_header\n0 0 0\n100000 0 0\n");
    const CRun wide = zorcld.Run({"convert", sWide, sPly});
    EXPECT_NE(wide.sErr.find("floats lie up to 0.0078 units apart"), std::string::npos) << wide.sErr;
}

TEST(ZorcldConvert, FarPnts_FirstChosenOrLeftOut)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("out.cld");
    const auto convert = [&](const std::string& sPnts, int nCount)
    {
        const CRun run = zorcld.Run(
            {"convert", zorcld.Write("in.ply", MakeHead("ascii", "double", nCount) + "end_header\n" + sPnts),
             sOut});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return run.sErr;
    };
    // All lie within reach of the second point, not of the first.
    EXPECT_NE(convert("0 0 0\n200000 1 1\n400000 2 2\n", 3).find("another point comes first"),
              std::string::npos);
    EXPECT_EQ(GetPnts(zorcld, sOut),
              "0.0000,0.0000,0.0000\n200000.0000,1.0000,1.0000\n400000.0000,2.0000,2.0000\n");
    const std::string sErr = convert("0 0 0\n600000 1 1\n600001 2 2\nnan 1 1\n", 4);
    EXPECT_NE(sErr.find("1 point more than 214748 units from the others is left out"), std::string::npos)
        << sErr;
    EXPECT_NE(sErr.find("1 point whose coordinates are not numbers"), std::string::npos) << sErr;
    EXPECT_EQ(GetPnts(zorcld, sOut), "600000.0000,1.0000,1.0000\n600001.0000,2.0000,2.0000\n");
    ExpectCause(
        zorcld,
        zorcld.Write("in.ply", MakeHead("ascii", "double", 3) + "end_header\n0 0 0\n1e6 1 1\n2e6 2 2\n"),
        "lie too far apart");
}

TEST(ZorcldConvert, Las_KeepsColorsOfEveryFormat)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    const CZorcld zorcld;
    for (const int nFormat : {2, 3, 5, 7, 8, 10})
    {
        CLasFile las = LasOf(nFormat, 2);
        las.adScale = {0.25, 0.25, 0.25};
        las.vecPnts[0].anColor = {0x1234, 0x00FF, 0xFFFF}; // of 16 bits: all channels alike
        las.vecPnts[1].anColor = {0, 0x0100, 0x8000};
        ExpectPnts(zorcld, zorcld.Write("in.las", las.GetBytes()),
                   "0.0000,0.0000,25.0000,18,0,255\n0.2500,-0.5000,25.2500,0,1,128\n");
    }
    CLasFile cut = LasOf(1, 2);
    cut.adScale = {0.25, 0.25, 0.25};
    cut.nAnnounced = 5;
    ExpectPnts(zorcld, zorcld.Write("in.las", cut.GetBytes()),
               "0.0000,0.0000,25.0000\n0.2500,-0.5000,25.2500\n");
    ExpectCause(zorcld, zorcld.Write("in.las", LasOf(1, 0).GetBytes()), "holds no points");
}

TEST(ZorcldConvert, Grid_AsItsHeaderMeansIt)
{
    const CZorcld zorcld;
    const std::string sPnts = "10.0000,25.0000,3.0000\n10.0000,30.0000,1.0000\n15.0000,30.0000,2.0000\n";
    const auto expect = [&](const std::string& sHead, const std::string& sCells)
    { ExpectPnts(zorcld, zorcld.Write("in.asc", sHead + sCells), sPnts); };
    const std::string sCells = "1 2\n3 -1\n";
    expect("ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value -1\n", sCells);
    expect("nCols 2\nnRows 2\nXllCenter 12.5\nyllcenter 22.5\nCellsize 5\nnodata_value -1\n", sCells);
    expect("ncols\t2\nnrows\t2\nxllcorner\t10\nyllcenter\t22.5\ncellsize\t5\nnodata\t-1\n", "1\t2\n3\t-1\n");
    expect("ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value nan\n", "1 2\n3 nan\n");
    expect("ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\n", "1 2\r\n3\r\n");
    ExpectPnts(zorcld,
               zorcld.Write("in.asc",
                            "ncols 1\nnrows 1\nxllcorner 0\nyllcorner 0\ncellsize 5\nNODATA_value -1\n7\n"),
               "0.0000,5.0000,7.0000\n");
}

// What is saved is saved again as it is; an octree that is cut off is built anew over all points.
// What convert mends is no loss: it says nothing of it. Far coordinates do not fill the line.
TEST(ZorcldConvert, Notes_AreTrue)
{
    const CZorcld zorcld;
    const std::string sHead = "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value -1\n";
    const CRun tabs =
        zorcld.Run({"convert", zorcld.Write("t.asc", sHead + "1\t2\n3\t4\n"), zorcld.GetPath("o.ply")});
    EXPECT_EQ(tabs.nStatus, 0);
    EXPECT_EQ(tabs.sErr.find("tabs"), std::string::npos) << tabs.sErr;
    EXPECT_NE(tabs.sErr.find("4 points"), std::string::npos) << tabs.sErr;
    const CRun empty = zorcld.Run(
        {"convert", zorcld.Write("e.asc", sHead + "\r\n1 2\r\n\r\n3 4\r\n"), zorcld.GetPath("o.ply")});
    EXPECT_NE(empty.sErr.find("4 points"), std::string::npos) << empty.sErr;
    const CRun far =
        zorcld.Run({"convert", zorcld.Write("far.ply", MakePly({1e38F, 0, 0})), zorcld.GetPath("o.ply")});
    EXPECT_LT(far.sErr.size(), 300U) << far.sErr;
}

TEST(ZorcldConvert, Native)
{
    const CZorcld zorcld;
    const std::string sFirst = zorcld.GetPath("first.cld");
    const std::string sSecond = zorcld.GetPath("second.cld");
    ASSERT_EQ(zorcld.Run({"convert", zorcld.Write("grid.ply", MakeGridPly(30)), sFirst}).nStatus, 0);
    ASSERT_EQ(zorcld.Run({"convert", sFirst, sSecond}).nStatus, 0);
    const std::string sBytes = ReadBytes(sFirst);
    EXPECT_EQ(sBytes, ReadBytes(sSecond));
    const std::string sCut = zorcld.Write("cut.cld", sBytes.substr(0, sBytes.size() - 100));
    EXPECT_EQ(zorcld.Run({"check", sCut}).nStatus, 3);
    ASSERT_EQ(zorcld.Run({"convert", sCut, sSecond}).nStatus, 0);
    EXPECT_EQ(zorcld.Run({"check", sSecond}).nStatus, 0);
    EXPECT_EQ(GetPnts(zorcld, sFirst), GetPnts(zorcld, sSecond));
    ExpectPnts(zorcld, sFirst, GetPnts(zorcld, sFirst));
    // In its own place.
    ASSERT_EQ(zorcld.Run({"convert", sCut, sCut, "--force"}).nStatus, 0);
    EXPECT_EQ(zorcld.Run({"check", sCut}).nStatus, 0);
}

TEST(ZorcldConvert, Output_FailedSaveLeavesTheOldFile)
{
    if (CZorcld::IsSanitized())
        GTEST_SKIP() << "sanitizers write more than can be forbidden";
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(200));
    for (const char* pOut : {"out.cld", "out.ply"})
    {
        const std::string sOut = zorcld.Write(pOut, "old");
        const CRun run = zorcld.RunAfter("trap '' 25; ulimit -f 100;", {"convert", sFile, sOut});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("could not be written: File too large"), std::string::npos) << run.sErr;
        EXPECT_EQ(ReadBytes(sOut), "old");
    }
    EXPECT_EQ(zorcld.CountFiles(), 3U);
    EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("missing/out.cld")}).nStatus, 1);
    EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("out.csv")}).nStatus, 2);
    ASSERT_EQ(symlink("/dev/full", zorcld.GetPath("full.cld").c_str()), 0);
    const CRun device = zorcld.Run({"convert", sFile, zorcld.GetPath("full.cld")});
    EXPECT_EQ(device.nStatus, 1);
    EXPECT_NE(device.sErr.find("not a regular file"), std::string::npos) << device.sErr;
    EXPECT_EQ(zorcld.CountFiles(), 4U);
}

// By its own name or another: the file that is read is not what is written.
TEST(ZorcldConvert, Output_OverTheInputOnlyWhenForced)
{
    const CZorcld zorcld;
    const std::string sBytes = MakeHead("ascii", "float", 3) + c_sColors + "end_header\n" + c_sThree;
    const std::string sFile = zorcld.Write("a.ply", sBytes);
    std::filesystem::create_symlink(sFile, zorcld.GetPath("soft.ply"));
    std::filesystem::create_hard_link(sFile, zorcld.GetPath("hard.ply"));
    std::filesystem::create_directory(zorcld.GetPath("folder"));
    for (const char* pName : {"a.ply", "./a.ply", "folder/../a.ply", "soft.ply", "hard.ply"})
    {
        const CRun run = zorcld.Run({"convert", sFile, zorcld.GetPath(pName)});
        EXPECT_EQ(run.nStatus, 2) << pName;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("is the file that is read (--force replaces it)"), std::string::npos)
            << run.sErr;
        EXPECT_EQ(ReadBytes(sFile), sBytes);
    }
    EXPECT_EQ(zorcld.Run({"convert", zorcld.GetPath("soft.ply"), sFile}).nStatus, 2);
    EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("soft.ply"), "--force"}).nStatus, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(zorcld.GetPath("soft.ply")));
    EXPECT_EQ(GetPnts(zorcld, sFile), c_sThreePnts);
}

// What was there stays whole until all of the new file is.
TEST(ZorcldConvert, Output_OtherCommandsToo)
{
    if (CZorcld::IsSanitized())
        GTEST_SKIP() << "sanitizers write more than can be forbidden";
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(200));
    for (const char* pCommand : {"points", "ground"})
        for (const char* pOut : {"out.ply", "out.csv", "out.cld"})
        {
            if (pCommand == std::string("points") && pOut == std::string("out.cld"))
                continue;
            const std::string sOut = zorcld.Write(pOut, "old");
            const CRun run = zorcld.RunAfter("trap '' 25; ulimit -f 100;", {pCommand, sFile, "-o", sOut});
            EXPECT_EQ(run.nStatus, 1) << pCommand << pOut;
            EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
            EXPECT_EQ(ReadBytes(sOut), "old") << pCommand << pOut;
            EXPECT_EQ(zorcld.Run({pCommand, sFile, "-o", sOut}).nStatus, 0) << pCommand << pOut;
            EXPECT_GT(ReadBytes(sOut).size(), 1000U) << pCommand << pOut;
        }
    EXPECT_EQ(zorcld.CountFiles(), 4U);
}

// Interrupted while it writes, the program leaves nothing.
TEST(ZorcldConvert, Output_InterruptedLeavesNothing)
{
    const CZorcld zorcld;
    const CRun run =
        zorcld.RunUntilItWrites("INT", {"make-sample", zorcld.GetPath("big.ply"), "--points", "500000000"});
    EXPECT_NE(run.nStatus, 0);
    EXPECT_EQ(zorcld.CountFiles(), 0U);
}
