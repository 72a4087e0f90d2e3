#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace
{

CPng View(const CZorcld& zorcld, const std::string& sFile, std::vector<std::string> vecArgs)
{
    const std::string sOut = zorcld.GetPath("out.png");
    vecArgs.insert(vecArgs.begin(), {"view", sFile, "-o", sOut, "--size", "400x300"});
    const CRun run = zorcld.Run(vecArgs);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(run.sErr, "");
    return ReadPng(sOut);
}

} // namespace

TEST(ZorcldView, Plan_FillsThePictureWithoutHoles)
{
    const CZorcld zorcld;
    const CPng png = View(zorcld, zorcld.Write("grid.ply", MakeGridPly(50)), {});
    ASSERT_EQ(png.nWidth, 400U);
    ASSERT_EQ(png.nHeight, 300U);
    EXPECT_GT(png.CalcShareDrawn(), 0.3);
    // The middle of a surface in one colour: every pixel is that colour, shaded.
    for (std::uint32_t y = 110; y < 190; ++y)
        for (std::uint32_t x = 160; x < 240; ++x)
        {
            const unsigned char* const pRgb = png.GetPixel(x, y);
            ASSERT_GT(pRgb[0], 90) << x << " " << y;
            ASSERT_GT(pRgb[0], pRgb[1] + 30) << x << " " << y;
        }
}

TEST(ZorcldView, Height_RampAndLegend)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(50));
    const CPng file = View(zorcld, sFile, {"--color", "file"});
    const CPng height = View(zorcld, sFile, {"--color", "height", "--unit", "m"});
    EXPECT_GT(height.CountColors(), 2 * file.CountColors());
    // Low is blue and lower left, high is bright and upper right.
    const unsigned char* const pLow = height.GetPixel(90, 220);
    EXPECT_GT(pLow[2], pLow[0]);
}

TEST(ZorcldView, Options_GiveDifferentPictures)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(50));
    const CPng plan = View(zorcld, sFile, {});
    for (const std::vector<std::string>& vecArgs : {std::vector<std::string>{"--from", "215,35"},
                                                    {"--from", "-30.5,-10"},
                                                    {"--lod", "8"},
                                                    {"--points", "20"},
                                                    {"--clip", "1,0,0,-20"},
                                                    {"--box", "10,10,0,20,20,100"}})
    {
        const CPng png = View(zorcld, sFile, vecArgs);
        EXPECT_NE(png.vecRgb, plan.vecRgb) << vecArgs[0];
        EXPECT_GT(png.CalcShareDrawn(), 0.005) << vecArgs[0];
    }
}

TEST(ZorcldView, SamePicture_Twice)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(30));
    EXPECT_EQ(View(zorcld, sFile, {"--from", "215,35"}).vecRgb,
              View(zorcld, sFile, {"--from", "215,35"}).vecRgb);
}

TEST(ZorcldView, Degenerate_CloudsStillGiveAPicture)
{
    const CZorcld zorcld;
    const std::string sOne = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    const std::string sLine = zorcld.Write("line.ply", MakePly({0, 0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0}));
    const std::string sFar = zorcld.Write("far.ply", MakePly({-200000, 0, 0, 200000, 1, 100000, 0, 2, 0}));
    for (const std::string& sFile : {sOne, sLine, sFar})
        for (const char* pFrom : {"plan", "0,0", "45,30"})
            EXPECT_EQ(View(zorcld, sFile, {"-q", "--from", pFrom}).nWidth, 400U) << sFile << pFrom;
    // Nothing behind the planes: an empty picture, not a failure.
    EXPECT_EQ(View(zorcld, sOne, {"--clip", "0,0,1,0"}).nWidth, 400U);
}

TEST(ZorcldView, ColorFile_WithoutColoursFails)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    const CRun run = zorcld.Run({"view", sFile, "-o", zorcld.GetPath("out.png"), "--color", "file"});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.HasOneErrLine());
    EXPECT_NE(run.sErr.find("holds no colours"), std::string::npos) << run.sErr;
    EXPECT_EQ(zorcld.CountFiles(), 1U);
}

namespace
{

/// Is anything drawn in the colour of overlays, or nearly?
bool HasLines(const CPng& png)
{
    for (std::size_t i = 0; i < png.vecRgb.size(); i += 3)
        if (png.vecRgb[i] > 160 && png.vecRgb[i + 1] * 10 > png.vecRgb[i] * 6 && // the points: half as green
            png.vecRgb[i + 2] * 10 < png.vecRgb[i + 1] * 6)                      // labels: as blue as green
            return true;
    return false;
}

} // namespace

TEST(ZorcldView, Overlay_DrawsPolygonsAndLines)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(50));
    EXPECT_FALSE(HasLines(View(zorcld, sFile, {})));
    for (const char* pText : {"POLYGON ((10 10, 40 10, 25 40, 10 10))", "LINESTRING (5 5, 45 45)",
                              "LINESTRING (-1e9 25, 1e9 25)"})
        EXPECT_TRUE(HasLines(View(zorcld, sFile, {"--overlay", zorcld.Write("shape.wkt", pText)}))) << pText;
    for (const char* pText :
         {"POLYGON ((100 100, 140 100, 120 140))", "LINESTRING (1e308 -1e308, 1e308 1e308, 1e300 0)"})
        EXPECT_FALSE(HasLines(View(zorcld, sFile, {"-q", "--overlay", zorcld.Write("shape.wkt", pText)})))
            << pText;
}

TEST(ZorcldView, Overlay_FromAboveOnly)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(10));
    const CRun run = zorcld.Run({"view", sFile, "-o", zorcld.GetPath("out.png"), "--from", "200,30",
                                 "--overlay", zorcld.Write("shape.csv", "0,0\n9,0\n9,9\n")});
    EXPECT_EQ(run.nStatus, 2);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
}

TEST(ZorcldView, Rect_NarrowsDown)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(50));
    EXPECT_EQ(View(zorcld, sFile, {"--rect", "10,10,20,20"}).nWidth, 400U);
    EXPECT_NE(View(zorcld, sFile, {"--rect", "10,10,20,20"}).vecRgb, View(zorcld, sFile, {}).vecRgb);
    EXPECT_EQ(View(zorcld, sFile, {"--rect", "900,10,920,20"}).nWidth, 400U); // nothing: an empty picture
}
