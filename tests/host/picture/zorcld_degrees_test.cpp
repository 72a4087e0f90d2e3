#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace
{

/// Hills over 0.1 by 0.1 degrees, the middle at 60 degrees north.
/// @param dHeight  of the highest, metres.
std::string MakeHills(double dHeight = 150.0)
{
    std::string sPly =
        MakePlyHeader("element vertex 10000\nproperty float x\nproperty float y\nproperty float z\n"
                      "property uchar red\nproperty uchar green\nproperty uchar blue\n");
    for (int j = 0; j < 100; ++j)
        for (int i = 0; i < 100; ++i)
        {
            const double z = 900.0 + dHeight * std::sin(0.11 * i) * std::cos(0.13 * j);
            sPly += PackFloats({static_cast<float>(10.0 + 0.001 * i), static_cast<float>(59.95 + 0.001 * j),
                                static_cast<float>(z)});
            sPly += std::string(3, static_cast<char>(190));
        }
    return sPly;
}

struct CBox
{
    std::uint32_t nWidth;
    std::uint32_t nHeight;
    double dShareDark; ///< of what is drawn: far from the usual brightness
};

/// What is drawn between title and scale.
CBox FindDrawn(const CPng& png)
{
    std::uint32_t xMin = png.nWidth;
    std::uint32_t yMin = png.nHeight;
    std::uint32_t xMax = 0;
    std::uint32_t yMax = 0;
    std::vector<int> vecValues;
    for (std::uint32_t y = 50; y < png.nHeight - 50; ++y)
        for (std::uint32_t x = 0; x < png.nWidth; ++x)
        {
            const int n = png.GetPixel(x, y)[1];
            if (n < 60)
                continue;
            vecValues.push_back(n);
            xMin = std::min(xMin, x);
            yMin = std::min(yMin, y);
            xMax = std::max(xMax, x);
            yMax = std::max(yMax, y);
        }
    if (vecValues.empty())
        return {0, 0, 1.0};
    std::sort(vecValues.begin(), vecValues.end());
    const int nLimit = 85 * vecValues[vecValues.size() / 2] / 100;
    const auto nDark = std::lower_bound(vecValues.begin(), vecValues.end(), nLimit) - vecValues.begin();
    return {xMax - xMin + 1, yMax - yMin + 1,
            static_cast<double>(nDark) / static_cast<double>(vecValues.size())};
}

} // namespace

TEST(ZorcldDegrees, Plan_InProportionAndEven)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("out.png");
    const CRun run =
        zorcld.Run({"view", zorcld.Write("hills.ply", MakeHills()), "-o", sOut, "--size", "800x600"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sErr.find("taken for degrees"), std::string::npos) << run.sErr;
    const CBox box = FindDrawn(ReadPng(sOut));
    EXPECT_NEAR(1.0 * box.nWidth / box.nHeight, 0.5, 0.03); // a degree of longitude is half one of latitude
    EXPECT_LT(box.dShareDark, 0.10);
}

TEST(ZorcldDegrees, Oblique_ReadableAndTold)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("out.png");
    const CRun run = zorcld.Run({"view", zorcld.Write("hills.ply", MakeHills()), "-o", sOut, "--size",
                                 "800x600", "--from", "215,30"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sErr.find("heights drawn 5 times as large"), std::string::npos) << run.sErr;
    const CBox box = FindDrawn(ReadPng(sOut));
    EXPECT_GT(box.nWidth, 500U);
    EXPECT_GT(box.nHeight, 150U);
}

// Small pictures have no room for all that is told: how much larger heights are is told first.
TEST(ZorcldDegrees, SmallPicture_TellsTheExaggeration)
{
    const CZorcld zorcld;
    const auto readSubtitle = [&](double dHeight, const std::string& sTold)
    {
        const std::string sOut = zorcld.GetPath("out.png");
        const CRun run = zorcld.Run({"view", zorcld.Write("hills.ply", MakeHills(dHeight)), "-o", sOut,
                                     "--size", "200x200", "--from", "215,30"});
        EXPECT_NE(run.sErr.find("heights drawn " + sTold + " times as large"), std::string::npos) << run.sErr;
        const CPng png = ReadPng(sOut);
        std::vector<unsigned char> vecRows;
        for (std::uint32_t y = 24; y < 33; ++y) // foot at 0.55 * 56, letters of 0.55 * 14
            vecRows.insert(vecRows.end(), png.GetPixel(0, y), png.GetPixel(0, y + 1));
        return vecRows;
    };
    EXPECT_NE(readSubtitle(150.0, "5"), readSubtitle(75.0, "10"));
}

// A tall narrow scan, and one far from any longitude, are drawn as they are.
TEST(ZorcldDegrees, OtherClouds_AreNot)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("out.png");
    for (const std::string& sPly :
         {MakePly({0, 0, 0, 1, 0, 100, 0, 1, 50}), MakePly({5000, 0, 0, 5000.5F, 0, 1000, 5000, 0.5F, 500}),
          MakeGridPly(10)})
    {
        const CRun run = zorcld.Run(
            {"view", zorcld.Write("cloud.ply", sPly), "-o", sOut, "--size", "400x300", "--from", "215,30"});
        EXPECT_EQ(run.nStatus, 0);
        EXPECT_EQ(run.sErr, "");
    }
}

