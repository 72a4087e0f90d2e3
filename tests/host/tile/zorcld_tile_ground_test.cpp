#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace
{

/// The ground of all cores, tile by tile, sorted.
std::vector<TSteps> JoinGround(const CZorcld& zorcld, const std::string& sFolder)
{
    std::vector<TSteps> vecAll;
    for (const nlohmann::json& tile : GetTiles(sFolder))
    {
        const std::string sOut = zorcld.GetPath("part.cld");
        std::filesystem::remove(sOut);
        const auto core = tile["core"].get<std::vector<double>>();
        const CRun run = zorcld.Run({"ground", sFolder + "/" + tile["file"].get<std::string>(), "-o", sOut,
                                     fmt::format("--core={},{},{},{}", core[0], core[1], core[2], core[3])});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        const std::vector<TSteps> vecPart = ReadNativePnts(sOut).vecPnts;
        vecAll.insert(vecAll.end(), vecPart.begin(), vecPart.end());
    }
    std::sort(vecAll.begin(), vecAll.end());
    return vecAll;
}

std::string Cut(const CZorcld& zorcld, const std::string& sFile, const std::string& sSize,
                const std::string& sBuffer)
{
    std::string sFolder = zorcld.GetPath("tiles_" + sSize + "_" + sBuffer);
    const CRun run = zorcld.Run({"tile", sFile, "-o", sFolder, "--size", sSize, "--buffer", sBuffer});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return sFolder;
}

/// The ground of the cloud as the library loads it. REQUIRES: no two points at one x and y.
std::vector<TSteps> FindGround(const CZorcld& zorcld, const std::string& sFile)
{
    const std::string sOut = zorcld.GetPath("whole.cld");
    const CRun run = zorcld.Run({"ground", sFile, "-o", sOut});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return ReadNativePnts(sOut).vecPnts;
}

/// Points one behind the other: the first stays if another one does not, which stays if the last does not;
/// that one lies 50 units from the first. What lies beside them keeps a point from staying by itself.
const std::vector<float> c_vecChain50 = {99.5F, 0,   0,      83.5F, 0,      -100,   116,
                                         0,     0,   132.5F, 0,     -4,     133.5F, 8.5F,
                                         -100,  141, -8.5F,  -4,    149.5F, -8.5F,  -8};

/// The same with a link more: the last lies 59 units from the first.
const std::vector<float> c_vecChain59 = {99.5F, 0,   0,   83.5F, 0,    -100, 116,   0,      0,      132.5F,
                                         0,     -4,  133, 8.5F,  -100, 141,  -8.5F, -4,     149.5F, -8.5F,
                                         -8,    150, -4,  -100,  154,  -13,  -8,    158.5F, -13,    -12};

void CheckChain(const std::vector<float>& vecChain)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("chain.ply", MakePly(vecChain));
    const std::vector<TSteps> vecWhole = FindGround(zorcld, sFile);
    // The last point decides about the first.
    std::vector<float> vecShort(vecChain.begin(), vecChain.end() - 3);
    const std::string sShort = zorcld.Write("short.ply", MakePly(vecShort));
    const auto hasFirst = [](const std::vector<TSteps>& vecPnts) {
        return std::binary_search(vecPnts.begin(), vecPnts.end(), TSteps{0, 0, 0});
    };
    EXPECT_NE(hasFirst(vecWhole), hasFirst(FindGround(zorcld, sShort)));
    EXPECT_EQ(JoinGround(zorcld, Cut(zorcld, sFile, "100", "67")), vecWhole);
    EXPECT_EQ(JoinGround(zorcld, Cut(zorcld, sFile, "20", "67")), vecWhole);
    EXPECT_NE(JoinGround(zorcld, Cut(zorcld, sFile, "100", "33")), vecWhole);
}

} // namespace

TEST(ZorcldTileGround, UnionOfCores_IsTheGroundOfTheWhole)
{
    for (std::uint32_t nSeed = 1; nSeed <= 4; ++nSeed)
    {
        const CZorcld zorcld;
        const std::string sFile = zorcld.Write("scan.ply", MakePly(WithoutStacked(MakeScan(nSeed, 4000))));
        const std::vector<TSteps> vecWhole = FindGround(zorcld, sFile);
        ASSERT_GT(vecWhole.size(), 100U);
        for (const char* pSize : {"50", "64", "101.7"})
            EXPECT_EQ(JoinGround(zorcld, Cut(zorcld, sFile, pSize, "67")), vecWhole) << nSeed << ' ' << pSize;
    }
}

