#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace
{

/// A scan that is cut, and the same tiles from a run that nothing has interrupted.
class ZorcldTileResume : public testing::Test
{
protected:
    void SetUp() override
    {
        m_sFile = m_zorcld.Write("scan.ply", MakePly(MakeScan(1, 60000)));
        ASSERT_EQ(m_zorcld.Run(Args("whole")).nStatus, 0);
    }

    std::vector<std::string> Args(const std::string& sFolder, const std::string& sSize = "50") const
    {
        return {"tile", m_sFile, "-o", m_zorcld.GetPath(sFolder), "--size", sSize, "--buffer", "20"};
    }

    void ExpectWhole(const std::string& sFolder) const
    {
        EXPECT_TRUE(ReadFolder(m_zorcld.GetPath(sFolder)) == ReadFolder(m_zorcld.GetPath("whole")));
        EXPECT_FALSE(fs::exists(m_zorcld.GetPath(sFolder) + "/.zorcld-tiles"));
    }

    const CZorcld m_zorcld;
    std::string m_sFile;
};

} // namespace

TEST_F(ZorcldTileResume, SameFilesAndOptions_TheSameBytes)
{
    ASSERT_EQ(m_zorcld.Run(Args("again")).nStatus, 0);
    ExpectWhole("again");
}

TEST_F(ZorcldTileResume, KilledAnywhere_TheNextRunGoesOn)
{
    CRun run;
    int nKilled = 0;
    for (int nMs = 4; run.nStatus != 0 && nMs < 20000; nMs += nMs / 2)
    {
        run = m_zorcld.RunAfter("timeout -s KILL " + std::to_string(0.001 * nMs), Args("killed"));
        nKilled += run.nStatus != 0 ? 1 : 0;
        if (fs::exists(m_zorcld.GetPath("killed/manifest.json"))) // killed behind it, or not at all
            EXPECT_TRUE(ReadFolder(m_zorcld.GetPath("killed")) == ReadFolder(m_zorcld.GetPath("whole")));
        else
            EXPECT_NE(run.nStatus, 0);
    }
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_GT(nKilled, 1);
    ExpectWhole("killed");
}

// A limit for the size of files fails as a full disk does: in the middle of a tile's points, or of a tile.
TEST_F(ZorcldTileResume, DiskFull_IsToldAndTheNextRunCompletes)
{
    int nFailed = 0;
    for (const char* pBlocks : {"10", "60", "100", "200"})
    {
        SCOPED_TRACE(pBlocks);
        const std::string sFolder = std::string("full") + pBlocks;
        const CRun run = m_zorcld.RunAfter(std::string("ulimit -f ") + pBlocks + ";", Args(sFolder));
        if (run.nStatus != 0)
        {
            ++nFailed;
            EXPECT_EQ(run.nStatus, 1);
            EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
            EXPECT_NE(run.sErr.find("could not be written"), std::string::npos) << run.sErr;
            EXPECT_FALSE(fs::exists(m_zorcld.GetPath(sFolder) + "/manifest.json"));
            ASSERT_EQ(m_zorcld.Run(Args(sFolder)).nStatus, 0);
        }
        ExpectWhole(sFolder);
    }
    EXPECT_GT(nFailed, 1);
}

TEST_F(ZorcldTileResume, TilesThatAreThere_AreKnownByTheirHash)
{
    const std::string sFolder = m_zorcld.GetPath("whole");
    const std::string sBefore = ReadFolder(sFolder);
    const CRun kept = m_zorcld.Run(Args("whole"));
    EXPECT_EQ(kept.nStatus, 0);
    const std::size_t nNumTiles = ReadManifest(sFolder)["tiles"].size();
    EXPECT_NE(kept.sOut.find(std::to_string(nNumTiles) + " tiles were there"), std::string::npos)
        << kept.sOut;

    fs::remove(sFolder + "/tile_0_0.cld");
    std::string sChanged = ReadBytes(sFolder + "/tile_1_0.cld");
    sChanged[100] = static_cast<char>(sChanged[100] ^ 1);
    static_cast<void>(m_zorcld.Write("whole/tile_1_0.cld", sChanged));
    const CRun mended = m_zorcld.Run(Args("whole"));
    EXPECT_EQ(mended.nStatus, 0) << mended.sErr;
    EXPECT_NE(mended.sOut.find(std::to_string(nNumTiles - 2) + " tiles were there"), std::string::npos);
    EXPECT_TRUE(ReadFolder(sFolder) == sBefore);
}

