#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

namespace
{

/// The whole cloud as one tile holds it: every point, nothing cut.
CNativePntsRead TileAsOne(const CZorcld& zorcld, const std::vector<std::string>& vecFiles)
{
    std::vector<std::string> vecArgs = {"tile", "-o", zorcld.GetPath("one"), "--size", "1000000"};
    vecArgs.insert(vecArgs.begin() + 1, vecFiles.begin(), vecFiles.end());
    EXPECT_EQ(zorcld.Run(vecArgs).nStatus, 0);
    CNativePntsRead all;
    for (const nlohmann::json& tile : GetTiles(zorcld.GetPath("one")))
    {
        const CNativePntsRead read = ReadNativePnts(zorcld.GetPath("one/" + tile["file"].get<std::string>()));
        all.afOrigin = read.afOrigin;
        const std::vector<TSteps> vecCore = ChooseAround(read, tile["core"], 0);
        all.vecPnts.insert(all.vecPnts.end(), vecCore.begin(), vecCore.end());
    }
    std::sort(all.vecPnts.begin(), all.vecPnts.end());
    return all;
}

std::vector<TSteps> StepsFrom(const std::vector<float>& vecCoords)
{
    std::vector<TSteps> vecSteps;
    for (std::size_t i = 0; i < vecCoords.size(); i += 3)
    {
        TSteps anSteps{};
        for (std::size_t k = 0; k < 3; ++k)
            anSteps[k] = static_cast<std::int32_t>(
                (static_cast<double>(vecCoords[i + k]) - static_cast<double>(vecCoords[k])) * 10000.0);
        vecSteps.push_back(anSteps);
    }
    std::sort(vecSteps.begin(), vecSteps.end());
    return vecSteps;
}

} // namespace

TEST(ZorcldTile, CoresPartitionTheCloud_BuffersHoldAllThatIsNear)
{
    const CZorcld zorcld;
    const std::vector<float> vecCoords = MakeScan(1, 3000);
    const std::string sFile = zorcld.Write("scan.ply", MakePly(vecCoords));
    const CNativePntsRead all = TileAsOne(zorcld, {sFile});
    ASSERT_EQ(all.vecPnts, StepsFrom(vecCoords));
    int nTiling = 0;
    for (const auto& [sSize, sBuffer] : std::vector<std::pair<std::string, std::string>>{
             {"16", "0"}, {"16", "67"}, {"50", "5"}, {"64", "67"}, {"33.3", "20.5"}, {"1000", "67"}})
    {
        SCOPED_TRACE(sSize + " " + sBuffer);
        const std::string sFolder = zorcld.GetPath("tiles" + std::to_string(nTiling++));
        const CRun run = zorcld.Run({"tile", sFile, "-o", sFolder, "--size", sSize, "--buffer", sBuffer});
        ASSERT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_EQ(JoinCores(sFolder), all.vecPnts);
        const nlohmann::json manifest = ReadManifest(sFolder);
        const double dReach = std::stod(sBuffer) + manifest["margin"].get<double>();
        for (const nlohmann::json& tile : manifest["tiles"])
        {
            const CNativePntsRead read = ReadNativePnts(sFolder + "/" + tile["file"].get<std::string>());
            EXPECT_EQ(read.afOrigin, all.afOrigin);
            EXPECT_EQ(read.vecPnts, ChooseAround(all, tile["core"],
                                                 static_cast<std::int64_t>(std::ceil(dReach * 10000.0))));
            EXPECT_EQ(tile["points"].get<std::size_t>(), ChooseAround(read, tile["core"], 0).size());
            EXPECT_EQ(tile["points"].get<std::size_t>() + tile["buffer_points"].get<std::size_t>(),
                      read.vecPnts.size());
        }
    }
}

