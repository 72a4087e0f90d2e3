#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace
{

std::vector<std::string> SortedLines(const std::string& sPath)
{
    std::istringstream text(ReadBytes(sPath));
    std::vector<std::string> vecLines;
    for (std::string sLine; std::getline(text, sLine);)
        vecLines.push_back(sLine);
    std::sort(vecLines.begin(), vecLines.end());
    return vecLines;
}

/// A scan in tiles of 50 units, and as one tile.
class ZorcldTilesAsked : public testing::Test
{
protected:
    void SetUp() override
    {
        const std::string sFile = m_zorcld.Write("scan.ply", MakePly(MakeScan(1, 6000)));
        m_sTiles = m_zorcld.GetPath("tiles");
        ASSERT_EQ(m_zorcld.Run({"tile", sFile, "-o", m_sTiles, "--size", "50", "--buffer", "9"}).nStatus, 0);
        // One tile has all points, as a cloud that removes none: 0 is a border, the buffer holds what is
        // beyond.
        ASSERT_EQ(
            m_zorcld
                .Run({"tile", sFile, "-o", m_zorcld.GetPath("one"), "--size", "100000", "--buffer", "1000"})
                .nStatus,
            0);
        m_sOne = m_zorcld.GetPath("one/tile_0_0.cld");
    }

    std::string Count(const std::string& sFile, const std::string& sRect) const
    {
        const CRun run = m_zorcld.Run({"count", sFile, "--rect=" + sRect});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return run.sOut;
    }

    const CZorcld m_zorcld;
    std::string m_sTiles;
    std::string m_sOne;
};

} // namespace

TEST_F(ZorcldTilesAsked, Count_IsThatOfTheWhole)
{
    for (const char* pRect : {"-1000,-1000,1000,1000", "-50,-50,50,50", "-49.5,0,0,100", "0,0,0,0",
                              "50,16,50,16", "-12.25,-80,63.75,140", "200,200,300,300"})
        EXPECT_EQ(Count(m_sTiles, pRect), Count(m_sOne, pRect)) << pRect;
    EXPECT_EQ(Count(m_sTiles + "/manifest.json", "-1000,-1000,1000,1000"), "6000\n");
}

TEST_F(ZorcldTilesAsked, Points_AreThoseOfTheWhole)
{
    const std::string sShape = m_zorcld.Write(
        "shape.wkt", "POLYGON((-70 -70, 80 -20, 50 50, -20 100, -70 -70), (0 0, 10 0, 0 10, 0 0))");
    for (const std::vector<std::string>& vecQuery :
         std::vector<std::vector<std::string>>{{},
                                               {"--rect=-50,-50,50,64"},
                                               {"--contour", sShape},
                                               {"--contour", sShape, "--outside"},
                                               {"--line=-100.3,-90.1,120.7,80.2,7.77"},
                                               {"--box=-60.25,-60.25,2.25,70.25,60.25,9.25"},
                                               {"--clip=1,1,0,-20.25"}})
    {
        const auto ask = [&](const std::string& sFile, const std::string& sName)
        {
            std::vector<std::string> vecArgs = {"points", sFile, "-o", m_zorcld.GetPath(sName)};
            vecArgs.insert(vecArgs.end(), vecQuery.begin(), vecQuery.end());
            const CRun run = m_zorcld.Run(vecArgs);
            EXPECT_EQ(run.nStatus, 0) << run.sErr;
            return SortedLines(m_zorcld.GetPath(sName));
        };
        const std::vector<std::string> vecWhole = ask(m_sOne, "whole.csv");
        EXPECT_GT(vecWhole.size(), 100U);
        EXPECT_EQ(ask(m_sTiles, "tiles.csv"), vecWhole) << (vecQuery.empty() ? "" : vecQuery[0]);
    }
}

TEST_F(ZorcldTilesAsked, OnlyTilesThatMatter_AreOpened)
{
    for (const auto& entry : std::filesystem::directory_iterator(m_sTiles))
        if (entry.path().extension() == ".cld" && entry.path().filename() != "tile_0_0.cld")
            std::filesystem::remove(entry.path());
    EXPECT_EQ(Count(m_sTiles, "10,10,40,40"), Count(m_sOne, "10,10,40,40"));
    EXPECT_EQ(Count(m_sTiles, "-1000,-1000,1000,1000"), "6000\n");
    const CRun run =
        m_zorcld.Run({"points", m_sTiles, "-o", m_zorcld.GetPath("out.csv"), "--rect=1,1,40,40"});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    const CRun missing = m_zorcld.Run({"points", m_sTiles, "-o", m_zorcld.GetPath("out.csv")});
    EXPECT_EQ(missing.nStatus, 1);
    EXPECT_TRUE(missing.HasOneErrLine()) << missing.sErr;
}

TEST_F(ZorcldTilesAsked, Info_TellsSums)
{
    const CRun run = m_zorcld.Run({"info", m_sTiles, "--json"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    const nlohmann::json info = nlohmann::json::parse(run.sOut, nullptr, false);
    EXPECT_EQ(info["points"], 6000);
    EXPECT_EQ(info["type"], "tiles");
    EXPECT_EQ(info["bounds"]["min"], ReadManifest(m_sTiles)["bounds"]["min"]);
    EXPECT_NE(m_zorcld.Run({"info", m_sTiles}).sOut.find("edge 50, buffer 9"), std::string::npos);
}

TEST_F(ZorcldTilesAsked, ViewAndOutline_AreThoseOfTheWhole)
{
    const auto view = [&](const std::string& sFile, const std::string& sName)
    {
        const CRun run = m_zorcld.Run({"view", sFile, "-o", m_zorcld.GetPath(sName), "--size", "400x300"});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return ReadPng(m_zorcld.GetPath(sName));
    };
    EXPECT_NEAR(view(m_sTiles, "a.png").CalcShareDrawn(), view(m_sOne, "b.png").CalcShareDrawn(), 0.02);
    const auto outline = [&](const std::string& sFile)
    {
        const CRun run =
            m_zorcld.Run({"outline", sFile, "--distance", "20", "-o", m_zorcld.GetPath("outline.wkt")});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return ReadBytes(m_zorcld.GetPath("outline.wkt"));
    };
    EXPECT_FALSE(outline(m_sTiles).empty());
}

TEST_F(ZorcldTilesAsked, DamagedManifest_OneLineAndStatusOne)
{
    const std::string sText = ReadBytes(m_sTiles + "/manifest.json");
    for (std::size_t n = 0; n < sText.size(); n += 211)
    {
        const std::string sFile = m_zorcld.Write("manifest.json", sText.substr(0, n));
        const CRun run = m_zorcld.Run({"info", sFile});
        EXPECT_EQ(run.nStatus, 1) << n;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    }
}
