// What `zorcld tile` is asked together that does not go together, and folders that are not what they should
// be.
#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace
{

class ZorcldTileOptions : public testing::Test
{
protected:
    void SetUp() override
    {
        m_sFile = m_zorcld.Write("scan.ply", MakePly(MakeScan(1, 2000)));
        m_sTiles = m_zorcld.GetPath("tiles");
        ASSERT_EQ(m_zorcld.Run({"tile", m_sFile, "-o", m_sTiles, "--size", "200"}).nStatus, 0);
    }

    /// @return what is said in one line, without a result.
    std::string Refuse(int nStatus, const std::vector<std::string>& vecArgs) const
    {
        const CRun run = m_zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, nStatus) << run.sErr;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_EQ(run.sOut, "");
        return run.sErr;
    }

    const CZorcld m_zorcld;
    std::string m_sFile;
    std::string m_sTiles;
};

} // namespace

TEST_F(ZorcldTileOptions, CheckWithWhatCuts_IsRefused)
{
    for (const std::vector<std::string>& vecMore : {std::vector<std::string>{"--size", "5"},
                                                    {"-o", "E"},
                                                    {"--print-commands", "ground"},
                                                    {"--buffer", "3"}})
    {
        std::vector<std::string> vecArgs = {"tile", m_sTiles, "--check"};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        EXPECT_NE(Refuse(2, vecArgs).find("excludes --check"), std::string::npos);
    }
}

TEST_F(ZorcldTileOptions, CommandsOfCutTilesWithWhatCuts_AreRefused)
{
    for (const std::vector<std::string>& vecMore : {std::vector<std::string>{"--size", "5"},
                                                    {"--type", "las"},
                                                    {"--dedupe", "none"},
                                                    {"--buffer", "3"}})
    {
        std::vector<std::string> vecArgs = {"tile", m_sTiles, "--print-commands", "ground"};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        EXPECT_NE(Refuse(2, vecArgs).find(vecMore.front() + ": the tiles are cut"), std::string::npos);
    }
}

TEST_F(ZorcldTileOptions, ClassesOfTiles_AreRefusedByInfo)
{
    EXPECT_NE(Refuse(2, {"info", m_sTiles, "--class", "2"}).find("tiles have no classes"), std::string::npos);
}

TEST_F(ZorcldTileOptions, WhatIsNotThereOrHasNoManifest_IsNamed)
{
    const std::string sNone = m_zorcld.GetPath("none");
    EXPECT_NE(Refuse(1, {"tile", sNone, "--print-commands", "ground"}).find(sNone + ": No such file"),
              std::string::npos);
    std::filesystem::remove(m_sTiles + "/manifest.json");
    for (const std::vector<std::string>& vecMore :
         {std::vector<std::string>{"--print-commands", "ground"}, {"--check"}})
    {
        std::vector<std::string> vecArgs = {"tile", m_sTiles};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        EXPECT_NE(Refuse(1, vecArgs).find(m_sTiles + ": is a folder without a manifest.json"),
                  std::string::npos);
    }
}

TEST_F(ZorcldTileOptions, NotesOfARunThatCannotBeRead_AreNamed)
{
    const std::string sOther = m_zorcld.GetPath("other");
    const std::string sPlan = sOther + "/.zorcld-tiles/plan.json";
    std::filesystem::create_directories(sPlan);
    EXPECT_NE(Refuse(1, {"tile", m_sFile, "-o", sOther, "--size", "200"})
                  .find("plan.json: cannot be read: Is a directory"),
              std::string::npos);
}

TEST_F(ZorcldTileOptions, FolderNamedAsAnOption_IsNoOptionInTheCommands)
{
    std::filesystem::rename(m_sTiles, m_zorcld.GetPath("-dash"));
    const CRun run = m_zorcld.RunAfter("cd '" + m_zorcld.GetPath("") + "';",
                                       {"tile", "./-dash", "--print-commands", "ground", "--output=-out"});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sOut.find(" ./-dash/tile_"), std::string::npos) << run.sOut;
    EXPECT_NE(run.sOut.find(" -o ./-out/tile_"), std::string::npos) << run.sOut;
}
