// What `check` says of files that would not load as they are meant, and its exit status.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace
{

const std::string c_sXyz = "property float x\nproperty float y\nproperty float z\n";
const std::string c_sGridHead = "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value -1\n";

/// Of one file, from --json.
nlohmann::json Check(const CZorcld& zorcld, const std::string& sFile, int nStatus)
{
    const CRun run = zorcld.Run({"check", "--json", sFile});
    EXPECT_EQ(run.nStatus, nStatus) << sFile << run.sOut;
    EXPECT_EQ(run.sErr, "") << sFile;
    return nlohmann::json::parse(run.sOut)["files"][0];
}

/// The file loads, and exactly these are its warnings.
nlohmann::json ExpectWarnings(const CZorcld& zorcld, const std::string& sFile,
                              const std::vector<std::string>& vecCodes)
{
    const nlohmann::json file = Check(zorcld, sFile, vecCodes.empty() ? 0 : 3);
    std::vector<std::string> vecFound;
    for (const nlohmann::json& warning : file["warnings"])
        vecFound.push_back(warning["code"]);
    EXPECT_EQ(vecFound, vecCodes) << file.dump(1);
    EXPECT_EQ(file["status"], vecCodes.empty() ? "ok" : "warnings");
    return file;
}

void ExpectCause(const CZorcld& zorcld, const std::string& sFile, const std::string& sCause, bool bConvert)
{
    const nlohmann::json file = Check(zorcld, sFile, 1);
    EXPECT_EQ(file["status"], "unreadable");
    EXPECT_NE(file["cause"].get<std::string>().find(sCause), std::string::npos) << file.dump(1);
    EXPECT_EQ(file["help"].is_string(), bConvert) << file.dump(1);
}

std::string MakeVertices(const std::string& sProps, const std::string& sData, int nCount = 1)
{
    return MakePlyHeader("element vertex " + std::to_string(nCount) + "\n" + sProps) + sData;
}

std::string MakeDoublePly()
{
    return MakeVertices("property double x\nproperty double y\nproperty double z\n", std::string(24, '\0'));
}

} // namespace

TEST(ZorcldCheck, Ply_Types)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes, const std::vector<std::string>& vecCodes)
    { ExpectWarnings(zorcld, zorcld.Write("file.ply", sBytes), vecCodes); };
    const std::string sFloats = PackFloats({1, 2, 3});
    expect(MakePly({1, 2, 3}), {});
    expect(MakeVertices("property float32 x\nproperty float32 y\nproperty float32 z\n", sFloats), {});
    expect(MakeVertices("property double x\nproperty double y\nproperty double z\n", std::string(24, '\0')),
           {"ply-coordinates"});
    expect(
        MakeVertices("property float64 x\nproperty float64 y\nproperty float64 z\n", std::string(24, '\0')),
        {"ply-coordinates", "ply-sized-types"});
    const std::string sSized = c_sXyz + "property uint8 red\nproperty uint8 green\nproperty uint8 blue\n";
    const std::string sTail = "element face 1\nproperty list uchar int i\n"; // room for what is read too much
    expect(MakePlyHeader("element vertex 1\n" + sSized + sTail) + sFloats + "abc" + "\4" +
               std::string(16, '\0'),
           {"ply-sized-types"});
    expect(MakeVertices(c_sXyz + "property uchar red\n", sFloats + "a"), {"ply-color-missing"});
    const std::string sShorts = "property ushort red\nproperty ushort green\nproperty ushort blue\n";
    expect(MakeVertices(c_sXyz + sShorts, sFloats + "abcdef"), {"ply-color-type"});
}

TEST(ZorcldCheck, Ply_Refused)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes, const std::string& sCause, bool bConvert)
    { ExpectCause(zorcld, zorcld.Write("file.ply", sBytes), sCause, bConvert); };
    const std::string sVertex = "element vertex 1\n" + c_sXyz;
    expect("ply\nformat ascii 1.0\n" + sVertex + "end_header\n1 2 3\n", "ASCII PLY", true);
    expect("ply\nformat binary_big_endian 1.0\n" + sVertex + "end_header\n" + std::string(12, '\0'),
           "big-endian PLY", true);
    expect(MakeVertices(c_sXyz, PackFloats({1, 2, 3}), 10), "truncated after 1 of 10 vertices", false);
    expect(MakeVertices("property float x\n", PackFloats({1})), "have no y, z", false);
    expect("ply\nformat ascii 1.0\nelement vertex 99\n" + c_sXyz + "end_header\n1 2 3\n", "ASCII PLY", false);
}

