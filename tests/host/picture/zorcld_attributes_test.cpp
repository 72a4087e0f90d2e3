// Views coloured by class, intensity and return.
#include <host/picture/AttributeColors.h>
#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>
#include <tests/support/LazBytes.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace
{

/// A flat square of 40 x 40 points a unit apart: the left half is ground, the right one building.
CLasFile MakeSquare()
{
    CLasFile las = LasOf(1, 1600);
    las.adScale = {1.0, 1.0, 1.0};
    for (int i = 0; i < 1600; ++i)
    {
        CLasPnt& pnt = las.vecPnts[static_cast<std::size_t>(i)];
        pnt.x = i % 40;
        pnt.y = i / 40;
        pnt.z = 100;
        pnt.nClass = pnt.x < 20 ? 2 : 6;
        pnt.nReturn = pnt.x < 20 ? 1 : 3;
        pnt.nIntensity = pnt.x < 20 ? 500 : 900;
    }
    return las;
}

CPng View(const CZorcld& zorcld, const std::string& sFile, std::vector<std::string> vecArgs)
{
    const std::string sOut = zorcld.GetPath("out.png");
    vecArgs.insert(vecArgs.begin(), {"view", sFile, "-o", sOut, "--point-size", "30"}); // no gaps
    const CRun run = zorcld.Run(vecArgs);
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return ReadPng(sOut);
}

bool IsNear(const unsigned char* pRgb, const zorcld::CRgb& color)
{
    return std::fabs(static_cast<float>(pRgb[0]) - color.r) < 14.0F &&
           std::fabs(static_cast<float>(pRgb[1]) - color.g) < 14.0F &&
           std::fabs(static_cast<float>(pRgb[2]) - color.b) < 14.0F;
}

/// How many pixels of a part of the picture have about this colour.
int CountColor(const CPng& png, const zorcld::CRgb& color, std::uint32_t xBegin, std::uint32_t xEnd)
{
    int nNum = 0;
    for (std::uint32_t y = 0; y < png.nHeight; ++y)
        for (std::uint32_t x = xBegin; x < xEnd; ++x)
            nNum += IsNear(png.GetPixel(x, y), color) ? 1 : 0;
    return nNum;
}

/// Half of the square in one colour, half in the other, and the legend tells both.
void ExpectHalves(const CPng& png, const zorcld::CRgb& left, const zorcld::CRgb& right)
{
    const std::uint32_t nLegend = png.nWidth * 5 / 6;
    const int nLeft = CountColor(png, left, 0, nLegend);
    const int nRight = CountColor(png, right, 0, nLegend);
    EXPECT_GT(nLeft, 20000);
    EXPECT_GT(nRight, 20000);
    EXPECT_NEAR(nLeft, nRight, 0.1 * nLeft);
    EXPECT_GT(CountColor(png, left, nLegend, png.nWidth), 30);
    EXPECT_GT(CountColor(png, right, nLegend, png.nWidth), 30);
    const std::uint32_t y = png.nHeight / 2;
    std::uint32_t xLeft = 0;
    std::uint32_t xRight = 0;
    while (xLeft < nLegend && !IsNear(png.GetPixel(xLeft, y), left))
        ++xLeft;
    while (xRight < nLegend && !IsNear(png.GetPixel(xRight, y), right))
        ++xRight;
    EXPECT_LT(xLeft, xRight);
}

} // namespace

TEST(ZorcldAttributes, Class_InItsColorsWithALegend)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("s.las", MakeSquare().GetBytes());
    for (const char* pBackground : {"dark", "light"})
        ExpectHalves(
            View(zorcld, sFile, {"--color", "class", "--size", "800x600", "--background", pBackground}),
            zorcld::CalcClassColor(2), zorcld::CalcClassColor(6));
}

TEST(ZorcldAttributes, Return_InItsColorsWithALegend)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("s.laz", LazBytes(MakeSquare(), 100));
    ExpectHalves(View(zorcld, sFile, {"--color", "return", "--size", "800x600"}), zorcld::CalcReturnColor(1),
                 zorcld::CalcReturnColor(3));
}

