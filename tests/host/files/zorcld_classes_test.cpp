// Points chosen by their classes, and what is told of classes, flags and intensities.
#include <tests/host/support/CZorcld.h>
#include <tests/support/LazBytes.h>
#include <tests/support/RealFiles.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <map>
#include <sstream>

namespace
{

/// 20 points on a line, of classes 1, 2, 6 and 7 in turn.
CLasFile MakeLas(int nFormat)
{
    constexpr std::array<std::uint8_t, 4> c_acClasses = {1, 2, 6, 7};
    CLasFile las = LasOf(nFormat, 20);
    las.adScale = {1.0, 1.0, 1.0};
    for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
    {
        las.vecPnts[i].nClass = c_acClasses[i % 4];
        las.vecPnts[i].nIntensity = static_cast<std::uint16_t>(100 * i + 5);
    }
    las.vecPnts[3].nFlags = 4;
    las.vecPnts[4].nFlags = 5;
    return las;
}

nlohmann::json GetInfo(const CZorcld& zorcld, std::vector<std::string> vecArgs)
{
    vecArgs.insert(vecArgs.begin(), {"info", "--json"});
    const CRun run = zorcld.Run(vecArgs);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return nlohmann::json::parse(run.sOut);
}

std::map<int, int> GetClasses(const nlohmann::json& info)
{
    std::map<int, int> mapClasses;
    for (const auto& item : info["las"]["classes"])
        mapClasses[item["class"]] = item["points"];
    return mapClasses;
}

/// The lines of a file that `points` writes, but for the first, in order.
std::vector<std::string> GetPoints(const CZorcld& zorcld, std::vector<std::string> vecArgs)
{
    const std::string sOut = zorcld.GetPath("out.csv");
    vecArgs.insert(vecArgs.begin(), {"points", "-o", sOut});
    const CRun run = zorcld.Run(vecArgs);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    std::istringstream stream(ReadBytes(sOut));
    std::vector<std::string> vecLines;
    for (std::string sLine; std::getline(stream, sLine);)
        vecLines.push_back(sLine);
    if (!vecLines.empty())
        vecLines.erase(vecLines.begin());
    std::sort(vecLines.begin(), vecLines.end());
    return vecLines;
}

std::size_t CountPlyPnts(const std::string& sPath)
{
    const std::string sBytes = ReadBytes(sPath);
    const std::size_t nPos = sBytes.find("element vertex ");
    return nPos == std::string::npos ? 0 : std::stoul(sBytes.substr(nPos + 15));
}

} // namespace

TEST(ZorcldClasses, Info_CountsClassesAndFlags)
{
    const CZorcld zorcld;
    for (const int nFormat : {0, 3, 6, 7})
        for (const bool bLaz : {false, true})
        {
            SCOPED_TRACE(nFormat);
            const CLasFile las = MakeLas(nFormat);
            const std::string sFile = zorcld.Write("c.las", bLaz ? LazBytes(las, 10) : las.GetBytes());
            const nlohmann::json info = GetInfo(zorcld, {sFile});
            EXPECT_EQ(GetClasses(info), (std::map<int, int>{{1, 5}, {2, 5}, {6, 5}, {7, 5}}));
            EXPECT_EQ(info["las"]["classes"][1]["name"], "ground");
            EXPECT_EQ(info["las"]["flags"]["withheld"], 2);
            EXPECT_EQ(info["las"]["flags"]["synthetic"], 1);
            EXPECT_EQ(info["las"]["flags"]["overlap"], 0);
            EXPECT_EQ(info["las"]["intensity"]["min"], 5);
            EXPECT_EQ(info["las"]["intensity"]["max"], 1905);
            EXPECT_TRUE(info["las"]["chosen"].is_null());
            const CRun run = zorcld.Run({"info", sFile});
            EXPECT_NE(run.sOut.find("2 ground"), std::string::npos) << run.sOut;
            EXPECT_NE(run.sOut.find("25.0 %"), std::string::npos) << run.sOut;
            EXPECT_NE(run.sOut.find("1 point synthetic, 2 points withheld"), std::string::npos) << run.sOut;
        }
}

