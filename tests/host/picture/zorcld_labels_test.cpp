#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

CPng View(const CZorcld& zorcld, const std::string& sFile, std::vector<std::string> vecArgs)
{
    const std::string sOut = zorcld.GetPath("out.png");
    vecArgs.insert(vecArgs.begin(), {"view", sFile, "-o", sOut});
    const CRun run = zorcld.Run(vecArgs);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return ReadPng(sOut);
}

/// Number of pixels of a part of the picture that differ from its corner's.
int CountDrawn(const CPng& png, std::uint32_t x, std::uint32_t y, std::uint32_t xEnd, std::uint32_t yEnd)
{
    const unsigned char* const pCorner = png.GetPixel(0, 0);
    int nNum = 0;
    for (std::uint32_t j = y; j < yEnd; ++j)
        for (std::uint32_t i = x; i < xEnd; ++i)
        {
            const unsigned char* const p = png.GetPixel(i, j);
            nNum +=
                std::abs(p[0] - pCorner[0]) + std::abs(p[1] - pCorner[1]) + std::abs(p[2] - pCorner[2]) > 9;
        }
    return nNum;
}

constexpr const char* c_pLongUnit = "international survey feet above the mean level of the sea at some place";

} // namespace

TEST(ZorcldLabels, LongTexts_DoNotReachTheEdges)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write(std::string(180, 'W') + ".ply", MakeGridPly(20));
    for (const char* pSize : {"200x200", "300x220", "900x700"})
        for (const char* pFrom : {"plan", "215,30"})
        {
            const CPng png =
                View(zorcld, sFile,
                     {"--size", pSize, "--unit", c_pLongUnit, "--color", "height", "--from", pFrom});
            EXPECT_EQ(CountDrawn(png, png.nWidth - 3, 0, png.nWidth, png.nHeight), 0) << pSize << pFrom;
            EXPECT_EQ(CountDrawn(png, 0, 0, 3, png.nHeight), 0) << pSize << pFrom;
        }
    const std::string sOut = zorcld.GetPath("profile.png");
    for (const char* pSize : {"200x200", "900x700"})
    {
        const CRun run = zorcld.Run(
            {"profile", sFile, "-o", sOut, "--line", "1,1,18,18,2", "--size", pSize, "--unit", c_pLongUnit});
        ASSERT_EQ(run.nStatus, 0) << run.sErr;
        const CPng png = ReadPng(sOut);
        EXPECT_EQ(CountDrawn(png, png.nWidth - 3, 0, png.nWidth, png.nHeight), 0) << pSize;
        EXPECT_EQ(CountDrawn(png, 0, 0, 3, png.nHeight), 0) << pSize;
        EXPECT_EQ(CountDrawn(png, 0, 0, png.nWidth, 3), 0) << pSize;
    }
}

// Heights of nine digits before the point, and one of 39: the legend makes room for them.
TEST(ZorcldLabels, LongNumbers_AreNotCut)
{
    const CZorcld zorcld;
    const std::string sHigh =
        zorcld.Write("high.ply", MakePly({0, 0, -9.0e8F, 1, 0, -9.0e8F, 0, 1, -9.0e8F}));
    const std::string sHuge =
        zorcld.Write("huge.ply", MakePly({0, 0, 3.0e38F, 1, 0, 3.0e38F, 0, 1, 3.0e38F}));
    for (const std::string& sFile : {sHigh, sHuge})
        for (const char* pSize : {"200x200", "800x600"})
        {
            const CPng png = View(zorcld, sFile, {"--size", pSize});
            EXPECT_EQ(CountDrawn(png, png.nWidth - 3, 0, png.nWidth, png.nHeight), 0) << sFile << pSize;
            const CRun run = zorcld.Run({"profile", sFile, "-o", zorcld.GetPath("profile.png"), "--line",
                                         "0,0,1,0,1", "--size", pSize});
            ASSERT_EQ(run.nStatus, 0) << run.sErr;
            const CPng profile = ReadPng(zorcld.GetPath("profile.png"));
            EXPECT_EQ(CountDrawn(profile, 0, 0, 2, profile.nHeight), 0) << sFile << pSize;
        }
}