// A few glints do not take the greys away from the others.
TEST(ZorcldAttributes, Intensity_GreysBetweenPercentiles)
{
    const CZorcld zorcld;
    CLasFile las = MakeSquare();
    for (std::size_t i = 0; i < 30; ++i)
        las.vecPnts[53 * i].nIntensity = 65535;
    const std::string sFile = zorcld.Write("s.las", las.GetBytes());
    ExpectHalves(View(zorcld, sFile, {"--color", "intensity", "--size", "800x600"}), zorcld::CalcGrey(0.0),
                 zorcld::CalcGrey(1.0));
}

TEST(ZorcldAttributes, Intensity_AllTheSame)
{
    const CZorcld zorcld;
    CLasFile las = MakeSquare();
    for (CLasPnt& pnt : las.vecPnts)
        pnt.nIntensity = 0;
    const CPng png = View(zorcld, zorcld.Write("s.las", las.GetBytes()), {"--color", "intensity"});
    EXPECT_GT(CountColor(png, zorcld::CalcGrey(0.5), 0, png.nWidth), 20000);
}

// Of format 7, whose colours the library does not take: nothing is said of colours that nobody asked for.
TEST(ZorcldAttributes, NoWordOfColors)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("s.las", LasOf(7, 10).GetBytes());
    const std::string sOut = zorcld.GetPath("o.png");
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", sOut, "--color", "class"}).sErr, "");
    EXPECT_NE(zorcld.Run({"view", sFile, "-o", sOut, "--class", "1"}).sErr, "");
}

TEST(ZorcldAttributes, ChosenClass_Alone)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("s.las", MakeSquare().GetBytes());
    const CPng png = View(zorcld, sFile, {"--color", "class", "--class", "building", "--size", "800x600"});
    EXPECT_GT(CountColor(png, zorcld::CalcClassColor(6), 0, 640), 20000);
    EXPECT_EQ(CountColor(png, zorcld::CalcClassColor(2), 0, 800), 0);
}

// The legend of 200 classes lies within the picture, whatever its size.
TEST(ZorcldAttributes, ManyClasses_LegendFits)
{
    const CZorcld zorcld;
    CLasFile las = LasOf(6, 200);
    for (std::size_t i = 0; i < las.vecPnts.size(); ++i)
        las.vecPnts[i].nClass = static_cast<std::uint8_t>(i);
    const std::string sFile = zorcld.Write("s.las", las.GetBytes());
    for (const char* pSize : {"200x200", "1600x200", "200x900", "900x700"})
    {
        const CPng png = View(zorcld, sFile, {"--color", "class", "--size", pSize});
        for (std::uint32_t y = 0; y < png.nHeight; ++y)
            EXPECT_EQ(std::memcmp(png.GetPixel(png.nWidth - 1, y), png.GetPixel(0, 0), 3), 0) << pSize << y;
        for (std::uint32_t x = png.nWidth / 2; x < png.nWidth; ++x)
            EXPECT_EQ(std::memcmp(png.GetPixel(x, png.nHeight - 1), png.GetPixel(0, 0), 3), 0) << pSize << x;
    }
}

TEST(ZorcldAttributes, WithoutAttributes_Refused)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("g.ply", MakeGridPly(5));
    for (const char* pColor : {"class", "intensity", "return"})
    {
        const CRun run = zorcld.Run({"view", sFile, "-o", zorcld.GetPath("o.png"), "--color", pColor});
        EXPECT_EQ(run.nStatus, 1);
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find("have no classes, intensities or returns"), std::string::npos) << run.sErr;
    }
    EXPECT_EQ(zorcld.CountFiles(), 1U);
    EXPECT_EQ(
        zorcld
            .Run({"profile", sFile, "-o", zorcld.GetPath("o.png"), "--line", "0,0,4,4,1", "--color", "class"})
            .nStatus,
        2);
}