TEST(ZorcldTile, SeveralFiles_OneOriginOneCloud)
{
    const CZorcld zorcld;
    const std::vector<float> vecCoords = MakeScan(2, 999);
    std::vector<float> vecFirst(vecCoords.begin(), vecCoords.begin() + 600);
    std::vector<float> vecRest(vecCoords.begin() + 600, vecCoords.end());
    const std::string sFirst = zorcld.Write("a.ply", MakePly(vecFirst));
    const std::string sRest = zorcld.Write("b.ply", MakePly(vecRest));
    const std::string sFolder = zorcld.GetPath("tiles");
    ASSERT_EQ(zorcld.Run({"tile", sFirst, sRest, "-o", sFolder, "--size", "64"}).nStatus, 0);
    EXPECT_EQ(JoinCores(sFolder), StepsFrom(vecCoords));
    const nlohmann::json manifest = ReadManifest(sFolder);
    EXPECT_EQ(manifest["sources"].size(), 2U);
    EXPECT_EQ(manifest["sources"][1]["points"], 799);
    EXPECT_EQ(manifest["points"], 999);
}

TEST(ZorcldTile, TilesCutAgain_KeepTheirNumbers)
{
    const CZorcld zorcld;
    const std::vector<float> vecCoords = MakeScan(3, 2000);
    const std::string sFile = zorcld.Write("scan.ply", MakePly(vecCoords));
    const std::string sFolder = zorcld.GetPath("tiles");
    ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "100", "--buffer", "0"}).nStatus, 0);
    std::vector<std::string> vecArgs = {"tile", "-o", zorcld.GetPath("again"), "--size", "37"};
    for (const nlohmann::json& tile : GetTiles(sFolder))
        vecArgs.push_back(sFolder + "/" + tile["file"].get<std::string>());
    ASSERT_EQ(zorcld.Run(vecArgs).nStatus, 0);
    EXPECT_EQ(JoinCores(zorcld.GetPath("again")), StepsFrom(vecCoords));
}

TEST(ZorcldTile, Dedupe_RemovesWhatIsEqualInXYAndZ_TheSameForAnyTiling)
{
    const CZorcld zorcld;
    std::vector<float> vecCoords = MakeScan(4, 1500);
    vecCoords.insert(vecCoords.end(), vecCoords.begin(), vecCoords.begin() + 900);
    std::vector<TSteps> vecOnce = StepsFrom(vecCoords);
    vecOnce.erase(std::unique(vecOnce.begin(), vecOnce.end()), vecOnce.end());
    const std::string sFile = zorcld.Write("scan.ply", MakePly(vecCoords));
    for (const std::string sSize : {"16", "64", "1000"})
    {
        const std::string sFolder = zorcld.GetPath("tiles" + sSize);
        ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", sFolder, "--size", sSize, "--dedupe", "exact"}).nStatus,
                  0);
        EXPECT_EQ(JoinCores(sFolder), vecOnce) << sSize;
        EXPECT_EQ(ReadManifest(sFolder)["duplicates_removed"], 1800 - vecOnce.size());
    }
}

TEST(ZorcldTile, PntsBeyondReach_AreRefusedWithThePlace)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("far.ply", MakePly({0, 0, 0, 5, 300000, 1}));
    const CRun run = zorcld.Run({"tile", sFile, "-o", zorcld.GetPath("tiles"), "--size", "100"});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("y 300000, more than 214748 units"), std::string::npos) << run.sErr;
}

TEST(ZorcldTile, PntsThatAreNoPlaces_AreLeftOutAndTold)
{
    const CZorcld zorcld;
    const float fNone = std::numeric_limits<float>::quiet_NaN();
    const std::string sFile = zorcld.Write("nan.ply", MakePly({fNone, 0, 0, 1, 2, 3, 4, fNone, 5}));
    const CRun run = zorcld.Run({"tile", sFile, "-o", zorcld.GetPath("tiles"), "--size", "100"});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(run.sErr.find("2 points whose coordinates are not numbers are left out"), std::string::npos);
    EXPECT_EQ(ReadManifest(zorcld.GetPath("tiles"))["points"], 1);
}

TEST(ZorcldTile, Colours_StayWithTheirPnts)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(30));
    const std::string sFolder = zorcld.GetPath("tiles");
    ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "7", "--buffer", "2"}).nStatus, 0);
    EXPECT_EQ(ReadManifest(sFolder)["color"], true);
    ASSERT_EQ(zorcld.Run({"points", sFolder + "/tile_1_2.cld", "-o", zorcld.GetPath("out.csv")}).nStatus, 0);
    EXPECT_NE(ReadBytes(zorcld.GetPath("out.csv")).find(",200,100,50\n"), std::string::npos);
}