TEST(ZorcldTileGround, PntsAboveEachOther_AreAllJudged)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(5, 5000)));
    const std::string sOne = Cut(zorcld, sFile, "100000", "67");
    EXPECT_EQ(JoinGround(zorcld, Cut(zorcld, sFile, "64", "67")), JoinGround(zorcld, sOne));
}

TEST(ZorcldTileGround, PntDecidedBy50UnitsAway_NeedsTheBuffer)
{
    CheckChain(c_vecChain50);
}

TEST(ZorcldTileGround, PntDecidedBy59UnitsAway_NeedsTheBuffer)
{
    CheckChain(c_vecChain59);
}

TEST(ZorcldTileGround, FarFromZero_TheMarginFollowsWhatFloatsLieApart)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("near.ply", MakePly(c_vecChain50));
    const double dMargin = ReadManifest(Cut(zorcld, sFile, "100", "67"))["margin"].get<double>();
    EXPECT_GT(dMargin, 0.0);
    EXPECT_LT(dMargin, 0.2);
    std::vector<float> vecFar = c_vecChain50;
    for (std::size_t i = 0; i < vecFar.size(); i += 3)
        vecFar[i] += 5.0e6F;
    const std::string sFar = zorcld.Write("far.ply", MakePly(vecFar));
    const std::string sFolder = Cut(zorcld, sFar, "50", "67");
    EXPECT_EQ(ReadManifest(sFolder)["margin"].get<double>(), 6.0); // in a unit that nobody knows
    EXPECT_EQ(JoinGround(zorcld, sFolder), FindGround(zorcld, sFar));
    const std::string sMetres = zorcld.GetPath("metres");
    const CRun run = zorcld.Run({"tile", sFar, "-o", sMetres, "--size", "50", "--unit-scale", "1"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(ReadManifest(sMetres)["margin"].get<double>(), 3.0);
    EXPECT_EQ(JoinGround(zorcld, sMetres), FindGround(zorcld, sFar));
}

TEST(ZorcldTileGround, SmallBuffer_IsToldWhenCutAndNoCommands)
{
    for (const char* pBuffer : {"0", "33", "66.9"})
    {
        SCOPED_TRACE(pBuffer);
        const CZorcld zorcld;
        const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(6, 500)));
        const std::string sFolder = zorcld.GetPath("tiles");
        const std::string sCause =
            std::string("the ground filter needs a buffer of 67 units, these tiles have ") + pBuffer;
        const CRun cut = zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "40", "--buffer", pBuffer});
        EXPECT_EQ(cut.nStatus, 0);
        EXPECT_NE(cut.sErr.find(sCause), std::string::npos) << cut.sErr;
        const CRun commands = zorcld.Run({"tile", sFolder, "--print-commands", "ground"});
        EXPECT_EQ(commands.nStatus, 1);
        EXPECT_EQ(commands.sOut, "");
        EXPECT_TRUE(commands.HasOneErrLine());
        EXPECT_NE(commands.sErr.find(sCause), std::string::npos) << commands.sErr;
    }
}

TEST(ZorcldTileGround, CoreWithoutGround_NoFileAndStatusZero)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("two.ply", MakePly({0, 0, 0, 1, 0, 50}));
    const std::string sOut = zorcld.Write("out.cld", "from before");
    const CRun run = zorcld.Run({"ground", sFile, "-o", sOut, "--core=0.5,-1,2,1"});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(run.sErr.find("no ground in the core"), std::string::npos) << run.sErr;
    EXPECT_FALSE(std::filesystem::exists(sOut));
}