TEST(ZorcldCheck, Span_AndWhatConvertCanDo)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("near.ply", MakePly({0, 0, 0, 214748, 0, 0, 0, -214748, 0}));
    ExpectWarnings(zorcld, sFile, {});
    const std::string sOutlier =
        zorcld.Write("outlier.ply", MakePly({0, 0, 0, 600000, 1, 2, 600001, 1, 2, 600002, 1, 2}));
    const nlohmann::json file = ExpectWarnings(zorcld, sOutlier, {"span"});
    EXPECT_NE(file["warnings"][0]["text"].get<std::string>().find("3 of 4 points"), std::string::npos);
    EXPECT_NE(file["warnings"][0]["help"].get<std::string>().find("zorcld convert"), std::string::npos);
    const std::string sScattered =
        zorcld.Write("scattered.ply", MakePly({0, 0, 0, 1e6F, 0, 0, 2e6F, 0, 0, 3e6F, 0, 0}));
    const nlohmann::json scattered = ExpectWarnings(zorcld, sScattered, {"span"});
    EXPECT_EQ(scattered["warnings"][0]["help"].get<std::string>().find("zorcld convert"), std::string::npos);
    ExpectWarnings(zorcld, zorcld.Write("nan.ply", MakePly({0, 0, std::nanf(""), 1, 1, 1})), {"not-finite"});
    ExpectWarnings(zorcld, zorcld.Write("degrees.ply", MakePly({0, 0, 0, 0.001F, 0.001F, 1, 0, 0.001F, 2})),
                   {"small-units"});
}

// A wall of ten columns of points. Cubes of the octree divide each in two; one point is kept in either half.
TEST(ZorcldCheck, StackedPnts)
{
    const CZorcld zorcld;
    std::vector<float> vecWall;
    std::vector<float> vecTwice;
    for (int i = 0; i < 100; ++i)
    {
        const auto x = static_cast<float>(i % 10);
        const auto z = static_cast<float>(i / 10);
        vecWall.insert(vecWall.end(), {x, 0.5F * x, 0.01F * z});
        vecTwice.insert(vecTwice.end(), {x, 0.5F * x, 7.0F});
    }
    const nlohmann::json file =
        ExpectWarnings(zorcld, zorcld.Write("wall.ply", MakePly(vecWall)), {"stacked-points"});
    EXPECT_EQ(file["warnings"][0]["text"].get<std::string>().find("80 of 100 points lie above or below"), 0U)
        << file.dump(1);
    ExpectWarnings(zorcld, zorcld.Write("twice.ply", MakePly(vecTwice)), {}); // wholly the same
    const CRun run =
        zorcld.Run({"convert", zorcld.Write("wall.ply", MakePly(vecWall)), zorcld.GetPath("o.cld")});
    EXPECT_NE(run.sErr.find("20 points, 80 removed at the x and y of another"), std::string::npos)
        << run.sErr;
}

