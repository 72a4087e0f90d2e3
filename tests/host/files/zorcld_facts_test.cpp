// What the library knows of a file before it is loaded, as `check` and `info` pass it on, and what every
// command that loads a file says of it.
#include <tests/companions/SmallFiles.h>
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>
#include <zor4data/CFileFacts.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>

namespace
{

const std::string c_sXyz = "property float x\nproperty float y\nproperty float z\n";

nlohmann::json Check(const CZorcld& zorcld, const std::string& sFile)
{
    return nlohmann::json::parse(zorcld.Run({"check", "--json", sFile}).sOut)["files"][0];
}

nlohmann::json Info(const CZorcld& zorcld, const std::string& sFile)
{
    return nlohmann::json::parse(zorcld.Run({"info", "--json", sFile}).sOut);
}

/// Every command that loads a file, but for those that say more.
std::vector<CRun> RunAll(const CZorcld& zorcld, const std::string& sFile)
{
    return {zorcld.Run({"info", sFile}),
            zorcld.Run({"view", sFile, "-o", zorcld.GetPath("out.png"), "--size", "200x200"}),
            zorcld.Run({"points", sFile, "-o", zorcld.GetPath("out.csv")}),
            zorcld.Run({"count", sFile, "--rect", "0,0,9,9"}),
            zorcld.Run({"profile", sFile, "--line", "0,0,12,7,40", "-o", zorcld.GetPath("out.csv")})};
}

std::string GridOf(const std::string& sHead, const std::string& sRows)
{
    return "ncols 3\nnrows 2\nxllcorner 10\nyllcorner 5\n" + sHead + sRows;
}

const std::string c_sGridHead = "cellsize 1\nNODATA_value -9999\n";

} // namespace

TEST(ZorcldFacts, Cause_HasItsNumber)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sFile, int nNumber)
    {
        for (const nlohmann::json& result : {Check(zorcld, sFile), Info(zorcld, sFile)})
        {
            EXPECT_EQ(result["cause_number"], nNumber) << result;
            EXPECT_TRUE(result["cause"].is_string()) << result;
        }
    };
    expect(zorcld.GetPath("missing.ply"), FileCause_NotFound);
    expect(zorcld.GetPath("."), FileCause_Directory);
    expect(zorcld.Write("empty.ply", ""), FileCause_Empty);
    expect(zorcld.Write("notes.txt", "hello\n"), FileCause_UnknownKind);
    expect(zorcld.Write("a.ply", "ply\nformat ascii 1.0\nend_header\n"), FileCause_PlyAscii);
    expect(zorcld.Write("b.ply", MakePlyHeader("element vertex 3\n" + c_sXyz) + "abc"), FileCause_PlyCutOff);
    expect(zorcld.Write("c.asc", "ncols\t3\n"), FileCause_GridTab);
    expect(zorcld.Write("d.asc", GridOf(c_sGridHead, "-9999 -9999\n")), FileCause_GridNoCells);
    expect(zorcld.Write("e.cld", std::string(":\1\1\0\0\0\0\0\0\7\0", 11)), FileCause_NativeType);
    // It loads, but nothing useful comes of it.
    expect(zorcld.Write("f.ply", MakePlyHeader("element face 1\nproperty uchar a\n") + "a"), FileCause_None);
    const std::string sGood = zorcld.Write("good.ply", MakePly({1, 2, 3}));
    EXPECT_TRUE(Check(zorcld, sGood)["cause_number"].is_null());
    EXPECT_TRUE(Info(zorcld, sGood)["cause_number"].is_null());
}

TEST(ZorcldFacts, Check_TellsWhatTheHeadSays)
{
    const CZorcld zorcld;
    const nlohmann::json ply = Check(zorcld, zorcld.Write("a.ply", SmallPly()));
    EXPECT_EQ(ply["announced"], 3);
    EXPECT_EQ(ply["color"], true);
    EXPECT_TRUE(ply["bounds"].is_null());
    const nlohmann::json native = Check(zorcld, zorcld.Write("b.cld", SmallNative(PntCldType_Pnt)));
    EXPECT_EQ(native["announced"], 30);
    EXPECT_EQ(native["color"], false);
    EXPECT_EQ(native["bounds"]["max"][0], 29.0);
    EXPECT_TRUE(Check(zorcld, zorcld.Write("c.asc", SmallGrid()))["announced"].is_null());
}

