#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

namespace
{

struct CColorPnt
{
    float x;
    float y;
    float z;
    unsigned char r;
    unsigned char g;
    unsigned char b;
};

std::string MakeColorPly(const std::vector<CColorPnt>& vecPnts)
{
    std::string sPly = MakePlyHeader("element vertex " + std::to_string(vecPnts.size()) +
                                     "\nproperty float x\nproperty float y\nproperty float z\n"
                                     "property uchar red\nproperty uchar green\nproperty uchar blue\n");
    for (const CColorPnt& pnt : vecPnts)
    {
        sPly += PackFloats({pnt.x, pnt.y, pnt.z});
        for (const unsigned char uc : {pnt.r, pnt.g, pnt.b})
            sPly += static_cast<char>(uc);
    }
    return sPly;
}

constexpr unsigned char c_grey = 190;

/// A wall of 3 by 2 as a depth camera sees it: at the distance that `fn(x, y)` gives, in steps of 0.05.
std::string MakeWall(const std::function<double(double, double)>& fn)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> noise(-1.0, 1.0);
    std::vector<std::vector<double>> rows(40, std::vector<double>(60)); // noise in patches of some points
    for (std::vector<double>& row : rows)
        for (double& d : row)
            d = 0.035 * noise(random);
    std::vector<CColorPnt> vecPnts;
    for (int j = 0; j < 200; ++j)
        for (int i = 0; i < 300; ++i)
        {
            const double z = 5.0 + fn(i * 0.01, j * 0.01) + rows[j / 5][i / 5] + 0.01 * noise(random);
            vecPnts.push_back({static_cast<float>(i * 0.01), static_cast<float>(j * 0.01),
                               static_cast<float>(std::round(z / 0.05) * 0.05), c_grey, c_grey, c_grey});
        }
    return MakeColorPly(vecPnts);
}

CPng View(const CZorcld& zorcld, const std::string& sPly, const std::string& sFrom)
{
    const std::string sOut = zorcld.GetPath("out.png");
    const CRun run = zorcld.Run({"view", zorcld.Write("cloud.ply", sPly), "-o", sOut, "--from", sFrom,
                                 "--size", "800x600", "--color", "file"});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return ReadPng(sOut);
}

/// Share of the pixels of a box of the picture that are darker than this share of its usual brightness.
double CalcShareDark(const CPng& png, std::uint32_t x, std::uint32_t y, std::uint32_t nWidth,
                     std::uint32_t nHeight, double dShare)
{
    std::vector<int> vecValues;
    for (std::uint32_t j = y; j < y + nHeight; ++j)
        for (std::uint32_t i = x; i < x + nWidth; ++i)
            vecValues.push_back(png.GetPixel(i, j)[1]);
    std::vector<int> vecSorted = vecValues;
    std::nth_element(vecSorted.begin(), vecSorted.begin() + vecSorted.size() / 2, vecSorted.end());
    const double dLimit = dShare * vecSorted[vecSorted.size() / 2];
    const auto nDark = std::count_if(vecValues.begin(), vecValues.end(), [&](int n) { return n < dLimit; });
    return static_cast<double>(nDark) / static_cast<double>(vecValues.size());
}

} // namespace

TEST(ZorcldShading, NoisyWall_OfADepthCameraLooksFlat)
{
    const CZorcld zorcld;
    const std::string sWall = MakeWall([](double, double) { return 0.0; });
    EXPECT_LT(CalcShareDark(View(zorcld, sWall, "180,-90"), 150, 150, 500, 300, 0.8), 0.01);
    EXPECT_LT(CalcShareDark(View(zorcld, sWall, "150,-60"), 250, 220, 300, 160, 0.8), 0.01);
}

TEST(ZorcldShading, Edges_OfThingsBeforeANoisyWallStay)
{
    const CZorcld zorcld;
    const auto box = [](double x, double y)
    { return std::fabs(x - 1.5) < 0.4 && std::fabs(y - 1.0) < 0.3 ? -0.8 : 0.0; };
    const CPng png = View(zorcld, MakeWall(box), "180,-90");
    const double dDark = CalcShareDark(png, 150, 150, 500, 300, 0.8);
    EXPECT_GT(dDark, 0.01);
    EXPECT_LT(dDark, 0.10);
}

// Rough ground at eight degrees: from row to row of points depths differ by many times their distance.
TEST(ZorcldShading, LowAngle_DoesNotSpeckle)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(0.0F, 200.0F);
    std::uniform_real_distribution<float> noise(-0.25F, 0.25F);
    std::vector<CColorPnt> vecPnts;
    for (int i = 0; i < 60000; ++i)
    {
        const float x = place(random);
        const float y = place(random);
        vecPnts.push_back({x, y, 0.1F * y + noise(random), c_grey, c_grey, c_grey});
    }
    const CZorcld zorcld;
    const CPng png = View(zorcld, MakeColorPly(vecPnts), "180,8");
    EXPECT_LT(CalcShareDark(png, 200, 282, 400, 36, 0.75), 0.01);
}

// A slope of 76 degrees before ground of another colour: what is seen between its points is closed, most of
// it.
TEST(ZorcldShading, SteepSlope_HidesWhatIsBehind)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> share(0.0F, 1.0F);
    std::vector<CColorPnt> vecPnts;
    for (int i = 0; i < 22000; ++i)
    {
        const float x = 100.0F * share(random);
        const float y = 20.0F * share(random);
        vecPnts.push_back({x, y, 4.0F * y, 200, 120, 40});
        vecPnts.push_back({x, y, 4.0F * y - 12.0F, 40, 80, 220});
    }
    const CZorcld zorcld;
    const CPng png = View(zorcld, MakeColorPly(vecPnts), "180,60");
    int nSeen = 0;
    int nBehind = 0;
    for (std::uint32_t y = 240; y < 360; ++y)
        for (std::uint32_t x = 150; x < 650; ++x)
        {
            const unsigned char* const pRgb = png.GetPixel(x, y);
            ++nSeen;
            nBehind += pRgb[2] > pRgb[0] ? 1 : 0;
        }
    EXPECT_LT(nBehind, nSeen / 20) << nBehind << " of " << nSeen;
}
