#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace
{

std::ptrdiff_t CountLines(const std::string& sText)
{
    return std::count(sText.begin(), sText.end(), '\n');
}

} // namespace

TEST(ZorcldPoints, Csv_HeaderAndOneLineAPoint)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("three.ply", MakePly({0, 0, 0, 1.5F, 2, 3, -4, 5, 0.25F}));
    const std::string sOut = zorcld.GetPath("out.csv");
    ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sOut}).nStatus, 0);
    const std::string sText = ReadBytes(sOut);
    EXPECT_EQ(sText.substr(0, 6), "x,y,z\n");
    EXPECT_EQ(CountLines(sText), 4);
    EXPECT_NE(sText.find("\n1.5000,2.0000,3.0000\n"), std::string::npos) << sText;
    EXPECT_NE(sText.find("\n-4.0000,5.0000,0.2500\n"), std::string::npos) << sText;
}

TEST(ZorcldPoints, Csv_ColoursAsBytes)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(10));
    const std::string sOut = zorcld.GetPath("out.csv");
    ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sOut}).nStatus, 0);
    const std::string sText = ReadBytes(sOut);
    EXPECT_EQ(sText.substr(0, 21), "x,y,z,red,green,blue\n");
    EXPECT_EQ(CountLines(sText), 101);
    EXPECT_NE(sText.find("\n3.0000,4.0000,7.0000,200,100,50\n"), std::string::npos);
}

TEST(ZorcldPoints, Clip_KeepsWhatIsBehindThePlanes)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(10));
    const std::string sOut = zorcld.GetPath("out.csv");
    const auto count = [&](std::vector<std::string> vecArgs)
    {
        vecArgs.insert(vecArgs.begin(), {"points", sFile, "-o", sOut});
        EXPECT_EQ(zorcld.Run(vecArgs).nStatus, 0);
        return CountLines(ReadBytes(sOut)) - 1;
    };
    EXPECT_EQ(count({"--clip", "1,0,0,-4"}), 50);                       // x up to 4, its border too
    EXPECT_EQ(count({"--clip", "-1,0,0,4"}), 60);                       // x from 4
    EXPECT_EQ(count({"--clip", "1,0,0,-4", "--clip", "0,1,0,-4"}), 25); // both
    EXPECT_EQ(count({"--box", "2,3,0,4,4,100"}), 6);
    EXPECT_EQ(count({"--box", "2,3,0,4,4,100", "--clip", "0,1,0,-3"}), 3);
    EXPECT_EQ(count({"--box", "100,100,100,200,200,200"}), 0);
}

TEST(ZorcldPoints, Lod_ThinsAndPointsIsALimit)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(60));
    const std::string sOut = zorcld.GetPath("out.csv");
    const auto count = [&](const char* pOption, const char* pValue)
    {
        EXPECT_EQ(zorcld.Run({"points", sFile, "-o", sOut, pOption, pValue}).nStatus, 0);
        return CountLines(ReadBytes(sOut)) - 1;
    };
    const std::ptrdiff_t nFine = count("--lod", "8");
    const std::ptrdiff_t nCoarse = count("--lod", "32");
    EXPECT_LT(nFine, 3600);
    EXPECT_LT(nCoarse, nFine);
    EXPECT_GT(nCoarse, 0);
    for (const char* pLimit : {"1", "10", "100", "1000"})
    {
        const std::ptrdiff_t n = count("--points", pLimit);
        EXPECT_GT(n, 0);
        EXPECT_LE(n, std::stol(pLimit));
    }
    EXPECT_EQ(count("--points", "3600"), 3600);
}

TEST(ZorcldPoints, LodBeyondTheCloud_OnePoint)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("out.csv");
    const auto count = [&](const std::string& sFile, std::vector<std::string> vecArgs)
    {
        vecArgs.insert(vecArgs.begin(), {"points", sFile, "-o", sOut});
        EXPECT_EQ(zorcld.Run(vecArgs).nStatus, 0);
        return CountLines(ReadBytes(sOut)) - 1;
    };
    for (const int nSide : {2, 9, 40, 64, 65})
    {
        const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(nSide));
        for (int i = 1; i < 40; i += 2)
            EXPECT_EQ(count(sFile, {"--lod", std::to_string(4.0 * nSide * i)}), 1) << nSide << " " << i;
        for (const double dLonger : {1e-3, 0.1, 1.0}) // than the longest side
            EXPECT_EQ(count(sFile, {"--lod", std::to_string(2 * (nSide - 1) + dLonger)}), 1) << nSide;
        EXPECT_EQ(count(sFile, {"--lod", "1e18"}), 1);
        // One of those that are chosen, whichever way.
        EXPECT_EQ(count(sFile, {"--lod", "100000", "--rect", "0.5,0.5,99,99"}), 1);
        EXPECT_EQ(count(sFile, {"--lod", "100000", "--box", "1,1,0,99,99,999"}), 1);
        EXPECT_EQ(count(sFile, {"--lod", "100000", "--rect", "-9,-9,-8,-8"}), 0);
    }
    const std::string sOne = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    EXPECT_EQ(count(sOne, {"--lod", "5"}), 1);
    const nlohmann::json info =
        nlohmann::json::parse(zorcld.Run({"info", "--json", zorcld.Write("g.ply", MakeGridPly(9))}).sOut);
    EXPECT_EQ(info["levels_of_detail"][9]["points"], 1);
}

TEST(ZorcldPoints, Ply_ReadBackAsItWas)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const std::string sOut = zorcld.GetPath("out.ply");
    const CRun run = zorcld.Run({"points", sFile, "-o", sOut});
    ASSERT_EQ(run.nStatus, 0);
    EXPECT_EQ(run.sErr, "");
    const nlohmann::json info = nlohmann::json::parse(zorcld.Run({"info", "--json", sOut}).sOut);
    EXPECT_EQ(info["points"], 400);
    EXPECT_EQ(info["color"], true);
    EXPECT_EQ(info["bounds"]["max"], nlohmann::json({19.0, 19.0, 38.0}));
}

TEST(ZorcldPoints, Ply_LargeCoordinatesShiftedAndSaid)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("far.ply", MakePly({500000, 4000000, 10, 500001, 4000000.5F, 11}));
    const std::string sOut = zorcld.GetPath("out.ply");
    const CRun run = zorcld.Run({"points", sFile, "-o", sOut});
    ASSERT_EQ(run.nStatus, 0);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("add 500000 4000000 0"), std::string::npos) << run.sErr;
    EXPECT_NE(ReadBytes(sOut).find("comment coordinates are shifted: add 500000 4000000 0\n"),
              std::string::npos);
    const nlohmann::json info = nlohmann::json::parse(zorcld.Run({"info", "--json", sOut}).sOut);
    EXPECT_EQ(info["bounds"]["max"], nlohmann::json({1.0, 0.5, 11.0}));
}