// Units that a LAS file states are those of scale and legend, and degrees need no steep heights to be told.
TEST(ZorcldDegrees, UnitsOfTheFile_AsIfTheyWereGiven)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = LasOf(0, 0);
    las.adScale = {0.01, 0.01, 1.0};
    for (int i = 0; i < 400; ++i)
        las.vecPnts.push_back({i % 20, i / 20, i % 3, {}});
    const auto draw =
        [&](const std::vector<CLasNamedRecord>& vecRecords, const std::vector<std::string>& vecMore)
    {
        las.vecNamed = vecRecords;
        std::vector<std::string> vecArgs = {"view",   zorcld.Write("o.las", las.GetBytes()),
                                            "-o",     zorcld.GetPath("o.png"),
                                            "--size", "400x300"};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return std::pair(ReadBytes(zorcld.GetPath("o.png")), run.sErr);
    };
    const auto feet = LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9003}});
    const std::string sFeet = draw(feet, {}).first;
    EXPECT_TRUE(sFeet == draw({}, {"--unit", "ft"}).first);
    EXPECT_FALSE(sFeet == draw({}, {}).first);
    EXPECT_TRUE(draw(feet, {"--unit", "m"}).first == draw({}, {"--unit", "m"}).first);
    const std::vector<CLasNamedRecord> degrees = {
        LasWkt("GEOGCS[\"g\",UNIT[\"degree\",0.0174532925199433]]")};
    EXPECT_EQ(draw({}, {}).second, "");
    EXPECT_NE(draw(degrees, {}).second.find("x and y taken for degrees"), std::string::npos);
}

// At 60 degrees north: a degree of longitude is 55.66 km, one of latitude 111.32.
TEST(ZorcldDegrees, Profile_DistancesInMetres)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("hills.ply", MakeHills());
    const auto run = [&](const std::string& sLine, const std::string& sOut)
    {
        const CRun result =
            zorcld.Run({"profile", sFile, "-o", zorcld.GetPath(sOut), "--line", sLine, "--size", "500x300"});
        EXPECT_EQ(result.nStatus, 0) << result.sErr;
        return result;
    };
    const CRun toEast = run("10,60,10.05,60,0.0002", "east.csv");
    EXPECT_NE(toEast.sOut.find("along 2783."), std::string::npos) << toEast.sOut;
    EXPECT_TRUE(toEast.HasOneErrLine());
    EXPECT_NE(toEast.sErr.find("taken for degrees, distances are in metres"), std::string::npos)
        << toEast.sErr;
    EXPECT_NE(ReadBytes(zorcld.GetPath("east.csv")).find("\n55.66"), std::string::npos); // one column further
    EXPECT_NE(run("10.05,59.97,10.05,60.02,0.0002", "north.csv").sOut.find("along 556"), std::string::npos);
    EXPECT_NE(run("10,60,10.05,60,0.0002", "east.png").sErr.find("distances are in metres"),
              std::string::npos);
    // A shape lies where the points do.
    const CRun shape = run("10,60,10.05,60,0.0002", "east.geojson");
    EXPECT_EQ(shape.sErr, "");
    EXPECT_NE(ReadBytes(zorcld.GetPath("east.geojson")).find("10.05"), std::string::npos);
}

// Another unit than the file states: the user hears both.
TEST(ZorcldDegrees, UnitBesideTheFilesOwn_IsNoted)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = LasOf(0, 20);
    las.vecNamed = LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9003}});
    const std::string sFeet = zorcld.Write("feet.las", las.GetBytes());
    las.vecNamed = {
        LasWkt("COMPD_CS[\"c\",PROJCS[\"p\",UNIT[\"metre\",1]],VERT_CS[\"v\",UNIT[\"foot\",0.3048]]]")};
    const std::string sMixed = zorcld.Write("mixed.las", las.GetBytes());
    const auto getSaid = [&](const std::string& sFile, const std::string& sUnit, const std::string& sCommand)
    {
        std::vector<std::string> vecArgs = {sCommand, sFile,     "-o",     zorcld.GetPath("out.png"),
                                            "--size", "300x200", "--unit", sUnit};
        if (sCommand == "profile")
            vecArgs.insert(vecArgs.end(), {"--line", "0,0,20,-40,5"});
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return run.sErr.substr(std::min(run.sErr.find("states"), run.sErr.size()));
    };
    for (const char* pCommand : {"view", "profile"})
    {
        EXPECT_EQ(getSaid(sFeet, "m", pCommand),
                  "states ft for x and y; m is written instead (--unit), the numbers stay as they are\n");
        for (const char* pUnit : {"ft", "feet", "US survey foot"})
            EXPECT_EQ(getSaid(sFeet, pUnit, pCommand), "") << pUnit;
        EXPECT_EQ(getSaid(sMixed, "m", pCommand).find("states ft for heights; m is"), 0U);
        EXPECT_EQ(getSaid(sMixed, "Feet", pCommand).find("states m for x and y; Feet is"), 0U);
    }
}
