// Sources far larger than the memory that there is, and runs that end before their time.
#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/LazBytes.h>

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace
{

constexpr int c_nNumPnts = 1200000;

/// A terrain in lines across, as a scan has them: 800 x 1500 units, a wave high.
CLasFile MakeScanLas()
{
    CLasFile las = LasOf(0, 0);
    las.adScale = {0.001, 0.001, 0.001};
    las.adOffset = {500000.0, 4000000.0, 0.0};
    las.vecPnts.reserve(c_nNumPnts);
    for (int i = 0; i < c_nNumPnts; ++i)
    {
        const int x = i % 800 * 1000 + i / 800 % 7;
        const int y = i / 800 * 1000 + i % 11;
        las.vecPnts.push_back({x, y, x / 100 % 3000, {}});
    }
    return las;
}

std::string MakeScanPly(const CLasFile& las)
{
    std::vector<float> vecCoords;
    for (const CLasPnt& pnt : las.vecPnts)
        for (const std::int32_t n : {pnt.x, pnt.y, pnt.z})
            vecCoords.push_back(static_cast<float>(n) / 1024.0F);
    return MakePly(vecCoords);
}

/// Cuts with a limit for addresses, and finds the ground of all tiles with the same one.
/// @return the status; of the ground one that is not 0, if there is any.
int TileWithin(const CZorcld& zorcld, const std::string& sFile, const std::string& sFolder, long nMaxKib)
{
    fs::remove_all(sFolder);
    const CRun run = zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "100"}, nMaxKib);
    if (run.nStatus != 0)
        return run.nStatus;
    for (const nlohmann::json& tile : GetTiles(sFolder))
    {
        const auto core = tile["core"].get<std::vector<double>>();
        const int nStatus = zorcld
                                .Run({"ground", sFolder + "/" + tile["file"].get<std::string>(), "-o",
                                      sFolder + "/ground.cld",
                                      fmt::format("--core={},{},{},{}", core[0], core[1], core[2], core[3])},
                                     nMaxKib)
                                .nStatus;
        if (nStatus != 0)
            return nStatus;
    }
    return 0;
}

/// What the program takes by itself: the least limit with which a few points are cut and filtered.
long FindLeastKib(const CZorcld& zorcld)
{
    constexpr long c_nStep = 2048;
    const std::string sFile = zorcld.Write("few.ply", MakeGridPly(5));
    long nKib = 16384;
    while (nKib < 4194304 && TileWithin(zorcld, sFile, zorcld.GetPath("few"), nKib) != 0)
        nKib += c_nStep;
    return nKib;
}

} // namespace

// The memory that points may take beside the program is a quarter of what the file has.
TEST(ZorcldTileLimits, SourceFourTimesLargerThanMemory_IsTiledAndFiltered)
{
    if (CZorcld::IsSanitized())
        GTEST_SKIP() << "a sanitizer reserves addresses without end";
    const CZorcld zorcld;
    const CLasFile las = MakeScanLas();
    const long nLeast = FindLeastKib(zorcld);
    std::vector<std::string> vecFiles = {zorcld.Write("scan.ply", MakeScanPly(las))};
    if (CZorcld::HasLaszip())
    {
        vecFiles.push_back(zorcld.Write("scan.las", las.GetBytes()));
        vecFiles.push_back(zorcld.Write("scan.laz", LazBytes(las, 50000)));
    }
    for (const std::string& sFile : vecFiles)
    {
        SCOPED_TRACE(sFile);
        const long nQuarter = c_nNumPnts * 12L / 4 / 1024; // of the points of each, not compressed
        EXPECT_EQ(TileWithin(zorcld, sFile, zorcld.GetPath("tiles"), nLeast + nQuarter), 0);
        EXPECT_EQ(ReadManifest(zorcld.GetPath("tiles"))["points"], c_nNumPnts);
    }
}

TEST(ZorcldTileLimits, KilledAtFiftyMoments_TheSameBytesAndNothingLeft)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(9, 40000)));
    const auto run = [&](const std::string& sBefore, const std::string& sFolder)
    {
        return zorcld.RunAfter(
            sBefore, {"tile", sFile, "-o", zorcld.GetPath(sFolder), "--size", "25", "--buffer", "10"});
    };
    ASSERT_EQ(run("", "whole").nStatus, 0);
    const std::string sWhole = ReadFolder(zorcld.GetPath("whole"));
    std::mt19937 random(1);
    int nKilled = 0;
    for (int i = 0; nKilled < 50 && i < 500; ++i)
    {
        const double dAfter = std::uniform_real_distribution<double>(0.003, 0.4)(random);
        if (run(fmt::format("timeout -s KILL {:.4f}", dAfter), "killed").nStatus != 0)
        {
            ++nKilled;
            continue;
        }
        EXPECT_TRUE(ReadFolder(zorcld.GetPath("killed")) == sWhole);
        EXPECT_FALSE(fs::exists(zorcld.GetPath("killed/.zorcld-tiles")));
        fs::remove_all(zorcld.GetPath("killed"));
    }
    EXPECT_EQ(nKilled, 50);
    ASSERT_EQ(run("", "killed").nStatus, 0);
    EXPECT_TRUE(ReadFolder(zorcld.GetPath("killed")) == sWhole);
    EXPECT_FALSE(fs::exists(zorcld.GetPath("killed/.zorcld-tiles")));
}

// A file system of 3 MB, which tiles do not fit into; then a larger one with what was done.
TEST(ZorcldTileLimits, DiskFull_ToldByFileAndCause_CompletedElsewhere)
{
    const CZorcld zorcld;
    const std::string sDisk = zorcld.GetPath("disk");
    fs::create_directory(sDisk);
    if (std::system(("mount -t tmpfs -o size=3m none '" + sDisk + "' 2>/dev/null").c_str()) != 0)
        GTEST_SKIP() << "no file system can be mounted here";
    const std::string sFile = zorcld.Write("scan.ply", MakePly(MakeScan(7, 100000)));
    const std::vector<std::string> vecArgs = {"tile", sFile, "-o", sDisk + "/tiles", "--size", "50"};
    const CRun full = zorcld.Run(vecArgs);
    EXPECT_EQ(full.nStatus, 1);
    EXPECT_TRUE(full.HasOneErrLine()) << full.sErr;
    EXPECT_NE(full.sErr.find("No space left on device"), std::string::npos) << full.sErr;
    EXPECT_EQ(std::system(("mount -o remount,size=60m '" + sDisk + "'").c_str()), 0);
    const CRun whole = zorcld.Run(vecArgs);
    EXPECT_EQ(whole.nStatus, 0) << whole.sErr;
    ASSERT_EQ(zorcld.Run({"tile", sFile, "-o", zorcld.GetPath("whole"), "--size", "50"}).nStatus, 0);
    EXPECT_TRUE(ReadFolder(sDisk + "/tiles") == ReadFolder(zorcld.GetPath("whole")));
    EXPECT_FALSE(fs::exists(sDisk + "/tiles/.zorcld-tiles"));
    EXPECT_EQ(std::system(("umount '" + sDisk + "'").c_str()), 0);
}
