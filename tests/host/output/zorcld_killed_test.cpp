// The program is killed at random moments: what is under a file's name is the old file or the new one, never
// a part of it.

#include <tests/host/support/CTracedRun.h>
#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// Kills of each command: with ZORCLD_KILLS=50 200 together.
int GetNumKills()
{
    const char* const sNum = std::getenv("ZORCLD_KILLS");
    return sNum != nullptr ? std::max(1, std::atoi(sNum)) : CZorcld::IsSanitized() ? 4 : 20;
}

class ZorcldKilled : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!CTracedRun::IsPossible())
            GTEST_SKIP() << "no process may be traced here";
    }

    /// Runs the command to its end, and then often until a moment that it is killed at.
    /// @param look  is called after each run that was killed.
    void KillOften(CTracedRun& run, const std::function<void()>& prepare, const std::function<void()>& look)
    {
        prepare();
        const int nNumMoments = run.RunUntil(-1);
        RecordProperty("moments", nNumMoments);
        ASSERT_GT(nNumMoments, 10);
        for (int n = GetNumKills(); n > 0 && !HasFatalFailure(); --n)
        {
            prepare();
            const int nMoment = static_cast<int>(m_random.Int(0, nNumMoments - 1));
            SCOPED_TRACE("killed at moment " + std::to_string(nMoment) + " of " +
                         std::to_string(nNumMoments));
            run.RunUntil(nMoment);
            EXPECT_FALSE(run.HasEnded());
            look();
        }
    }

    /// A command that replaces a file.
    void KillWhileReplacing(const std::vector<std::string>& vecArgs, const std::string& sTarget)
    {
        const std::string sOld = "what was there before";
        std::string sNew;
        const auto prepare = [&]
        {
            if (sNew.empty() && fs::exists(sTarget))
                sNew = ReadBytes(sTarget);
            static_cast<void>(m_zorcld.Write(fs::path(sTarget).filename().string(), sOld));
        };
        const auto look = [&]
        {
            const std::string sNow = ReadBytes(sTarget);
            ASSERT_TRUE(sNow == sOld || sNow == sNew) << sNow.size() << " of " << sNew.size() << " bytes";
            for (const fs::directory_entry& entry : fs::directory_iterator(m_zorcld.GetPath("")))
                if (entry.path().string().find(".zorcld-") != std::string::npos)
                    fs::remove(entry.path()); // a killed process leaves it, as is told
        };
        prepare();
        ASSERT_EQ(m_zorcld.Run(vecArgs).nStatus, 0);
        CTracedRun run(CTracedRun::FileChanges, vecArgs);
        KillOften(run, prepare, look);
        EXPECT_NE(sNew, "");
    }

    const CZorcld m_zorcld;
    CRandom m_random{7};
    std::string m_sFile = m_zorcld.Write("scan.ply", MakePly(MakeScan(3, 5000)));
};

} // namespace

TEST_F(ZorcldKilled, Convert_OldFileOrNew)
{
    const std::string sTarget = m_zorcld.GetPath("out.cld");
    KillWhileReplacing({"convert", m_sFile, sTarget, "--force"}, sTarget);
}

TEST_F(ZorcldKilled, Ground_OldFileOrNew)
{
    const std::string sTarget = m_zorcld.GetPath("out.ply");
    KillWhileReplacing({"ground", m_sFile, "-o", sTarget}, sTarget);
}

// Each file in the folder is whole; the manifest comes when all of them are there.
TEST_F(ZorcldKilled, Tile_WholeFilesAndTheManifestLast)
{
    const std::string sWhole = m_zorcld.GetPath("whole");
    const std::string sFolder = m_zorcld.GetPath("tiles");
    const auto args = [&](const std::string& sOut)
    { return std::vector<std::string>{"tile", m_sFile, "-o", sOut, "--size", "100"}; };
    ASSERT_EQ(m_zorcld.Run(args(sWhole)).nStatus, 0);
    const auto look = [&]
    {
        if (!fs::exists(sFolder))
            return;
        for (const fs::directory_entry& entry : fs::directory_iterator(sFolder))
        {
            const std::string sName = entry.path().filename().string();
            if (entry.is_regular_file() && sName.find(".zorcld-") == std::string::npos)
            {
                ASSERT_TRUE(ReadBytes(entry.path()) == ReadBytes(sWhole + "/" + sName)) << sName;
            }
        }
        if (fs::exists(sFolder + "/manifest.json"))
        {
            ASSERT_TRUE(ReadFolder(sFolder) == ReadFolder(sWhole));
        }
    };
    CTracedRun run(CTracedRun::FileChanges, args(sFolder));
    KillOften(
        run, [&] { fs::remove_all(sFolder); }, look);
}

TEST_F(ZorcldKilled, Serve_ChangesNothing)
{
    const std::string sBefore = ReadBytes(m_sFile);
    const auto look = [&]
    {
        ASSERT_TRUE(ReadBytes(m_sFile) == sBefore);
        ASSERT_EQ(m_zorcld.CountFiles(), 1U);
    };
    CTracedRun run(CTracedRun::UntilItSpeaks, {"serve", m_sFile}); // it does not end by itself
    KillOften(
        run, [] {}, look);
}