TEST(ZorcldClasses, Info_OfChosenPoints)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("c.las", MakeLas(1).GetBytes());
    const nlohmann::json info = GetInfo(zorcld, {sFile, "--class", "ground,6"});
    EXPECT_EQ(info["points"], 10);
    EXPECT_EQ(info["bounds"]["min"][0], 1.0);
    EXPECT_EQ(info["bounds"]["max"][0], 18.0);
    EXPECT_EQ(info["las"]["chosen"]["points"], 10);
    EXPECT_EQ(info["las"]["chosen"]["classes"], "classes 2 ground, 6 building");
    EXPECT_EQ(GetClasses(info).size(), 4U); // those of the file
    EXPECT_EQ(GetInfo(zorcld, {sFile, "--no-class", "7"})["points"], 15);
}

TEST(ZorcldClasses, Points_ThoseOfTheClassesOnly)
{
    const CZorcld zorcld;
    for (const int nFormat : {0, 2, 6, 7})
    {
        SCOPED_TRACE(nFormat);
        const CLasFile las = MakeLas(nFormat);
        const std::string sFile = zorcld.Write("c.las", las.GetBytes());
        const std::vector<std::string> vecAll = GetPoints(zorcld, {sFile});
        std::vector<std::string> vecJoined = GetPoints(zorcld, {sFile, "--class", "2"});
        EXPECT_EQ(vecJoined.size(), 5U);
        const std::vector<std::string> vecOthers = GetPoints(zorcld, {sFile, "--no-class", "2"});
        EXPECT_EQ(vecOthers.size(), 15U);
        vecJoined.insert(vecJoined.end(), vecOthers.begin(), vecOthers.end());
        std::sort(vecJoined.begin(), vecJoined.end());
        EXPECT_EQ(vecJoined, vecAll); // colours too, as the library reads them
        EXPECT_EQ(GetPoints(zorcld, {sFile, "--class", "0-255"}), vecAll);
        EXPECT_EQ(GetPoints(zorcld, {sFile, "--class", "2", "--rect", "0,-20,9,0"}).size(), 3U);
    }
}

// The points of other classes are gone before points at the x and y of another one are removed.
TEST(ZorcldClasses, PointUnderAnother_StaysWhenTheOtherIsNotChosen)
{
    const CZorcld zorcld;
    CLasFile las = MakeLas(1);
    for (std::size_t i = 0; i < las.vecPnts.size(); i += 4) // of class 2, below those of class 1
    {
        las.vecPnts[i + 1].x = las.vecPnts[i].x;
        las.vecPnts[i + 1].y = las.vecPnts[i].y;
    }
    const std::string sFile = zorcld.Write("c.las", las.GetBytes());
    EXPECT_EQ(GetPoints(zorcld, {sFile}).size(), 15U);
    EXPECT_EQ(GetPoints(zorcld, {sFile, "--class", "2"}).size(), 5U);
    EXPECT_EQ(GetPoints(zorcld, {sFile, "--class", "1"}).size(), 5U);
}

TEST(ZorcldClasses, Convert_ThoseOfTheClassesOnly)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("c.laz", LazBytes(MakeLas(7), 10));
    const std::string sPly = zorcld.GetPath("o.ply");
    CRun run = zorcld.Run({"convert", sFile, sPly, "--class", "building"});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(CountPlyPnts(sPly), 5U);
    const std::string sCld = zorcld.GetPath("o.cld");
    run = zorcld.Run({"convert", sFile, sCld, "--no-class", "low-noise"});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(GetPoints(zorcld, {sCld}).size(), 15U);
}

TEST(ZorcldClasses, NoPointOfTheClass_IsTold)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("c.las", MakeLas(1).GetBytes());
    const std::string sOut = zorcld.GetPath("o.csv");
    CRun run = zorcld.Run({"points", sFile, "--class", "water", "-o", sOut});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(
        run.sErr.find("no point is of class 9 water: it has points of classes 1 unclassified, 2 ground, "
                      "6 building, 7 low noise"),
        std::string::npos)
        << run.sErr;
    EXPECT_EQ(GetInfo(zorcld, {sFile, "--class", "water"})["points"], 0);
    run = zorcld.Run({"convert", sFile, zorcld.GetPath("o.ply"), "--class", "water"});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("class 9 water"), std::string::npos) << run.sErr;
    EXPECT_EQ(zorcld.Run({"view", sFile, "--class", "water", "-o", zorcld.GetPath("o.png")}).nStatus, 0);
}