// A name that is no UTF-8 must not end all drawing.
TEST(ZorcldLabels, NameThatIsNotUtf8_IsWritten)
{
    const CZorcld zorcld;
    const CPng png = View(zorcld,
                          zorcld.Write("b\xff"
                                       "d.ply",
                                       MakeGridPly(5)),
                          {"--size", "400x300"});
    EXPECT_GT(CountDrawn(png, 0, 0, 200, 22), 20);    // title
    EXPECT_GT(CountDrawn(png, 0, 270, 200, 300), 20); // scale
}

TEST(ZorcldLabels, ScaleInEveryView_ArrowInPlanOnly)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const CPng plan = View(zorcld, sFile, {"--size", "800x600"});
    const CPng oblique = View(zorcld, sFile, {"--size", "800x600", "--from", "215,30"});
    EXPECT_GT(CountDrawn(plan, 0, 575, 400, 600), 100);
    EXPECT_GT(CountDrawn(oblique, 0, 575, 400, 600), 100);
    EXPECT_GT(CountDrawn(plan, 760, 570, 800, 600), 50);
    EXPECT_EQ(CountDrawn(oblique, 760, 570, 800, 600), 0);
}

TEST(ZorcldLabels, Background_AsAsked)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const auto corner = [&](const char* pBackground)
    {
        const CPng png = View(zorcld, sFile, {"--size", "400x300", "--background", pBackground});
        EXPECT_GT(CountDrawn(png, 0, 0, 200, 22), 20) << pBackground; // the title can be read
        const unsigned char* const p = png.GetPixel(0, 0);
        return std::vector<int>{p[0], p[1], p[2]};
    };
    EXPECT_EQ(corner("#1080f0"), (std::vector<int>{16, 128, 240}));
    EXPECT_GT(corner("light")[0], 230);
    EXPECT_LT(corner("dark")[0], 60);
    for (const char* pWrong : {"#12345", "#12345g", "blue", "#-12345", "", "#1234567"})
    {
        const CRun run = zorcld.Run({"view", sFile, "-o", zorcld.GetPath("o.png"), "--background", pWrong});
        EXPECT_EQ(run.nStatus, 2) << pWrong;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    }
}

// In the header of a PNG: 6 for red, green, blue and opacity.
TEST(ZorcldLabels, Transparent_HasOpacity)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    View(zorcld, sFile, {"--size", "400x300", "--background", "transparent"});
    EXPECT_EQ(ReadBytes(zorcld.GetPath("out.png"))[25], 6);
    View(zorcld, sFile, {"--size", "400x300"});
    EXPECT_EQ(ReadBytes(zorcld.GetPath("out.png"))[25], 2);
}

TEST(ZorcldLabels, PointSize_InPixels)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("three.ply", MakePly({0, 0, 0, 20, 5, 0, 40, 10, 0}));
    const auto count = [&](const char* pPixels)
    {
        return CountDrawn(View(zorcld, sFile, {"--size", "600x400", "--point-size", pPixels}), 200, 120, 330,
                          290);
    };
    EXPECT_NEAR(count("10"), 78, 20); // the one in the middle
    EXPECT_NEAR(count("30"), 707, 60);
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", zorcld.GetPath("o.png"), "--point-size", "0"}).nStatus, 2);
}

// At most 24 bytes a pixel, and the program itself; no minute for a handful of points.
TEST(ZorcldLabels, LargePicture_InProportion)
{
    const CZorcld zorcld;
    if (CZorcld::IsSanitized())
        GTEST_SKIP() << "sanitizers take memory of their own";
    const std::string sFile = zorcld.Write("four.ply", MakePly({0, 0, 0, 10, 0, 3, 0, 10, 5, 10, 10, 0}));
    constexpr long c_nKib = 24L * 6000 * 6000 / 1024 + 300000;
    const CRun run =
        zorcld.Run({"view", sFile, "-o", zorcld.GetPath("o.png"), "--size", "6000x6000"}, c_nKib);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
}