TEST(ZorcldCheck, Las)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    const auto expect = [&](const CLasFile& las, const std::vector<std::string>& vecCodes)
    { ExpectWarnings(zorcld, zorcld.Write("file.las", las.GetBytes()), vecCodes); };
    for (const int nFormat : {0, 1, 4, 6, 9})
        expect(LasOf(nFormat, 3), {});
    CLasFile deep = LasOf(3, 3); // colours i, 256 i, 65535
    expect(deep, {"color-16-bit"});
    for (CLasPnt& pnt : deep.vecPnts)
        pnt.anColor = {0, 256, 65535};
    expect(deep, {});
    for (CLasPnt& pnt : deep.vecPnts)
        pnt.anColor = {1, 255, 128};
    expect(deep, {});
    for (const int nFormat : {7, 8, 10})
    {
        CLasFile las = LasOf(nFormat, 3);
        for (CLasPnt& pnt : las.vecPnts)
            pnt.anColor = {1, 2, 3};
        expect(las, {"las-color"});
    }
    CLasFile cut = LasOf(1, 3);
    cut.nAnnounced = 5;
    expect(cut, {"las-count"});
    expect(LasOf(1, 0), {"las-empty"});
    CLasFile flat = LasOf(1, 5);
    flat.adScale[2] = 0.0;
    expect(flat, {"las-scale"});
    CLasFile huge = LasOf(6, 3);
    huge.nAnnounced = std::int64_t{1} << 40;
    const std::string sHuge = zorcld.Write("huge.las", huge.GetBytes());
    EXPECT_GT(Check(zorcld, sHuge, 3)["warnings"].size(), 0U);
    CLasFile wide = LasOf(1, 5);
    wide.adScale = {1.0, 1.0, 1.0};
    wide.vecPnts[4].x = 300000;
    expect(wide, {"span"});
    ExpectCause(zorcld, zorcld.Write("head.las", LasOf(1, 3).GetBytes().substr(0, 100)), "cut off", false);
}

TEST(ZorcldCheck, Grid)
{
    const CZorcld zorcld;
    const auto replace = [](std::string sText, const std::string& sOld, const std::string& sNew)
    { return sText.replace(sText.find(sOld), sOld.size(), sNew); };
    const auto expect = [&](const std::string& sBytes, const std::vector<std::string>& vecCodes)
    { ExpectWarnings(zorcld, zorcld.Write("file.asc", sBytes), vecCodes); };
    const auto refuse = [&](const std::string& sBytes, const std::string& sCause)
    { ExpectCause(zorcld, zorcld.Write("file.asc", sBytes), sCause, true); };
    const std::string sCells = "1 2\n3 4\n";
    expect(c_sGridHead + sCells, {});
    const std::string sCentre =
        replace(replace(c_sGridHead, "xllcorner", "xllcenter"), "yllcorner", "yllcenter");
    expect(sCentre + sCells, {"grid-centre-only"});
    const std::string sZero = replace(replace(c_sGridHead, "corner 10", "corner 0"), "corner 20", "corner 0");
    expect(sZero + sCells, {"grid-zero-corner"});
    expect(replace(c_sGridHead, "nrows 2", "nrows 900000") + sCells, {"grid-rows"});
    expect(c_sGridHead + "1 2\n3\n", {"grid-short-rows"});
    expect(c_sGridHead + "1 2 3\n3 4\n", {"grid-long-rows"});
    expect(c_sGridHead + "1\t2\n3 4\n", {"grid-tabs"});
    expect(c_sGridHead + "1,5 2\n3 x\n", {"grid-not-numbers"});
    expect("\r\n" + c_sGridHead + "\r\n1 2\r\n\r\n3 4\r\n\r", {});
    expect(c_sGridHead + "1 2\r\n \r\n3 4\r\n", {"grid-short-rows"});
    refuse(replace(c_sGridHead, "ncols", "nCols") + sCells, "key 'nCols': only 'ncols' or 'NCOLS'");
    refuse(replace(c_sGridHead, "NODATA_value", "nodata_value") + sCells, "'NODATA_value' or 'NODATA_VALUE'");
    refuse(replace(c_sGridHead, "NODATA_value -1\n", "") + sCells, "no line NODATA_value");
    refuse(replace(c_sGridHead, "value -1", "value nan") + sCells, "no-data value is not a number");
    refuse(replace(c_sGridHead, "ncols 2", "ncols\t2") + sCells, "a tab separates");
    ExpectCause(zorcld, zorcld.Write("none.asc", c_sGridHead + "-1 -1\n-1 -1\n"), "no cell holds a height",
                false);
    ExpectCause(zorcld, zorcld.Write("text.asc", "hello\n"), "not a grid", false);
}

