// The program is killed at random moments: what is under a file's name is the old file or the new one, never
// a part of it.

#include <tests/host/support/CZorcld.h>
#include <tests/host/tile/TileFiles.h>
#include <tests/support/CRandom.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;

constexpr int c_nNumKills = 50; // of each command, 200 together

class ZorcldKilled : public testing::Test
{
protected:
    /// Runs the command to its end, and then often killed after a part of that time.
    /// @param look  is called after each run that was killed or came through.
    void KillOften(const std::vector<std::string>& vecArgs, const std::function<void()>& prepare,
                   const std::function<void()>& look)
    {
        prepare();
        const auto begin = std::chrono::steady_clock::now();
        ASSERT_EQ(m_zorcld.Run(vecArgs).nStatus, 0);
        const double dWhole = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        KillWithin(dWhole, vecArgs, prepare, look);
    }

    void KillWithin(double dWhole, const std::vector<std::string>& vecArgs,
                    const std::function<void()>& prepare, const std::function<void()>& look)
    {
        int nNumKilled = 0;
        for (int n = 0; n < c_nNumKills && !HasFatalFailure(); ++n)
        {
            prepare();
            const double dAfter = 0.001 + dWhole * m_random.Unit();
            SCOPED_TRACE("killed after " + std::to_string(dAfter) + " s of " + std::to_string(dWhole));
            const CRun run = m_zorcld.RunAfter("timeout -s KILL " + std::to_string(dAfter), vecArgs);
            nNumKilled += run.nStatus != 0 ? 1 : 0;
            look();
        }
        EXPECT_GT(nNumKilled, c_nNumKills / 10);
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
        KillOften(vecArgs, prepare, look);
        EXPECT_NE(sNew, "");
    }

    const CZorcld m_zorcld;
    CRandom m_random{7};
    std::string m_sFile = m_zorcld.Write("scan.ply", MakePly(MakeScan(3, 20000)));
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
    KillOften(
        args(sFolder), [&] { fs::remove_all(sFolder); }, look);
}

TEST_F(ZorcldKilled, Serve_ChangesNothing)
{
    const std::string sBefore = ReadBytes(m_sFile);
    const auto look = [&]
    {
        ASSERT_TRUE(ReadBytes(m_sFile) == sBefore);
        ASSERT_EQ(m_zorcld.CountFiles(), 1U);
    };
    constexpr double c_dSeconds = 0.1; // it does not end by itself
    KillWithin(
        c_dSeconds, {"serve", m_sFile}, [] {}, look);
}
