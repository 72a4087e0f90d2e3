// The program as a whole: help, exit statuses, the sample, output files.
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

TEST(Zorcld, Help_StatusZeroOnStandardOutput)
{
    const CZorcld zorcld;
    for (const std::vector<std::string>& vecArgs : {std::vector<std::string>{"--help"},
                                                    {"info", "--help"},
                                                    {"view", "--help"},
                                                    {"points", "--help"},
                                                    {"count", "--help"},
                                                    {"outline", "--help"},
                                                    {"profile", "--help"},
                                                    {"check", "--help"},
                                                    {"convert", "--help"},
                                                    {"tile", "--help"},
                                                    {"make-sample", "--help"},
                                                    {"--version"}})
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << vecArgs[0];
        EXPECT_FALSE(run.sOut.empty());
        EXPECT_EQ(run.sErr, "");
    }
}

TEST(Zorcld, WrongUsage_StatusTwoAndOneLine)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(4));
    const std::string sOut = zorcld.GetPath("out.png");
    const std::string sCsv = zorcld.GetPath("out.csv");
    const std::vector<std::vector<std::string>> c_cases = {
        {},
        {"frobnicate"},
        {"info"},
        {"info", sFile, "--frobnicate"},
        {"info", sFile, "--type", "docx"},
        {"view", sFile},
        {"view", sFile, "-o", zorcld.GetPath("out.jpg")},
        {"view", sFile, "-o", sOut, "--size", "big"},
        {"view", sFile, "-o", sOut, "--size", "1x1"},
        {"view", sFile, "-o", sOut, "--size", "100x400"},
        {"view", sFile, "-o", sOut, "--lod", "nan"},
        {"view", sFile, "-o", sOut, "--points", "99999999999999999999"},
        {"view", sFile, "-o", sOut, "--size", "100x100x100"},
        {"view", sFile, "-o", sOut, "--from", "10"},
        {"view", sFile, "-o", sOut, "--from", "10,91"},
        {"view", sFile, "-o", sOut, "--color", "blue"},
        {"view", sFile, "-o", sOut, "--lod", "0"},
        {"view", sFile, "-o", sOut, "--lod", "-1"},
        {"view", sFile, "-o", sOut, "--lod", "1", "--points", "10"},
        {"view", sFile, "-o", sOut, "--clip", "1,0,0"},
        {"view", sFile, "-o", sOut, "--clip", "0,0,0,1"},
        {"view", sFile, "-o", sOut, "--clip", "1,0,nan,1"},
        {"view", sFile, "-o", sOut, "--box", "1,0,0,0,1,1"},
        {"points", sFile, "-o", zorcld.GetPath("out.xyz")},
        {"points", sFile, "-o", sCsv, "--rect", "1,0,0,1"},
        {"points", sFile, "-o", sCsv, "--rect", "0,0,1"},
        {"points", sFile, "-o", sCsv, "--rect", "0,0,inf,1"},
        {"points", sFile, "-o", sCsv, "--line", "0,0,1,1,-1"},
        {"points", sFile, "-o", sCsv, "--line", "0,0,1,1"},
        {"points", sFile, "-o", sCsv, "--line", "0,0,1,1,1", "--rect", "0,0,1,1"},
        {"points", sFile, "-o", sCsv, "--ends"},
        {"points", sFile, "-o", sCsv, "--outside"},
        {"points", sFile, "-o", sCsv, "--contour", "contour.shp"},
        {"count", sFile},
        {"count", sFile, "--rect", "0,1,1,0"},
        {"outline", sFile, "-o", sOut},
        {"outline", sFile, "-o", sOut, "--distance", "0"},
        {"outline", sFile, "-o", sOut, "--distance", "-1"},
        {"outline", sFile, "-o", sOut, "--distance", "far"},
        {"outline", sFile, "-o", sOut, "--distance", "auto", "--size", "1x1"},
        {"outline", sFile, "-o", zorcld.GetPath("out.shp"), "--distance", "1"},
        {"profile", sFile, "-o", sOut},
        {"profile", sFile, "-o", sOut, "--line", "0,0,1,1,0"},
        {"profile", sFile, "-o", sOut, "--line", "1,1,1,1,1"},
        {"profile", sFile, "-o", zorcld.GetPath("out.ply"), "--line", "0,0,1,1,1"},
        {"check"},
        {"check", sFile, "--type", "docx"},
        {"convert", sFile},
        {"convert", sFile, zorcld.GetPath("out.xyz")},
        {"make-sample", zorcld.GetPath("out.ply"), "--points", "0"},
        {"make-sample", sOut, "--points", "10"},
    };
    for (const std::vector<std::string>& vecArgs : c_cases)
    {
        const CRun run = zorcld.Run(vecArgs);
        const std::string sArgs = ::testing::PrintToString(vecArgs);
        EXPECT_EQ(run.nStatus, 2) << sArgs;
        EXPECT_TRUE(run.HasOneErrLine()) << sArgs << run.sErr;
        EXPECT_EQ(run.sOut, "") << sArgs;
    }
    EXPECT_EQ(zorcld.CountFiles(), 1U); // the input alone
    EXPECT_NE(zorcld.Run({"frobnicate"}).sErr.find("'frobnicate'"), std::string::npos);
}