TEST(ZorcldCheck, Native)
{
    const CZorcld zorcld;
    const std::string sGood = zorcld.GetPath("good.cld");
    ASSERT_EQ(zorcld.Run({"convert", zorcld.Write("grid.ply", MakeGridPly(20)), sGood}).nStatus, 0);
    ExpectWarnings(zorcld, sGood, {});
    const std::string sBytes = ReadBytes(sGood);
    const auto write = [&](std::size_t nSize) { return zorcld.Write("cut.cld", sBytes.substr(0, nSize)); };
    const nlohmann::json tree = ExpectWarnings(zorcld, write(sBytes.size() - 1), {"native-octree"});
    EXPECT_NE(tree["warnings"][0]["help"].get<std::string>().find("zorcld convert"), std::string::npos);
    ExpectWarnings(zorcld, write(27 + 15 * 100), {"native-count", "native-octree"});
    ExpectWarnings(zorcld, write(11), {"native-empty"});
    ExpectCause(zorcld, write(4), "4 bytes only", false);
    std::string sOther = sBytes;
    sOther[0] = 'x';
    ExpectWarnings(zorcld, zorcld.Write("other.cld", sOther), {"native-marks"});
    sOther[9] = 7;
    ExpectCause(zorcld, zorcld.Write("other.cld", sOther), "point type is 7", false);
}

// The octree of a native file says where its points lie. It is told when that cannot be, or is not so, and
// converting makes it good.
TEST(ZorcldCheck, Native_BoxOfTheOctree)
{
    const CZorcld zorcld;
    const std::string sGood = zorcld.GetPath("good.cld");
    ASSERT_EQ(zorcld.Run({"convert", zorcld.Write("grid.ply", MakeGridPly(20)), sGood}).nStatus, 0);
    const std::size_t nTree = 27 + 15 * 400; // centre, edge, extents: seven int32
    for (const std::size_t nField : {0U, 1U, 2U, 3U, 4U, 5U, 6U})
        for (const char* pValue : {"\xff\xff\xff\xff", "\x00\x00\x00\x80", "\x10\x00\x00\x00"})
        {
            std::string sBytes = ReadBytes(sGood);
            sBytes.replace(nTree + 4 * nField, 4, pValue, 4);
            const std::string sFile = zorcld.Write("box.cld", sBytes);
            const nlohmann::json file = ExpectWarnings(zorcld, sFile, {"native-box"});
            ASSERT_EQ(file["warnings"].size(), 1U);
            EXPECT_NE(file["warnings"][0]["help"].get<std::string>().find("zorcld convert"),
                      std::string::npos);
            EXPECT_EQ(zorcld.Run({"info", sFile}).nStatus, 0);
            ASSERT_EQ(zorcld.Run({"convert", "--force", sFile, sFile}).nStatus, 0);
            ExpectWarnings(zorcld, sFile, {});
        }
}

// A count that is too high: the first bytes of the octree are taken for points. Converting takes them away.
TEST(ZorcldCheck, Native_CountThatReachesIntoTheOctree)
{
    const CZorcld zorcld;
    const std::string sGood = zorcld.GetPath("good.cld");
    ASSERT_EQ(zorcld.Run({"convert", zorcld.Write("grid.ply", MakeGridPly(20)), sGood}).nStatus, 0);
    for (const int nMore : {1, 2, 7, 30})
    {
        std::string sBytes = ReadBytes(sGood);
        sBytes[23] = static_cast<char>(sBytes[23] + nMore); // 400 is 0x190
        const std::string sFile = zorcld.Write("more.cld", sBytes);
        const nlohmann::json file = ExpectWarnings(zorcld, sFile, {"native-count"});
        EXPECT_EQ(
            file["warnings"][0]["text"],
            "it announces " + std::to_string(400 + nMore) +
                " points, but its octree begins behind 400, which it fits: bytes of it are taken for the "
                "other points, and queries go astray");
        const std::string sOut = zorcld.GetPath("out.cld");
        ASSERT_EQ(zorcld.Run({"convert", sFile, sOut}).nStatus, 0);
        ExpectWarnings(zorcld, sOut, {});
        EXPECT_EQ(zorcld.Run({"points", "-q", sOut, "-o", zorcld.GetPath("a.csv")}).nStatus, 0);
        EXPECT_EQ(zorcld.Run({"points", "-q", sGood, "-o", zorcld.GetPath("b.csv")}).nStatus, 0);
        EXPECT_EQ(ReadBytes(zorcld.GetPath("a.csv")), ReadBytes(zorcld.GetPath("b.csv")));
    }
}