// Colours, counts and numbers that are none: what is told without a choice of classes is told with it.
TEST(ZorcldClasses, WhatIsLost_IsToldOfChosenPoints)
{
    const CZorcld zorcld;
    CLasFile las = MakeLas(3);
    for (CLasPnt& pnt : las.vecPnts)
        pnt.anColor = {};
    const std::string sBlack = zorcld.Write("black.las", las.GetBytes());
    EXPECT_NE(GetInfo(zorcld, {sBlack, "--class", "1"})["warnings"].dump().find("colour fields are all 0"),
              std::string::npos);
    las = MakeLas(1);
    las.nAnnounced = 15;
    const std::string sMore = zorcld.Write("more.las", las.GetBytes());
    const std::string sTaken = "announces 15 points, but 20 are there: all of them are taken";
    EXPECT_NE(GetInfo(zorcld, {sMore, "--no-class", "9"})["warnings"].dump().find(sTaken), std::string::npos);
    const CRun run = zorcld.Run({"view", sMore, "--color", "class", "-o", zorcld.GetPath("o.png")});
    EXPECT_NE(run.sErr.find(sTaken), std::string::npos) << run.sErr;
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    las.nAnnounced = 20;
    las.adOffset[1] = std::numeric_limits<double>::infinity();
    const nlohmann::json info =
        GetInfo(zorcld, {zorcld.Write("none.las", las.GetBytes()), "--class", "1,2,6,7"});
    EXPECT_EQ(info["not_numbers"], 20);
    EXPECT_EQ(info["duplicates_removed"], 0);
}

TEST(ZorcldClasses, NothingLeft_IsSaidInWords)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("c.las", MakeLas(1).GetBytes());
    const std::string sOut = zorcld.GetPath("o.csv");
    const CRun run = zorcld.Run({"points", sFile, "--no-class", "1,2,6,7", "-o", sOut});
    EXPECT_NE(run.sErr.find("no point is of another class than classes 1 unclassified, 2 ground"),
              std::string::npos)
        << run.sErr;
}

// A file without classes: one line, and nothing is written.
TEST(ZorcldClasses, OtherFiles_Refused)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("g.ply", MakeGridPly(5));
    const std::string sOut = zorcld.GetPath("o.ply");
    for (const std::vector<std::string>& vecArgs :
         {std::vector<std::string>{"info", sFile}, {"points", sFile, "-o", sOut}, {"convert", sFile, sOut}})
    {
        std::vector<std::string> vecAsked = vecArgs;
        vecAsked.insert(vecAsked.end(), {"--class", "2"});
        const CRun run = zorcld.Run(vecAsked);
        EXPECT_EQ(run.nStatus, 1) << vecArgs[0];
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("have no classes"), std::string::npos) << run.sErr;
        EXPECT_EQ(zorcld.CountFiles(), 1U);
    }
    const CRun run = zorcld.Run({"points", sFile, "-o", sOut, "--class", "grass"});
    EXPECT_EQ(run.nStatus, 2);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
}

// Fewer points than announced: those that are there, none made up for the others.
TEST(ZorcldClasses, CutOffFile_ItsPoints)
{
    const CZorcld zorcld;
    std::string sBytes = MakeLas(1).GetBytes();
    sBytes.resize(sBytes.size() - 28 * 4 - 1);
    const std::string sFile = zorcld.Write("c.las", sBytes);
    EXPECT_EQ(GetPoints(zorcld, {sFile, "--class", "0-255"}).size(), 15U);
}

TEST(ZorcldClasses, RealTown)
{
    const std::string sFile = GetRealFile("las/ahn3_delft.laz");
    if (!std::filesystem::exists(sFile))
        GTEST_SKIP() << "no real files";
    const CZorcld zorcld;
    const nlohmann::json info = GetInfo(zorcld, {sFile, "--class", "ground"});
    EXPECT_EQ(GetClasses(info),
              (std::map<int, int>{{1, 196137}, {2, 195988}, {6, 246753}, {9, 267}, {26, 1365}}));
    EXPECT_EQ(info["las"]["chosen"]["points"], 195988);
}
