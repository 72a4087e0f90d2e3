// Output files: where links lead, what is on the disk when a file gets its name, what killed runs leave.
#include <formats/CPlacedFile.h>
#include <host/output/RemoveAbandoned.h>
#include <tests/host/support/CTracedTest.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{

constexpr std::time_t c_nHour = 3600;

/// One command for each way to write a file: native, PLY, CSV, PNG.
std::vector<std::vector<std::string>> ListWriters(const CZorcld& zorcld, const std::string& sStem)
{
    const std::string sFile = zorcld.GetPath("grid.ply");
    const auto path = [&](const char* pExtension) { return zorcld.GetPath(sStem + pExtension); };
    return {{"convert", sFile, path(".cld")},
            {"convert", sFile, path(".ply")},
            {"points", sFile, "-o", path(".csv")},
            {"ground", sFile, "-o", path(".ply")},
            {"view", sFile, "--size", "300x200", "-o", path(".png")}};
}

bool IsLink(const std::string& sPath)
{
    struct stat status = {};
    return lstat(sPath.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool Exists(const std::string& sPath)
{
    struct stat status = {};
    return lstat(sPath.c_str(), &status) == 0;
}

std::string WriteAged(const CZorcld& zorcld, const std::string& sName, std::time_t nAge)
{
    const std::string sPath = zorcld.Write(sName, "half");
    const timeval time = {std::time(nullptr) - nAge, 0};
    const std::array<timeval, 2> times = {time, time};
    EXPECT_EQ(utimes(sPath.c_str(), times.data()), 0);
    return sPath;
}

class ZorcldTraced : public CTracedTest
{
protected:
    void SetUp() override
    {
        CTracedTest::SetUp();
        m_zorcld.Write("grid.ply", MakeGridPly(4));
    }
};

} // namespace

TEST(ZorcldOutFiles, LinkThatLeadsNowhere_IsRefusedAndStays)
{
    const CZorcld zorcld;
    zorcld.Write("grid.ply", MakeGridPly(4));
    for (const char* pExtension : {".cld", ".ply", ".csv", ".png"})
    {
        const std::string sDangling = zorcld.GetPath(std::string("dangling") + pExtension);
        const std::string sCircle = zorcld.GetPath(std::string("circle") + pExtension);
        ASSERT_EQ(symlink("missing/there", sDangling.c_str()), 0);
        ASSERT_EQ(symlink(sCircle.c_str(), sCircle.c_str()), 0);
    }
    for (const char* pStem : {"dangling", "circle"})
        for (const std::vector<std::string>& vecArgs : ListWriters(zorcld, pStem))
        {
            const CRun run = zorcld.Run(vecArgs);
            EXPECT_EQ(run.nStatus, 1) << vecArgs.back();
            EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
            EXPECT_NE(run.sErr.find("is a symbolic link that leads"), std::string::npos) << run.sErr;
            EXPECT_TRUE(IsLink(vecArgs.back())) << vecArgs.back();
        }
    EXPECT_EQ(zorcld.CountFiles(), 9U);
}

TEST(ZorcldOutFiles, LinkToAPipe_IsWrittenTo)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(4));
    const std::string sLink = zorcld.GetPath("link.csv");
    ASSERT_EQ(symlink("/dev/stdout", sLink.c_str()), 0);
    const CRun run = zorcld.RunAfter("run() { \"$@\" | cat; }; run", {"points", sFile, "-q", "-o", sLink});
    EXPECT_EQ(run.sErr, "");
    EXPECT_EQ(run.sOut.substr(0, 5), "x,y,z");
    EXPECT_TRUE(IsLink(sLink));
}