// The windows are in metres, and so are the filter's coordinates: of a tile as of the whole.
TEST(ZorcldTileGround, Feet_UnionOfPrintedCommandsIsTheGroundOfTheWhole)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "LAS is not read";
    const std::string sBoth =
        "COMPD_CS[\"c\",PROJCS[\"p\",UNIT[\"foot\",0.3048]],VERT_CS[\"v\",UNIT[\"m\",1]]]";
    for (const std::uint32_t nSeed : {11U, 12U, 13U})
        for (const bool bHeightsInMetres : {false, true})
        {
            const CZorcld zorcld;
            CLasFile las = LasOf(0, 0);
            las.adScale = {0.001, 0.001, 0.001};
            las.adOffset = {1500000.0, 700000.0, 0.0};
            const std::vector<float> vecCoords = WithoutStacked(MakeScan(nSeed, 4000));
            for (std::size_t i = 0; i < vecCoords.size(); i += 3)
            {
                const auto step = [&](std::size_t k, double dUnit)
                { return static_cast<std::int32_t>(std::lround(vecCoords[i + k] / dUnit * 1000.0)); };
                las.vecPnts.push_back(
                    {step(0, 0.3048), step(1, 0.3048), step(2, bHeightsInMetres ? 1.0 : 0.3048), {}});
            }
            las.vecNamed = bHeightsInMetres ? std::vector<CLasNamedRecord>{LasWkt(sBoth)}
                                            : LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9002}});
            const std::string sFile = zorcld.Write("feet.las", las.GetBytes());
            const std::vector<TSteps> vecWhole = FindGround(zorcld, sFile);
            ASSERT_GT(vecWhole.size(), 100U);
            for (const char* pSize : {"200", "333"})
            {
                const std::string sFolder = Cut(zorcld, sFile, pSize, "220");
                EXPECT_EQ(ReadManifest(sFolder)["metres_per_unit"].get<double>(), 0.3048);
                EXPECT_EQ(RunCommands(zorcld, sFolder), vecWhole) << nSeed << ' ' << pSize;
            }
        }
}

TEST(ZorcldTileGround, Degrees_ToldWhenCutAndNoCommands)
{
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = LasOf(0, 100);
    las.vecNamed = LasGeoKeys({{1024, 0, 1, 2}, {2048, 0, 1, 4326}});
    const std::string sFile = zorcld.Write("degrees.las", las.GetBytes());
    const std::string sFolder = zorcld.GetPath("tiles");
    const CRun run = zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "1", "--buffer", "0.1"});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(run.sErr.find("x and y are angles"), std::string::npos) << run.sErr;
    const CRun commands = zorcld.Run({"tile", sFolder, "--print-commands", "ground"});
    EXPECT_EQ(commands.nStatus, 1);
    EXPECT_TRUE(commands.HasOneErrLine()) << commands.sErr;
}

TEST(ZorcldTileGround, PrintedCommands_RunInAShell)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("it's a scan.ply", MakePly(WithoutStacked(MakeScan(6, 2000))));
    const std::string sFolder = zorcld.GetPath("it's cut");
    const CRun run =
        zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "100", "--print-commands", "ground"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    const CRun same = zorcld.Run({"tile", sFolder, "--print-commands", "ground", "-o", sFolder + "/."});
    EXPECT_EQ(same.nStatus, 2);
    EXPECT_EQ(same.sOut, "");
    EXPECT_NE(same.sErr.find("is the folder of the tiles"), std::string::npos) << same.sErr;
    const CRun again = zorcld.Run({"tile", sFolder, "--print-commands", "ground"});
    EXPECT_EQ(again.sOut, run.sOut);
    for (const nlohmann::json& tile : GetTiles(sFolder)) // a damaged tile is refused
        EXPECT_NE(run.sOut.find(" --xxh128 " + tile["xxh128"].get<std::string>()), std::string::npos);
    EXPECT_EQ(RunCommands(zorcld, sFolder), FindGround(zorcld, sFile));
}

TEST(ZorcldTileGroundNone, NothingInTheCore_RemovesNoFolderAndNotWhatWasRead)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(1, 3000)));
    const std::string sIn = zorcld.GetPath("in.cld");
    ASSERT_EQ(zorcld.Run({"convert", sFile, sIn}).nStatus, 0);
    const auto run = [&](const std::string& sOut) {
        return zorcld.Run(
            {"ground", sIn, "--core=9000,9000,9001,9001", "--force", "-o", zorcld.GetPath(sOut)});
    };
    std::filesystem::create_directory(zorcld.GetPath("folder.cld"));
    EXPECT_EQ(run("folder.cld").nStatus, 1);
    EXPECT_TRUE(std::filesystem::exists(zorcld.GetPath("folder.cld")));
    const CRun same = run("in.cld");
    EXPECT_EQ(same.nStatus, 1);
    EXPECT_TRUE(same.HasOneErrLine()) << same.sErr;
    EXPECT_TRUE(std::filesystem::exists(sIn));
    // An older result goes, also behind a link, which stays; and the command may be run again.
    static_cast<void>(zorcld.Write("old.cld", "an older result"));
    std::filesystem::create_symlink(zorcld.GetPath("old.cld"), zorcld.GetPath("link.cld"));
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(run("link.cld").nStatus, 0);
        EXPECT_FALSE(std::filesystem::exists(zorcld.GetPath("old.cld")));
        EXPECT_TRUE(std::filesystem::is_symlink(zorcld.GetPath("link.cld")));
    }
}