TEST_F(ZorcldTileResume, OtherFilesOrOptions_AreRefused)
{
    const std::string sBefore = ReadFolder(m_zorcld.GetPath("whole"));
    const CRun size = m_zorcld.Run(Args("whole", "40"));
    EXPECT_EQ(size.nStatus, 1);
    EXPECT_TRUE(size.HasOneErrLine()) << size.sErr;
    static_cast<void>(m_zorcld.Write("scan.ply", MakePly(MakeScan(2, 60000))));
    const CRun file = m_zorcld.Run(Args("whole"));
    EXPECT_EQ(file.nStatus, 1);
    EXPECT_NE(file.sErr.find("holds tiles of other files or options"), std::string::npos) << file.sErr;
    EXPECT_TRUE(ReadFolder(m_zorcld.GetPath("whole")) == sBefore);
}

TEST_F(ZorcldTileResume, FileThatCannotBeCut_LeavesNothingBehind)
{
    const std::string sFolder = m_zorcld.GetPath("none");
    for (const std::string& sFile : {m_zorcld.GetPath("absent.ply"), m_zorcld.Write("text.ply", "text")})
    {
        const CRun run = m_zorcld.Run({"tile", sFile, "-o", sFolder, "--size", "50"});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_FALSE(fs::exists(sFolder));
    }
}

namespace
{

/// Tiles of all points each, whose points wait, whole, while no tile could be written: files may not grow to
/// the size of one.
class ZorcldTileWaiting : public ZorcldTileResume
{
protected:
    void SetUp() override
    {
        ZorcldTileResume::SetUp();
        ASSERT_EQ(m_zorcld.Run(LargeArgs("large")).nStatus, 0);
        ASSERT_EQ(m_zorcld.RunAfter("ulimit -f 1446;", LargeArgs("cut")).nStatus, 1);
        ASSERT_TRUE(fs::exists(m_zorcld.GetPath(c_pWork) + "/points.whole"));
    }

    std::vector<std::string> LargeArgs(const std::string& sFolder) const
    {
        return {"tile", m_sFile, "-o", m_zorcld.GetPath(sFolder), "--size", "1000", "--buffer", "1000"};
    }

    CRun ExpectTheSame() const
    {
        CRun run = m_zorcld.Run(LargeArgs("cut"));
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_TRUE(ReadFolder(m_zorcld.GetPath("cut")) == ReadFolder(m_zorcld.GetPath("large")));
        return run;
    }

    static constexpr const char* c_pWork = "cut/.zorcld-tiles";
};

} // namespace

TEST_F(ZorcldTileWaiting, PointsThatAreWhole_AreNotHandedOutAgain)
{
    EXPECT_EQ(ExpectTheSame().sErr, "");
}

TEST_F(ZorcldTileWaiting, DamagedPoints_AreToldAndHandedOutAgain)
{
    const std::string sName = std::string(c_pWork) + "/points/tile_0_0.cld";
    const std::string sBytes = ReadBytes(m_zorcld.GetPath(sName));
    ASSERT_GT(sBytes.size(), 700000U);
    for (const std::size_t nPos : {std::size_t{9}, std::size_t{13}, std::size_t{28}, std::size_t{500000}})
    {
        SCOPED_TRACE(nPos);
        std::string sDamaged = sBytes;
        if (nPos == 500000)
            sDamaged.replace(nPos, 100000, 100000, '\0');
        else
            sDamaged[nPos] = static_cast<char>(sDamaged[nPos] ^ 1);
        fs::remove_all(m_zorcld.GetPath("cut"));
        ASSERT_EQ(m_zorcld.RunAfter("ulimit -f 1446;", LargeArgs("cut")).nStatus, 1);
        static_cast<void>(m_zorcld.Write(sName, sDamaged));
        const CRun run = ExpectTheSame();
        EXPECT_NE(run.sErr.find("tile_0_0.cld: is damaged; the points are handed out again"),
                  std::string::npos)
            << run.sErr;
    }
}

