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

/// A manifest with one thing changed: `at` is the way to it, `put` the new value, or "drop" or "twice" for a
/// tile.
nlohmann::json Damage(nlohmann::json manifest, const nlohmann::json& entry)
{
    nlohmann::json* pPlace = &manifest;
    for (const nlohmann::json& step : entry["at"])
        pPlace = step.is_string() ? &(*pPlace)[step.get<std::string>()] : &(*pPlace)[step.get<std::size_t>()];
    if (entry["put"] == "drop")
        manifest["tiles"].erase(entry["at"][1].get<std::size_t>());
    else if (entry["put"] == "twice")
        manifest["tiles"].insert(manifest["tiles"].begin() + 2, nlohmann::json(*pPlace));
    else
        *pPlace = entry["put"];
    return manifest;
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

// The Python module refuses the same ones, by the same list.
TEST_F(ZorcldTilesAsked, ManifestThatContradictsItself_IsRefusedByItsField)
{
    const nlohmann::json whole = ReadManifest(m_sTiles);
    const nlohmann::json cases = nlohmann::json::parse(ReadBytes(ZORCLD_DAMAGED_MANIFESTS), nullptr, false);
    ASSERT_GT(cases.size(), 50U);
    for (const nlohmann::json& entry : cases)
    {
        SCOPED_TRACE(entry.dump());
        const std::string sFile = m_zorcld.Write("manifest.json", Damage(whole, entry).dump());
        const std::string sCause = sFile + ": is damaged: " + entry["field"].get<std::string>() + " ";
        const CRun run = m_zorcld.Run({"count", sFile, "--rect=0,0,50,50"});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find(sCause), std::string::npos) << run.sErr;
    }
    EXPECT_EQ(m_zorcld.Run({"info", m_zorcld.GetPath("manifest.json")}).nStatus, 1);
}

// A coordinate of a point, so that the number of points stays what it is.
TEST_F(ZorcldTilesAsked, DamagedTile_IsNamedByWhateverReadsIt)
{
    const std::string sTile = m_sTiles + "/tile_0_0.cld";
    std::string sBytes = ReadBytes(sTile);
    sBytes[40] = static_cast<char>(sBytes[40] ^ 1);
    static_cast<void>(m_zorcld.Write("tiles/tile_0_0.cld", sBytes));
    std::string sHash;
    for (const nlohmann::json& tile : GetTiles(m_sTiles))
        if (tile["file"] == "tile_0_0.cld")
            sHash = tile["xxh128"].get<std::string>();
    for (const std::vector<std::string>& vecArgs : std::vector<std::vector<std::string>>{
             {"count", m_sTiles, "--rect=1,1,40,40"},
             {"points", m_sTiles, "-o", m_zorcld.GetPath("out.csv"), "--rect=1,1,40,40"},
             {"view", m_sTiles, "-o", m_zorcld.GetPath("out.png")},
             {"outline", m_sTiles, "--distance", "20", "-o", m_zorcld.GetPath("out.wkt")},
             {"ground", sTile, "--core=0,0,50,50", "--xxh128", sHash, "-o", m_zorcld.GetPath("out.cld")}})
    {
        SCOPED_TRACE(vecArgs[0]);
        const CRun run = m_zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find(sTile + ": is damaged"), std::string::npos) << run.sErr;
        EXPECT_FALSE(std::filesystem::exists(m_zorcld.GetPath("out.cld")));
    }
    EXPECT_EQ(Count(m_sTiles, "-1000,-1000,1000,1000"), "6000\n"); // opens no tile
    EXPECT_EQ(m_zorcld.Run({"ground", sTile, "--xxh128", "abc"}).nStatus, 2);
}

TEST_F(ZorcldTilesAsked, Check_NamesEachTileThatIsNotAsTheManifestSays)
{
    const std::string sNum = std::to_string(GetTiles(m_sTiles).size());
    const CRun whole = m_zorcld.Run({"tile", m_sTiles, "--check"});
    EXPECT_EQ(whole.nStatus, 0) << whole.sErr;
    EXPECT_EQ(whole.sOut, m_sTiles + ": " + sNum + " tiles as the manifest says\n");
    std::filesystem::remove(m_sTiles + "/tile_1_0.cld");
    static_cast<void>(m_zorcld.Write("tiles/tile_0_0.cld", "something else"));
    const CRun damaged = m_zorcld.Run({"tile", m_sTiles + "/manifest.json", "--check"});
    EXPECT_EQ(damaged.nStatus, 1);
    EXPECT_NE(damaged.sErr.find("/tile_0_0.cld: is damaged, or another file"), std::string::npos);
    EXPECT_NE(damaged.sErr.find("/tile_1_0.cld: is missing"), std::string::npos);
    EXPECT_NE(damaged.sErr.find("manifest.json: 2 of its " + sNum + " tiles are not"), std::string::npos)
        << damaged.sErr;
    EXPECT_EQ(m_zorcld.Run({"tile", m_zorcld.GetPath("scan.ply"), "--check"}).nStatus, 2);
}

