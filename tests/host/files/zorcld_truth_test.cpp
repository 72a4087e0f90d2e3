// What `check` tells of a file and what a command tells that loads it are the same, and both are true.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace
{

const std::string c_sMoved = "points lie more than 214748 units from the first one";

nlohmann::json Check(const CZorcld& zorcld, const std::string& sFile)
{
    return nlohmann::json::parse(zorcld.Run({"check", "--json", sFile}).sOut)["files"][0];
}

/// The lines of a file's warnings, sorted.
std::vector<std::string> GetTexts(const CZorcld& zorcld, const std::string& sFile)
{
    std::vector<std::string> vecTexts;
    const nlohmann::json file = Check(zorcld, sFile);
    for (const nlohmann::json& warning : file["warnings"])
        vecTexts.push_back(warning["text"]);
    std::sort(vecTexts.begin(), vecTexts.end());
    return vecTexts;
}

std::vector<std::string> GetTextsOfInfo(const CZorcld& zorcld, const std::string& sFile)
{
    std::vector<std::string> vecTexts =
        nlohmann::json::parse(zorcld.Run({"info", "--json", sFile}).sOut)["warnings"];
    std::sort(vecTexts.begin(), vecTexts.end());
    return vecTexts;
}

} // namespace

// The library takes a list for a value; by the header the vertices have no x.
TEST(ZorcldTruth, Ply_ListForACoordinate_EveryCommandTells)
{
    const CZorcld zorcld;
    const std::string sItem = '\1' + std::string(12, '\0');
    const std::string sFile = zorcld.Write(
        "list.ply", MakePlyHeader("element vertex 2\nproperty list uchar float x\nproperty float y\n"
                                  "property float z\n") +
                        sItem + sItem);
    const std::string sLine = "by its header it cannot be read: its vertices have no x";
    EXPECT_EQ(GetTexts(zorcld, sFile), std::vector<std::string>{sLine});
    const std::vector<std::vector<std::string>> vecCommands = {
        {"info", sFile},
        {"view", sFile, "-o", zorcld.GetPath("o.png")},
        {"points", sFile, "-o", zorcld.GetPath("o.csv")},
        {"count", sFile, "--rect", "0,0,9,9"}};
    for (const std::vector<std::string>& vecArgs : vecCommands)
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << vecArgs[0];
        EXPECT_NE(run.sErr.find(sFile + ": " + sLine + "\n"), std::string::npos) << vecArgs[0] << run.sErr;
    }
}

// How coordinates would be read does not matter where they are not.
TEST(ZorcldTruth, Ply_Refused_NothingElseIsTold)
{
    const CZorcld zorcld;
    const std::string sFile =
        zorcld.Write("odd.ply", MakePlyHeader("element vertex 1\nproperty double x\nproperty double y\n"
                                              "property double z\nproperty odd a\n") +
                                    std::string(25, '\0'));
    const nlohmann::json file = Check(zorcld, sFile);
    EXPECT_EQ(file["status"], "unreadable");
    EXPECT_EQ(file["warnings"], nlohmann::json::array());
    const CRun run = zorcld.Run({"check", sFile});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_EQ(run.sOut.find("read as"), std::string::npos) << run.sOut;
}

TEST(ZorcldTruth, Las_NoPntHasAPlace_CheckTellsAllThatInfoTells)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "built without LASzip";
    const CZorcld zorcld;
    CLasFile las = LasOf(2, 5);
    for (CLasPnt& pnt : las.vecPnts)
        pnt.anColor = {};
    las.adScale[0] = std::numeric_limits<double>::quiet_NaN();
    const std::string sFile = zorcld.Write("nan.las", las.GetBytes());
    EXPECT_EQ(GetTexts(zorcld, sFile).size(), 2U);
    EXPECT_EQ(GetTexts(zorcld, sFile), GetTextsOfInfo(zorcld, sFile));
    las.adScale[0] = 0.01;
    las.adOffset[0] = std::numeric_limits<double>::infinity();
    zorcld.Write("nan.las", las.GetBytes());
    EXPECT_EQ(GetTexts(zorcld, sFile).size(), 3U);
    EXPECT_EQ(GetTexts(zorcld, sFile), GetTextsOfInfo(zorcld, sFile));
}

// All at one place, which is told.
TEST(ZorcldTruth, Grid_WithoutCorner_NoPntIsMoved)
{
    const CZorcld zorcld;
    const std::string sTail = "cellsize 5\nNODATA_value -1\n1 2\n3 ";
    for (const std::string& sPlace :
         {std::string("xllcenter 10\nyllcenter 20\n"), std::string("xllcorner 0\nyllcorner 0\n")})
    {
        const std::string sFile = zorcld.Write("g.asc", "ncols 2\nnrows 2\n" + sPlace + sTail + "4\n");
        EXPECT_EQ(GetTextsOfInfo(zorcld, sFile).size(), 1U);
        EXPECT_EQ(GetTexts(zorcld, sFile), GetTextsOfInfo(zorcld, sFile));
        zorcld.Write("g.asc", "ncols 2\nnrows 2\n" + sPlace + sTail + "500000\n"); // a height out of reach
        EXPECT_NE(zorcld.Run({"info", sFile}).sErr.find(c_sMoved), std::string::npos);
    }
}

TEST(ZorcldTruth, Check_Folder_NamesTheCommand)
{
    const CZorcld zorcld;
    zorcld.Write(".hidden.ply", "ply\n");
    const CRun none = zorcld.Run({"check", zorcld.GetPath("")});
    EXPECT_EQ(none.nStatus, 1);
    EXPECT_EQ(none.sOut.find("what helps"), std::string::npos) << none.sOut; // no shell would find a file
    zorcld.Write("a.ply", "ply\n");
    const CRun run = zorcld.Run({"check", zorcld.GetPath("")});
    const std::string sFolder = zorcld.GetPath(".").substr(0, zorcld.GetPath(".").size() - 2);
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sOut.find("cannot be loaded: is a directory\n        what helps: zorcld check " + sFolder +
                            "/*\n"),
              std::string::npos)
        << run.sOut;
}