// One knowledge: what the library tells as lost, `check` warns of in the same words.
TEST(ZorcldFacts, Losses_AreWarnings)
{
    const CZorcld zorcld;
    const std::string sNative = SmallNative(PntCldType_Pnt);
    CLasFile las = LasOf(1, 5);
    las.nAnnounced = 9;
    const std::string sDouble = "property double x\nproperty float y\nproperty float z\n";
    const std::vector<std::string> vecPaths = {
        zorcld.Write("a.ply", MakePlyHeader("element vertex 1\n" + sDouble) + std::string(16, '\1')),
        zorcld.Write("b.asc", GridOf(c_sGridHead, "1\t2\t3\n4\t5\t6\n")),
        zorcld.Write("c.asc", GridOf(c_sGridHead + "xllcenter\t9\n", "1 2 3\n4 5 6\n")),
        zorcld.Write("d.cld", sNative.substr(0, sNative.size() - 9)),
        zorcld.Write("e.las", las.GetBytes()),
    };
    for (const std::string& sPath : vecPaths)
    {
        const CFileFacts facts = FindFileFacts(zor::String(sPath.c_str()));
        if (facts.eCause == FileCause_NoReader)
            continue;
        const nlohmann::json warnings = Check(zorcld, sPath)["warnings"];
        const std::vector<CFileLoss> vecLosses = FindFileLosses(zor::String(sPath.c_str()), facts.eType);
        EXPECT_FALSE(vecLosses.empty()) << sPath;
        for (const CFileLoss& loss : vecLosses)
            EXPECT_TRUE(loss.sCode == "not-taken" || std::any_of(warnings.begin(), warnings.end(),
                                                                 [&](const nlohmann::json& warning) {
                                                                     return warning["code"] == loss.sCode &&
                                                                            warning["text"] == loss.sText;
                                                                 }))
                << loss.sCode << ' ' << loss.sText << warnings;
    }
}

TEST(ZorcldFacts, PntsThatAreNoNumbers_ToldInOneLineByEveryCommandThatLoads)
{
    const CZorcld zorcld;
    const float fNan = std::numeric_limits<float>::quiet_NaN();
    const std::string sFile =
        zorcld.Write("nan.ply", MakePly({0, 0, 1, 1, 0, fNan, 2, 0, 1, 0, 1, 1, 1, 1, 1, fNan, 1, 1}));
    for (const CRun& run : RunAll(zorcld, sFile))
    {
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("2 points have coordinates that are not numbers, or infinite; what helps: "
                                "zorcld convert "),
                  std::string::npos)
            << run.sErr;
    }
    const std::string sGrid = zorcld.Write("nan.asc", GridOf(c_sGridHead, "1 2 nan\n4 5 6\n"));
    for (const CRun& run : RunAll(zorcld, sGrid))
        EXPECT_NE(run.sErr.find("1 point has coordinates that are not numbers"), std::string::npos)
            << run.sErr;
}

TEST(ZorcldFacts, TabsInAGrid_SameCauseAndAdviceByEveryCommand)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sBytes, int nStatus, const std::string& sText)
    {
        const std::string sFile = zorcld.Write("tabs.asc", sBytes);
        for (const CRun& run : RunAll(zorcld, sFile))
        {
            EXPECT_EQ(run.nStatus, nStatus) << run.sErr;
            EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
            EXPECT_NE(run.sErr.find(sText + "; what helps: zorcld convert "), std::string::npos) << run.sErr;
        }
        const nlohmann::json check = Check(zorcld, sFile);
        const nlohmann::json& told = nStatus == 1 ? check["cause"] : check["warnings"][0]["text"];
        const nlohmann::json& help = nStatus == 1 ? check["help"] : check["warnings"][0]["help"];
        EXPECT_EQ(told, sText) << check;
        EXPECT_TRUE(help.is_string()) << check;
    };
    const std::string sCause = "a tab separates key and value in its header: only blanks do";
    expect(GridOf("cellsize\t1\nNODATA_value -9999\n", "1 2 3\n4 5 6\n"), 1, sCause);
    // The library takes lines behind a header that is complete for rows.
    expect(GridOf(c_sGridHead + "xllcenter\t10.5\n", "1 2 3\n4 5 6\n"), 0, sCause);
    expect(GridOf(c_sGridHead, "1\t2\t3\n4\t5\t6\n"), 0,
           "tabs separate its values: only the first value of such a run is taken");
}

// Blanks beside a tab separate; a tab at the end of a line is nothing.
TEST(ZorcldFacts, TabsThatDoNoHarm_NotTold)
{
    const CZorcld zorcld;
    const std::string sFile =
        zorcld.Write("tabs.asc", GridOf("cellsize \t1\nNODATA_value -9999\t\n", "\t1 \t2 3\t\n4 5 6\n"));
    EXPECT_EQ(zorcld.Run({"check", sFile}).nStatus, 0);
    EXPECT_EQ(zorcld.Run({"info", sFile}).sErr, "");
    EXPECT_EQ(Info(zorcld, sFile)["points"], 6);
}

TEST(ZorcldFacts, NoPntOfThoseAnnounced_NoneAndNoBounds)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    for (const int nFormat : {0, 3, 6})
    {
        CLasFile las = LasOf(nFormat, 0);
        las.nAnnounced = 1065;
        const std::string sFile = zorcld.Write("none.las", las.GetBytes());
        const nlohmann::json info = Info(zorcld, sFile);
        EXPECT_EQ(info["points"], 0);
        EXPECT_EQ(info["never_there"], 1065);
        EXPECT_EQ(info["duplicates_removed"], 0);
        EXPECT_EQ(info["color"], nFormat == 3);
        EXPECT_TRUE(info["bounds"].is_null()) << info["bounds"];
        EXPECT_EQ(zorcld.Run({"count", sFile, "--rect", "-1e12,-1e12,1e12,1e12"}).sOut, "0\n");
        EXPECT_EQ(Check(zorcld, sFile)["warnings"][0]["text"],
                  "its header announces 1065 points, but 0 are there: it is cut off");
    }
}