TEST_F(ZorcldTilesAsked, OrderOfKeys_DoesNotMatter)
{
    const nlohmann::json sorted = ReadManifest(m_sTiles); // this kind of object sorts them
    static_cast<void>(m_zorcld.Write("tiles/other.json", sorted.dump()));
    for (const char* pName : {"/other.json", "/manifest.json", ""})
    {
        EXPECT_EQ(Count(m_sTiles + pName, "-1000,-1000,1000,1000"), "6000\n");
        static_cast<void>(m_zorcld.Write("tiles/manifest.json", sorted.dump()));
    }
}

// What still adds up was not written by the program either.
TEST_F(ZorcldTilesAsked, ManifestChangedByHand_IsRefusedByItsSeal)
{
    const nlohmann::json whole = ReadManifest(m_sTiles);
    for (const auto& [sKey, put] :
         std::vector<std::pair<std::string, nlohmann::json>>{{"/color", true},
                                                             {"/angles", true},
                                                             {"/program", "mine"},
                                                             {"/sources/0/file", "other.ply"},
                                                             {"/tiles/0/bytes", 7},
                                                             {"/more", 1}})
    {
        SCOPED_TRACE(sKey);
        nlohmann::json changed = whole;
        changed[nlohmann::json::json_pointer(sKey)] = put;
        const std::string sFile = m_zorcld.Write("manifest.json", changed.dump());
        const CRun run = m_zorcld.Run({"info", sFile});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_EQ(run.sErr, "zorcld: " + sFile +
                                ": is damaged: seal is not that of the rest, which was changed by hand\n");
    }
}

TEST_F(ZorcldTilesAsked, ByteZeroBehindAManifest_IsNotTakenForItsEnd)
{
    const std::string sText = ReadBytes(m_sTiles + "/manifest.json");
    const CRun run = m_zorcld.Run({"info", m_zorcld.Write("manifest.json", sText + std::string(1, '\0'))});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sErr.find("manifest.json: is no manifest of tiles"), std::string::npos) << run.sErr;
}

TEST_F(ZorcldTilesAsked, EmptyManifest_IsNamed)
{
    static_cast<void>(m_zorcld.Write("tiles/manifest.json", ""));
    const CRun run = m_zorcld.Run({"info", m_sTiles});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_NE(run.sErr.find("manifest.json: is no manifest of tiles"), std::string::npos) << run.sErr;
    const CRun again =
        m_zorcld.Run({"tile", m_zorcld.GetPath("scan.ply"), "-o", m_sTiles, "--size", "50", "--buffer", "9"});
    EXPECT_EQ(again.nStatus, 1);
    EXPECT_NE(again.sErr.find("another folder, or this one emptied, takes tiles"), std::string::npos)
        << again.sErr;
}

// The folder of the tiles is a name of what is read, as the manifest is.
TEST_F(ZorcldTilesAsked, OutputThatIsAFileOfTheTiles_IsRefused)
{
    std::filesystem::create_symlink(m_sTiles + "/tile_0_0.cld", m_zorcld.GetPath("link.csv"));
    std::filesystem::create_symlink(m_sTiles + "/manifest.json", m_zorcld.GetPath("link.png"));
    const std::string sManifest = ReadBytes(m_sTiles + "/manifest.json");
    const std::string sTile = ReadBytes(m_sTiles + "/tile_0_0.cld");
    for (const std::vector<std::string>& vecArgs : std::vector<std::vector<std::string>>{
             {"outline", m_sTiles, "--distance", "20", "-o", m_sTiles + "/manifest.json"},
             {"outline", m_sTiles + "/", "--distance", "20", "-o", m_zorcld.GetPath("link.csv")},
             {"points", m_sTiles, "-o", m_zorcld.GetPath("link.csv")},
             {"points", m_sTiles + "/manifest.json", "-o", m_zorcld.GetPath("link.csv")},
             {"view", m_sTiles, "-o", m_zorcld.GetPath("link.png")}})
    {
        SCOPED_TRACE(vecArgs[0]);
        const CRun run = m_zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 2);
        EXPECT_NE(run.sErr.find("is the file that is read"), std::string::npos) << run.sErr;
        EXPECT_TRUE(ReadBytes(m_sTiles + "/manifest.json") == sManifest);
        EXPECT_TRUE(ReadBytes(m_sTiles + "/tile_0_0.cld") == sTile);
    }
}
