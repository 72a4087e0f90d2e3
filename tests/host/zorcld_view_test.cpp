#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <png.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

namespace
{

struct CPng
{
    std::uint32_t nWidth = 0;
    std::uint32_t nHeight = 0;
    std::vector<unsigned char> vecRgb;

    /// Share of pixels in another colour than the corner's.
    double CalcShareDrawn() const
    {
        std::size_t nDrawn = 0;
        for (std::size_t i = 0; i < vecRgb.size(); i += 3)
            nDrawn += std::memcmp(&vecRgb[i], &vecRgb[vecRgb.size() - 3], 3) != 0 ? 1U : 0U;
        return static_cast<double>(nDrawn) / (static_cast<double>(vecRgb.size()) / 3.0);
    }

    std::size_t CountColors() const
    {
        std::set<std::uint32_t> setColors;
        for (std::size_t i = 0; i < vecRgb.size(); i += 3)
            setColors.insert(
                static_cast<std::uint32_t>(vecRgb[i] << 16U | vecRgb[i + 1] << 8U | vecRgb[i + 2]));
        return setColors.size();
    }

    const unsigned char* GetPixel(std::uint32_t x, std::uint32_t y) const
    {
        return &vecRgb[(y * nWidth + x) * 3];
    }
};

CPng ReadPng(const std::string& sPath)
{
    CPng png;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, sPath.c_str()) == 0)
        return png;
    image.format = PNG_FORMAT_RGB;
    png.vecRgb.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, png.vecRgb.data(), 0, nullptr) != 0)
    {
        png.nWidth = image.width;
        png.nHeight = image.height;
    }
    png_image_free(&image);
    return png;
}

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
            EXPECT_EQ(View(zorcld, sFile, {"--from", pFrom}).nWidth, 400U) << sFile << pFrom;
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