// Two billion items without a byte each would be two billion progress calls.
TEST(Zorcld, Info_ItemsWithoutPropertiesTakeNoTime)
{
    const CZorcld zorcld;
    std::string sPly = MakeGridPly(4);
    const std::size_t nElement = sPly.find("element");
    std::string sJunk;
    for (int i = 0; i < 200; ++i)
        sJunk += "element junk 2147483647\n";
    const CRun run = zorcld.Run({"info", zorcld.Write("junk.ply", sPly.insert(nElement, sJunk))});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
}

TEST(Zorcld, MakeSample_SameForSameSeed)
{
    const CZorcld zorcld;
    ASSERT_EQ(zorcld.Run({"make-sample", zorcld.GetPath("a.ply"), "--points", "3000"}).nStatus, 0);
    ASSERT_EQ(zorcld.Run({"make-sample", zorcld.GetPath("b.ply"), "--points", "3000", "--seed", "1"}).nStatus,
              0);
    ASSERT_EQ(zorcld.Run({"make-sample", zorcld.GetPath("c.ply"), "--points", "3000", "--seed", "2"}).nStatus,
              0);
    const std::string sBytes = ReadBytes(zorcld.GetPath("a.ply"));
    EXPECT_EQ(sBytes, ReadBytes(zorcld.GetPath("b.ply")));
    EXPECT_NE(sBytes, ReadBytes(zorcld.GetPath("c.ply")));
    EXPECT_NE(sBytes.find("element vertex 3000\n"), std::string::npos);
    EXPECT_NE(sBytes.find("comment coordinates are shifted: add 500000 4000000 0\n"), std::string::npos);
    EXPECT_EQ(sBytes.size(), sBytes.find("end_header\n") + 11 + 3000 * 15);
}

TEST(Zorcld, Output_FailedWriteLeavesTheOldFile)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(4));
    const CRun noFolder = zorcld.Run({"points", sFile, "-o", zorcld.GetPath("missing/out.csv")});
    EXPECT_EQ(noFolder.nStatus, 1);
    EXPECT_TRUE(noFolder.HasOneErrLine()) << noFolder.sErr;
    EXPECT_NE(noFolder.sErr.find("missing/out.csv"), std::string::npos);

    ASSERT_EQ(mkdir(zorcld.GetPath("folder.ply").c_str(), 0777), 0);
    const CRun folder = zorcld.Run({"make-sample", zorcld.GetPath("folder.ply")});
    EXPECT_EQ(folder.nStatus, 1);
    EXPECT_NE(folder.sErr.find("is a directory"), std::string::npos) << folder.sErr;

    // A device that is always full stands for a full disk.
    ASSERT_EQ(symlink("/dev/full", zorcld.GetPath("full.csv").c_str()), 0);
    ASSERT_EQ(symlink("/dev/full", zorcld.GetPath("full.png").c_str()), 0);
    ASSERT_EQ(symlink("/dev/full", zorcld.GetPath("full.ply").c_str()), 0);
    for (const CRun& run :
         {zorcld.Run({"points", sFile, "-o", zorcld.GetPath("full.csv")}),
          zorcld.Run({"view", sFile, "-o", zorcld.GetPath("full.png"), "--size", "300x200"}),
          zorcld.Run({"make-sample", zorcld.GetPath("full.ply"), "--points", "10"})})
    {
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("full"), std::string::npos);
        EXPECT_NE(run.sErr.find("No space left"), std::string::npos) << run.sErr;
    }
    EXPECT_EQ(zorcld.CountFiles(), 5U); // the input, the folder, the links
}

TEST(Zorcld, Output_ReplacesAFileAndKeepsItsLink)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(4));
    const std::string sTarget = zorcld.Write("target.csv", "old");
    ASSERT_EQ(symlink(sTarget.c_str(), zorcld.GetPath("link.csv").c_str()), 0);
    const mode_t nMask = umask(022);
    EXPECT_EQ(zorcld.Run({"points", sFile, "-o", zorcld.GetPath("link.csv")}).nStatus, 0);
    umask(nMask);
    EXPECT_EQ(ReadBytes(sTarget).substr(0, 5), "x,y,z");
    struct stat status = {};
    ASSERT_EQ(lstat(zorcld.GetPath("link.csv").c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    ASSERT_EQ(stat(sTarget.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0644U);
    EXPECT_EQ(zorcld.CountFiles(), 3U);
}