// The points do not depend on the records: one that runs into them does no harm.
TEST(ZorcldCheck, Las_RecordsThatRunIntoThePntsDoNoHarm)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "LAS is not read by the host";
    const CZorcld zorcld;
    CLasFile las = LasOf(1, 5);
    las.vecRecords = {"abc", "defg"};
    const std::size_t nRecord = las.GetHeaderSize();
    std::string sBytes = las.GetBytes();
    sBytes[nRecord + 21] = '\x7f'; // its size
    sBytes[103] = '\x7f';          // how many there are
    sBytes[105] = 1;               // bytes of a point
    const std::string sFile = zorcld.Write("records.las", sBytes);
    ExpectWarnings(zorcld, sFile, {});
    const std::string sOut = zorcld.GetPath("records.cld");
    const CRun run = zorcld.Run({"convert", sFile, sOut});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sErr.find(": 5 points"), std::string::npos) << run.sErr;
    EXPECT_EQ(run.sErr.find("WARNING"), std::string::npos) << run.sErr; // LASzip's own word
    ExpectWarnings(zorcld, sOut, {});
}

// A command is told only where it would not fail.
TEST(ZorcldCheck, NoHelpThatFails)
{
    const CZorcld zorcld;
    const auto expectNone = [&](const std::string& sFile)
    {
        const CRun run = zorcld.Run({"check", sFile});
        EXPECT_EQ(run.sOut.find("zorcld convert"), std::string::npos) << run.sOut;
        EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("out.cld")}).nStatus, 1) << sFile;
    };
    const std::string sVertex = "element vertex 3\n" + c_sXyz;
    expectNone(
        zorcld.Write("cut.ply", "ply\nformat ascii 1.0\n" + sVertex + "end_header\n1 2 3\n10000 20000 x\n"));
    std::string sCells;
    for (int i = 0; i < 12000000; ++i)
        sCells += "-1 -1\n";
    const std::string sHead =
        "ncols 2\nnrows 12000000\nxllcorner 1\nyllcorner 2\ncellsize 5\nNODATA_value -1\n";
    expectNone(zorcld.Write("nodata.asc", sHead + sCells));
    if (!CZorcld::HasLaszip())
        return;
    expectNone(zorcld.Write("empty.las", LasOf(7, 0).GetBytes())); // colours that are not taken
    std::string sBytes = LasOf(7, 3).GetBytes();
    sBytes[104] = '\x87'; // compressed, but it does not say how
    expectNone(zorcld.Write("mark.las", sBytes));
}

TEST(ZorcldCheck, Ply_NoPntsWithoutCoords)
{
    const CZorcld zorcld;
    const std::string sHead = "element vertex 0\n" + c_sXyz + "element face 1\nproperty list uchar int l\n";
    const std::string sFile = zorcld.Write("faces.ply", MakePlyHeader(sHead) + std::string(1, '\0'));
    EXPECT_TRUE(Check(zorcld, sFile, 1)["points"].is_null());
}

// Counts beyond all bounds are none: `check` and `convert` agree.
TEST(ZorcldCheck, Grid_HugeCounts)
{
    const CZorcld zorcld;
    const std::string sFile =
        zorcld.Write("huge.asc", "ncols 2147483648\nnrows 99999999999999999999\nxllcorner 1\n"
                                 "yllcorner 1\ncellsize 5\nNODATA_value -1\n");
    const std::string sCause = "its header gives no number of rows and columns above 0";
    ExpectCause(zorcld, sFile, sCause, false);
    const CRun run = zorcld.Run({"convert", sFile, zorcld.GetPath("out.cld")});
    EXPECT_NE(run.sErr.find(sCause), std::string::npos) << run.sErr;
}