TEST_F(ZorcldTileWaiting, NotesThatCannotBeRead_AreToldAndCuttingBeginsAnew)
{
    const std::string sName = std::string(c_pWork) + "/plan.json";
    const std::string sPlan = ReadBytes(m_zorcld.GetPath(sName));
    std::string sChanged = sPlan;
    sChanged[sChanged.find("60000")] = '5';
    for (const std::string& sText :
         {std::string(), std::string("[]"), std::string("{\"program\": 5}"), sPlan.substr(0, 99), sChanged})
    {
        SCOPED_TRACE(sText.substr(0, 20));
        fs::remove_all(m_zorcld.GetPath("cut"));
        ASSERT_EQ(m_zorcld.RunAfter("ulimit -f 1446;", LargeArgs("cut")).nStatus, 1);
        static_cast<void>(m_zorcld.Write(sName, sText));
        const CRun run = ExpectTheSame();
        EXPECT_NE(run.sErr.find("cutting begins anew"), std::string::npos) << run.sErr;
    }
}

TEST_F(ZorcldTileWaiting, NotedTilesThatAreNotOfThePlan_AreNotTaken)
{
    const std::string sDone =
        R"({"file":"tile_9_9.cld","column":9,"row":9,"core":[0,0,1,1],"points":5,"buffer_points":0,)"
        R"("bounds":{"min":[0,0,0],"max":[0,0,0]},"bytes":0,"xxh128":"99aa06d3014798d86001c324468d497f"})";
    static_cast<void>(m_zorcld.Write(std::string(c_pWork) + "/done", sDone + "\n"));
    static_cast<void>(m_zorcld.Write("cut/tile_9_9.cld", ""));
    const CRun run = m_zorcld.Run(LargeArgs("cut"));
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(ReadManifest(m_zorcld.GetPath("cut"))["points"], 60000);
}

TEST_F(ZorcldTileResume, TemporaryFiles_OnlyItsOwnGoAndNoneWhereItIsRefused)
{
    const std::vector<std::string> vecOthers = {
        "whole/tile_notes.zorcld-keep.txt", "whole/tile_1_1.cld.zorcld-old",
        "whole/tile_mine.cld.zorcld-abc123", "whole/manifest.json.zorcld-backups", "whole/tile_1_1.cld"};
    for (const std::string& sName : vecOthers)
        if (!fs::exists(m_zorcld.GetPath(sName)))
            static_cast<void>(m_zorcld.Write(sName, "somebody's"));
    const std::vector<std::string> vecOwn = {"whole/tile_1_-1.cld.zorcld-abc123",
                                             "whole/manifest.json.zorcld-0a1b2c"};
    for (const std::string& sName : vecOwn)
        static_cast<void>(m_zorcld.Write(sName, "cut off"));
    EXPECT_EQ(m_zorcld.Run(Args("whole", "60")).nStatus, 1);
    for (const std::string& sName : vecOwn)
        EXPECT_TRUE(fs::exists(m_zorcld.GetPath(sName))) << sName;
    EXPECT_EQ(m_zorcld.Run(Args("whole")).nStatus, 0);
    for (const std::string& sName : vecOwn)
        EXPECT_FALSE(fs::exists(m_zorcld.GetPath(sName))) << sName;
    for (const std::string& sName : vecOthers)
        EXPECT_TRUE(fs::exists(m_zorcld.GetPath(sName))) << sName;
}
