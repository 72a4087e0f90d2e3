// Tiles of files that say nothing of their unit, which the user gives.
#include <host/tile/CalcSeal.h>
#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

namespace
{

/// A scan in feet, in a format that says nothing of units, where floats are coarser in metres than in feet.
class ZorcldTileFeet : public testing::Test
{
protected:
    void SetUp() override
    {
        std::vector<float> vecCoords = MakeScan(21, 4000);
        for (std::size_t i = 0; i < vecCoords.size(); i += 3)
        {
            vecCoords[i] = std::round(vecCoords[i] / 0.3048F) + 3.6e6F;
            vecCoords[i + 1] = std::round(vecCoords[i + 1] / 0.3048F);
            vecCoords[i + 2] /= 0.3048F;
        }
        m_sFile = m_zorcld.Write("feet.ply", MakePly(WithoutStacked(vecCoords)));
    }

    CRun CutIt(std::vector<std::string> vecMore) const
    {
        const std::vector<std::string> vecArgs = {"tile", m_sFile, "-o", GetFolder(), "--size", "200"};
        vecMore.insert(vecMore.begin(), vecArgs.begin(), vecArgs.end());
        return m_zorcld.Run(vecMore);
    }

    std::string GetFolder() const { return m_zorcld.GetPath("tiles"); }

    std::vector<TSteps> FindWhole() const
    {
        const std::string sOut = m_zorcld.GetPath("whole.cld");
        EXPECT_EQ(m_zorcld.Run({"ground", m_sFile, "--unit-scale", "0.3048", "-o", sOut}).nStatus, 0);
        return ReadNativePnts(sOut).vecPnts;
    }

    const CZorcld m_zorcld;
    std::string m_sFile;
};

} // namespace

TEST_F(ZorcldTileFeet, GivenWhenCut_UnionOfPrintedCommandsIsTheGroundOfTheWhole)
{
    ASSERT_EQ(CutIt({"--buffer", "220", "--unit-scale", "0.3048"}).nStatus, 0);
    const nlohmann::json manifest = ReadManifest(GetFolder());
    EXPECT_EQ(manifest["metres_per_unit"], 0.3048);
    EXPECT_EQ(manifest["options"]["unit_scale"], nlohmann::json::array({0.3048, 0.3048}));
    EXPECT_EQ(RunCommands(m_zorcld, GetFolder()), FindWhole());
    const CRun other = CutIt({"--buffer", "220"});
    EXPECT_EQ(other.nStatus, 1);
    EXPECT_NE(other.sErr.find("of other files or options"), std::string::npos) << other.sErr;
    EXPECT_EQ(CutIt({"--buffer", "220", "--unit-scale", "0.3048"}).nStatus, 0);
}

TEST_F(ZorcldTileFeet, GivenForTheCommands_UnionOfThemIsTheGroundOfTheWhole)
{
    ASSERT_EQ(CutIt({"--buffer", "220"}).nStatus, 0);
    EXPECT_FALSE(ReadManifest(GetFolder())["options"].contains("unit_scale"));
    EXPECT_EQ(RunCommands(m_zorcld, GetFolder(), {"--unit-scale", "0.3048"}), FindWhole());
}

TEST_F(ZorcldTileFeet, BufferOrMarginForMetres_IsRefused)
{
    const CRun cut = CutIt({"--unit-scale", "0.3048", "--print-commands", "ground"});
    EXPECT_EQ(cut.nStatus, 2);
    EXPECT_TRUE(cut.HasOneErrLine()) << cut.sErr;
    EXPECT_FALSE(std::filesystem::exists(GetFolder()));
    const std::vector<std::string> vecCommands = {"tile",   GetFolder(),    "--print-commands",
                                                  "ground", "--unit-scale", "0.3048"};
    ASSERT_EQ(CutIt({}).nStatus, 0);
    const CRun run = m_zorcld.Run(vecCommands);
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_EQ(run.sOut, "");
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("needs a buffer of 219.8"), std::string::npos) << run.sErr;
    std::filesystem::remove_all(GetFolder());
    ASSERT_EQ(CutIt({"--buffer", "220", "--unit-scale", "1"}).nStatus, 0);
    const CRun margin = m_zorcld.Run(vecCommands);
    EXPECT_EQ(margin.nStatus, 1);
    EXPECT_TRUE(margin.HasOneErrLine()) << margin.sErr;
    EXPECT_NE(margin.sErr.find("a buffer of 220 units and a margin of 1.5"), std::string::npos)
        << margin.sErr;
    std::filesystem::remove_all(GetFolder());
    ASSERT_EQ(CutIt({"--buffer", "221", "--unit-scale", "1"}).nStatus, 0); // which has room for the margin
    EXPECT_EQ(RunCommands(m_zorcld, GetFolder(), {"--unit-scale", "0.3048"}), FindWhole());
}

TEST_F(ZorcldTileFeet, UnitOfHeightsAlone_IsInTheCommands)
{
    ASSERT_EQ(CutIt({}).nStatus, 0);
    nlohmann::json manifest = ReadManifest(GetFolder());
    manifest["metres_per_height_unit"] = 0.3048;
    manifest["seal"] = zorcld::CalcSeal(zorcld::CJsonField::TJson(manifest));
    std::ofstream(GetFolder() + "/manifest.json") << manifest.dump(1);
    const CRun run = m_zorcld.Run({"tile", GetFolder(), "--print-commands", "ground"});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sOut.find(" --unit-scale=1,0.3048 "), std::string::npos) << run.sOut;
}