// Status 1 exactly when loading fails, whatever the header looks like.
TEST(ZorcldCheck, AgreesWithTheLoader)
{
    const CZorcld zorcld;
    const auto agree = [&](const std::string& sFile)
    {
        const CRun check = zorcld.Run({"check", sFile});
        const CRun info = zorcld.Run({"info", sFile});
        EXPECT_EQ(check.nStatus == 1, info.nStatus == 1) << check.sOut << info.sErr;
        return info.nStatus;
    };
    const std::string sFarHead =
        "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 1e308\nNODATA_value -1\n";
    EXPECT_EQ(agree(zorcld.Write("far.asc", sFarHead + "1 2\n3 4\n")), 1);
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const std::string sLas = LasOf(1, 10).GetBytes();
    int nRefused = 0;
    for (std::size_t nPos = 94; nPos < 112; ++nPos) // sizes, positions, counts, scale
        for (const char c : {'\0', '\x7f'})
        {
            std::string sBytes = sLas;
            sBytes[nPos] = c;
            nRefused += agree(zorcld.Write("file.las", sBytes));
        }
    EXPECT_GE(nRefused, 10);
}

// The worst of the files decides: 1 before 3 before 0.
TEST(ZorcldCheck, Status_OfSeveralFiles)
{
    const CZorcld zorcld;
    const std::string sGood = zorcld.Write("good.ply", MakePly({1, 2, 3}));
    const std::string sWarned = zorcld.Write("warned.ply", MakeDoublePly());
    const std::string sBad = zorcld.GetPath("missing.ply");
    EXPECT_EQ(zorcld.Run({"check", sGood, sGood}).nStatus, 0);
    EXPECT_EQ(zorcld.Run({"check", sGood, sWarned, sGood}).nStatus, 3);
    EXPECT_EQ(zorcld.Run({"check", sBad, sWarned}).nStatus, 1);
    EXPECT_EQ(zorcld.Run({"check"}).nStatus, 2);
    const CRun run = zorcld.Run({"check", sGood, sWarned, sBad});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sOut.find("no problems found"), std::string::npos) << run.sOut;
    EXPECT_NE(run.sOut.find("what helps: zorcld convert"), std::string::npos) << run.sOut;
    EXPECT_NE(run.sOut.find("cannot be loaded: not found"), std::string::npos) << run.sOut;
}

// The command that is told can be given to a shell as it stands.
TEST(ZorcldCheck, Help_QuotesOddNames)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("it's one.ply", MakeDoublePly());
    const nlohmann::json file = Check(zorcld, sFile, 3);
    EXPECT_NE(file["warnings"][0]["help"].get<std::string>().find("/it'\\''s one.ply_converted.cld'"),
              std::string::npos)
        << file.dump(1);
}

// Terminals obey what names hold, of files and in them; only programs get the names of files as they are.
TEST(ZorcldCheck, Names_ArePrintable)
{
    const CZorcld zorcld;
    const std::string sFile =
        zorcld.Write("a\nb\033.ply", MakeVertices(c_sXyz + "property \033[31mflo w\n", ""));
    const CRun run = zorcld.Run({"check", sFile});
    EXPECT_EQ(std::count(run.sOut.begin(), run.sOut.end(), '\n'), 1) << run.sOut;
    EXPECT_EQ(run.sOut.find('\033'), std::string::npos) << run.sOut;
    EXPECT_NE(run.sOut.find("/a?b?.ply: cannot be loaded: property type not supported: '?[31mflo'"),
              std::string::npos)
        << run.sOut;
    EXPECT_EQ(Check(zorcld, sFile, 1)["file"], sFile);
    const CRun info = zorcld.Run({"info", sFile});
    EXPECT_NE(info.sErr.find("/a?b?.ply: property type not supported: '?[31mflo'"), std::string::npos)
        << info.sErr;

    const std::string sMore = zorcld.Write(
        "more.ply", MakeVertices(c_sXyz + "property uchar a\033[31mb\n", PackFloats({1, 2, 3}) + "x"));
    const CRun convert = zorcld.Run({"convert", sMore, zorcld.GetPath("more.cld")});
    EXPECT_NE(convert.sErr.find("not written: a?[31mb"), std::string::npos) << convert.sErr;
}