TEST(ZorcldTile, FilesOfTheSameNames_AreNotOverwritten)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(5, 500)));
    const std::string sFolder = zorcld.GetPath("tiles");
    ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "1000"}).nStatus, 0);
    const std::string sTile = sFolder + "/" + GetTiles(sFolder).front()["file"].get<std::string>();
    const std::string sBytes = ReadBytes(sTile);
    std::filesystem::remove(sFolder + "/manifest.json");
    for (const std::string& sSource : {sTile, sFile})
    {
        const CRun run = zorcld.Run({"tile", sSource, "-o", sFolder, "--size", "1000"});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("which no manifest there tells of"), std::string::npos) << run.sErr;
        EXPECT_TRUE(ReadBytes(sTile) == sBytes);
    }
}

TEST(ZorcldTile, OtherFilesInTheFolder_Stay)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(5, 500)));
    std::filesystem::create_directory(zorcld.GetPath("tiles"));
    const std::string sOther = zorcld.Write("tiles/notes.txt", "mine");
    ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", zorcld.GetPath("tiles"), "--size", "50"}).nStatus, 0);
    EXPECT_EQ(ReadBytes(sOther), "mine");
}

TEST(ZorcldTile, AllEqualAndSinglePnts_AreTiles)
{
    const CZorcld zorcld;
    const std::string sOne = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    const std::string sEqual = zorcld.Write("equal.ply", MakePly(std::vector<float>(300, 5.0F)));
    for (const auto& [sFile, nNum] : {std::pair{sOne, 1}, std::pair{sEqual, 100}})
    {
        const std::string sFolder = sFile + ".tiles";
        ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "0.5", "--buffer", "0"}).nStatus, 0);
        EXPECT_EQ(ReadManifest(sFolder)["points"], nNum);
        EXPECT_EQ(GetTiles(sFolder).size(), 1U);
    }
}

TEST(ZorcldTile, WrongUsage_StatusTwoAndOneLine)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(10));
    const std::string sOut = zorcld.GetPath("tiles");
    const std::vector<std::vector<std::string>> vecWrong = {
        {"tile", sFile, "--size", "5"},
        {"tile", sFile, "-o", sOut},
        {"tile", sFile, "-o", sOut, "--size", "0"},
        {"tile", sFile, "-o", sOut, "--size", "nan"},
        {"tile", sFile, "-o", sOut, "--size", "1", "--buffer", "17"},
        {"tile", sFile, "-o", sOut, "--size", "5", "--dedupe", "some"},
        {"tile", "-o", sOut, "--size", "5"},
        {"ground", sFile, "--core", "0,0,0,1"},
        {"ground", sFile, "--core", "0,0,1"}};
    for (const std::vector<std::string>& vecArgs : vecWrong)
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 2) << run.sErr;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    }
    EXPECT_FALSE(std::filesystem::exists(sOut));
}

// As zorcld convert says it.
TEST(ZorcldTile, NoPoints_OneTextForAllFiles)
{
    const CZorcld zorcld;
    constexpr float c_fNan = std::numeric_limits<float>::quiet_NaN();
    std::vector<std::pair<std::string, std::string>> vecCases = {
        {zorcld.Write("nan.ply", MakePly({c_fNan, 0, 0})), "holds no point whose coordinates are numbers"}};
    if (CZorcld::HasLaszip())
        vecCases.emplace_back(zorcld.Write("none.las", LasOf(1, 0).GetBytes()), "holds no points");
    for (const auto& [sFile, sCause] : vecCases)
    {
        const CRun run = zorcld.Run({"tile", sFile, "-o", zorcld.GetPath("tiles"), "--size", "50"});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_EQ(run.sErr, "zorcld: " + sFile + ": " + sCause + "\n");
        EXPECT_EQ(zorcld.Run({"convert", sFile, zorcld.GetPath("out.cld")}).sErr, run.sErr);
    }
}