// The bytes go to the disk before the file gets its name.
TEST_F(ZorcldTraced, Bytes_AreOnTheDiskBeforeTheName)
{
    const std::string sTrace = m_zorcld.GetPath("trace");
    for (const std::vector<std::string>& vecArgs : ListWriters(m_zorcld, "out"))
    {
        const CRun run = m_zorcld.RunAfter(
            "strace -f -e trace=write,fsync,rename,renameat,renameat2 -o '" + sTrace + "'", vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        const std::string sCalls = ReadBytes(sTrace);
        const std::size_t nRename = sCalls.find("rename");
        const std::size_t nSync = sCalls.rfind("fsync(", nRename);
        ASSERT_NE(nRename, std::string::npos) << vecArgs[0];
        ASSERT_NE(nSync, std::string::npos) << vecArgs[0] << '\n' << sCalls;
        EXPECT_EQ(sCalls.substr(nSync, nRename - nSync).find("write("), std::string::npos) << sCalls;
    }
}

TEST_F(ZorcldTraced, DiskThatFails_LeavesTheOldFile)
{
    for (const std::vector<std::string>& vecArgs : ListWriters(m_zorcld, "out"))
    {
        std::remove(vecArgs.back().c_str());
        const std::string sName = vecArgs.back().substr(vecArgs.back().rfind('/') + 1);
        m_zorcld.Write(sName, "old");
        const CRun run =
            m_zorcld.RunAfter("strace -f -e trace=fsync -e inject=fsync:error=EIO -o /dev/null", vecArgs);
        EXPECT_EQ(run.nStatus, 1) << vecArgs[0];
        EXPECT_NE(run.sErr.find("could not be written: Input/output error"), std::string::npos) << run.sErr;
        EXPECT_EQ(ReadBytes(vecArgs.back()), "old");
        EXPECT_EQ(m_zorcld.CountFiles(), 2U) << vecArgs[0];
        std::remove(vecArgs.back().c_str());
    }
}

// No moment is too early, not that between the file's making and its first byte.
TEST_F(ZorcldTraced, InterruptedAtOnce_LeavesNothing)
{
    for (const std::vector<std::string>& vecArgs : ListWriters(m_zorcld, "out"))
    {
        const CRun run = m_zorcld.RunAfter(
            "strace -f -e trace=flock -e inject=flock:signal=INT:when=1 -o /dev/null", vecArgs);
        EXPECT_NE(run.nStatus, 0) << vecArgs[0];
        EXPECT_EQ(m_zorcld.CountFiles(), 1U) << vecArgs[0];
    }
}

TEST(ZorcldOutFiles, LeftByAKilledRun_IsRemovedADayLater)
{
    const CZorcld zorcld;
    zorcld.Write("grid.ply", MakeGridPly(4));
    for (const std::vector<std::string>& vecArgs : ListWriters(zorcld, "out"))
    {
        const std::string sOld = WriteAged(zorcld, "other.ply.zorcld-a1b2c3d4e5f6", 25 * c_nHour);
        const std::string sNew = WriteAged(zorcld, "other.ply.zorcld-d1b2c3d4e5f6", 23 * c_nHour);
        EXPECT_EQ(zorcld.Run(vecArgs).nStatus, 0);
        EXPECT_FALSE(Exists(sOld)) << vecArgs[0];
        EXPECT_TRUE(Exists(sNew)) << vecArgs[0];
    }
}

// A run that is killed outright leaves what its successors recognise.
TEST(ZorcldOutFiles, KilledRun_LeavesATemporaryName)
{
    const CZorcld zorcld;
    const CRun run =
        zorcld.RunUntilItWrites("KILL", {"make-sample", zorcld.GetPath("big.ply"), "--points", "500000000"});
    EXPECT_NE(run.nStatus, 0);
    ASSERT_EQ(zorcld.CountFiles(), 1U);
    EXPECT_EQ(std::system(
                  ("ls '" + zorcld.GetPath("") + "' | grep -q '^big.ply.zorcld-[0-9a-f]\\{12\\}$'").c_str()),
              0);
    EXPECT_EQ(std::system(("touch -d '2 days ago' '" + zorcld.GetPath("") + "'/*").c_str()), 0);
    EXPECT_EQ(zorcld.Run({"make-sample", zorcld.GetPath("big.ply"), "--points", "10"}).nStatus, 0);
    EXPECT_EQ(zorcld.CountFiles(), 1U);
    EXPECT_TRUE(Exists(zorcld.GetPath("big.ply")));
}

TEST(RemoveAbandoned, OthersStay)
{
    const CZorcld zorcld;
    const std::string sGone = WriteAged(zorcld, "x.zorcld-abcd12345678", 48 * c_nHour);
    for (const char* pName :
         {".zorcld-abcd12345678", "x.zorcld-abcd1234567", "x.zorcld-abcd123456789", "x.zorcld-abcd1234567.",
          "x.zorcld_abcd12345678", "x.Zorcld-abcd12345678", "x.abcd12345678", "x.zorcld-abcd12345678.ply",
          "x.zorcld-ABCD12345678", "x.zorcld-beforechange", "x.zorcld-backup", "x.zorcld-facade"})
        WriteAged(zorcld, pName, 48 * c_nHour);
    ASSERT_EQ(mkdir(zorcld.GetPath("y.zorcld-abcd12345678").c_str(), 0777), 0);
    ASSERT_EQ(symlink(".zorcld-abcd12345678", zorcld.GetPath("z.zorcld-abcd12345678").c_str()), 0);
    zorcld::RemoveAbandoned(zorcld.GetPath(""));
    EXPECT_FALSE(Exists(sGone));
    EXPECT_EQ(zorcld.CountFiles(), 14U);
    zorcld::RemoveAbandoned(zorcld.GetPath("missing")); // nothing to do
}

// A run may sit over an old file for long: as long as it holds it, the file stays.
TEST(RemoveAbandoned, HeldFileStays)
{
    const CZorcld zorcld;
    const std::string sPath = WriteAged(zorcld, "x.zorcld-abcd12345678", 48 * c_nHour);
    const int nFile = open(sPath.c_str(), O_RDONLY | O_CLOEXEC);
    CPlacedFile::Hold(nFile);
    zorcld::RemoveAbandoned(zorcld.GetPath(""));
    EXPECT_TRUE(Exists(sPath));
    close(nFile);
    zorcld::RemoveAbandoned(zorcld.GetPath(""));
    EXPECT_FALSE(Exists(sPath));
}

// By its own name or another: only who says so writes over the file that is read.
TEST(ZorcldOutFiles, Input_IsReplacedOnlyWhenForced)
{
    const CZorcld zorcld;
    const std::string sBytes = MakeGridPly(40);
    const std::string sFile = zorcld.Write("a.ply", sBytes);
    ASSERT_EQ(symlink(sFile.c_str(), zorcld.GetPath("soft.ply").c_str()), 0);
    ASSERT_EQ(link(sFile.c_str(), zorcld.GetPath("hard.ply").c_str()), 0);
    ASSERT_EQ(link(sFile.c_str(), zorcld.GetPath("hard.png").c_str()), 0);
    const auto expectRefused = [&](const std::vector<std::string>& vecArgs)
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 2) << vecArgs[0];
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("is the file that is read (--force replaces it)"), std::string::npos)
            << run.sErr;
        EXPECT_EQ(ReadBytes(sFile), sBytes);
    };
    for (const char* pCommand : {"points", "ground"})
    {
        for (const char* pName : {"a.ply", "./a.ply", "soft.ply", "hard.ply"})
            expectRefused({pCommand, sFile, "-o", zorcld.GetPath(pName)});
        expectRefused({pCommand, zorcld.GetPath("soft.ply"), "-o", sFile});
    }
    const std::string sHard = zorcld.GetPath("hard.png");
    expectRefused({"ground", sFile, "--picture", sHard});
    expectRefused({"view", sFile, "-o", sHard});
    const std::string sContour = zorcld.Write("contour.csv", "0,0\n2,0\n2,2\n");
    expectRefused({"points", sFile, "--contour", sContour, "-o", sContour});
    EXPECT_EQ(ReadBytes(sContour), "0,0\n2,0\n2,2\n");
    ASSERT_EQ(link(sContour.c_str(), zorcld.GetPath("contour.png").c_str()), 0);
    for (const char* pOption : {"--contour", "--overlay"})
        expectRefused({"view", sFile, pOption, sContour, "-o", zorcld.GetPath("contour.png")});
    expectRefused({"profile", sFile, "--line", "0,0,5,5,2", "-o", sHard});
    expectRefused({"outline", sFile, "--distance", "auto", "-o", sHard});
    EXPECT_EQ(
        zorcld.Run({"points", sFile, "-o", zorcld.GetPath("soft.ply"), "--lod", "5", "--force"}).nStatus, 0);
    EXPECT_LT(ReadBytes(sFile).size(), sBytes.size());
    EXPECT_EQ(zorcld.Run({"ground", sFile, "-o", sFile, "--force"}).nStatus, 0);
}

TEST(ZorcldOutFiles, LongestName)
{
    const CZorcld zorcld;
    zorcld.Write("grid.ply", MakeGridPly(4));
    for (const std::vector<std::string>& vecArgs : ListWriters(zorcld, std::string(251, 'n')))
        EXPECT_EQ(zorcld.Run(vecArgs).nStatus, 0) << vecArgs[0];
}
