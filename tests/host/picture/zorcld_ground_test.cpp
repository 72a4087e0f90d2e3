#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>
#include <tests/support/CRecListener.h>
#include <tests/support/LasBytes.h>
#include <zor4data/CPntCld.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace
{

constexpr int c_nSide = 30;
constexpr int c_nNumHouse = 25;

/// Flat ground of nSide × nSide points, 1 unit apart at height 1, and a roof of 5 × 5 at height 7 over it.
std::string MakeHousePly()
{
    std::vector<float> vecCoords;
    for (int i = 0; i < c_nSide * c_nSide; ++i)
        for (const int n : {i % c_nSide, i / c_nSide, 1})
            vecCoords.push_back(static_cast<float>(n));
    for (int i = 0; i < c_nNumHouse; ++i)
        for (const double d : {20.3 + i % 5, 12.3 + i / 5, 7.0})
            vecCoords.push_back(static_cast<float>(d));
    return MakePly(vecCoords);
}

std::string MakeReport(const std::string& sFile)
{
    return sFile + ": 900 of 925 points are ground (97.3 %)\n";
}

/// Pixels of columns xBegin to xEnd that are as light as what lies high.
int CountLight(const CPng& png, std::uint32_t xBegin, std::uint32_t xEnd)
{
    int nNum = 0;
    for (std::uint32_t y = png.nHeight / 4; y < png.nHeight; ++y)
        for (std::uint32_t x = xBegin; x < xEnd; ++x)
        {
            const unsigned char* const p = png.GetPixel(x, y);
            nNum += p[0] > 180 && p[1] > 160 && p[2] > 130 && p[0] > p[2] + 15 ? 1 : 0;
        }
    return nNum;
}

constexpr double c_dFoot = 1200.0 / 3937.0;

/// Flat ground of 60 × 60 points, a metre apart, and amid it a roof of 20 × 20: wider than a window of 33
/// feet, narrower than one of 33 metres.
/// @param dUnit  metres of a coordinate unit.
CLasFile MakeHouseLas(double dUnit)
{
    CLasFile las = LasOf(0, 0);
    las.adScale = {0.001, 0.001, 0.001};
    const auto add = [&](double x, double y, double z)
    {
        const auto step = [&](double d)
        { return static_cast<std::int32_t>(std::lround(d / dUnit * 1000.0)); };
        las.vecPnts.push_back({step(x), step(y), step(z), {}});
    };
    const auto isHouse = [](int n) { return n >= 20 && n <= 40; };
    for (int i = 0; i < 3600; ++i)
        if (!isHouse(i % 60) || !isHouse(i / 60))
            add(i % 60, i / 60, 1.0);
    for (int i = 0; i < 400; ++i)
        add(20.3 + i % 20, 20.3 + i / 20, 7.0);
    return las;
}

} // namespace

TEST(ZorcldGround, NoOutput_OnlyReports)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("house.ply", MakeHousePly());
    const CRun run = zorcld.Run({"ground", sFile});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_EQ(run.sOut, MakeReport(sFile));
    EXPECT_EQ(run.sErr, "");
    EXPECT_EQ(zorcld.CountFiles(), 1U);
}

TEST(ZorcldGround, Csv_TheGroundAlone)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("house.ply", MakeHousePly());
    const std::string sOut = zorcld.GetPath("ground.csv");
    const CRun run = zorcld.Run({"ground", sFile, "-o", sOut});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(run.sOut, MakeReport(sFile));
    const std::string sText = ReadBytes(sOut);
    EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n'), 901);
    EXPECT_EQ(sText.find(",7.0000\n"), std::string::npos);
    EXPECT_EQ(zorcld.CountFiles(), 2U);
}

TEST(ZorcldGround, Ply_KeepsColoursWhateverThePicture)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(10));
    const std::string sOut = zorcld.GetPath("ground.ply");
    ASSERT_EQ(zorcld.Run({"ground", sFile, "-o", sOut, "--picture", zorcld.GetPath("g.png")}).nStatus, 0);
    const std::string sCsv = zorcld.GetPath("ground.csv");
    ASSERT_EQ(zorcld.Run({"points", sOut, "-o", sCsv}).nStatus, 0);
    const std::string sText = ReadBytes(sCsv);
    std::size_t nNumColored = 0;
    for (std::size_t i = 0; (i = sText.find(",200,100,50\n", i)) != std::string::npos; ++i)
        ++nNumColored;
    EXPECT_GT(nNumColored, 0U);
    EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n'), 1 + static_cast<int>(nNumColored));
}

TEST(ZorcldGround, Native_LoadsWithTheGround)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("house.ply", MakeHousePly());
    const std::string sOut = zorcld.GetPath("ground.cld");
    ASSERT_EQ(zorcld.Run({"ground", sFile, "-o", sOut}).nStatus, 0);
    CRecColorListener colors;
    CPntCld cloud(&colors);
    ASSERT_TRUE(cloud.ReadFromFile(nullptr, PntCldFile_Native, zor::String(sOut)));
    EXPECT_EQ(cloud.GetNumPnts(), 900);
    CRecListener roof;
    cloud.GetPnts_Clip(&roof, {{0.0, 0.0, -1.0, 5.0}}, 64);
    EXPECT_EQ(roof.GetNumPnts(), 0);
    EXPECT_EQ(cloud.GetNumPnts2D(19.9, 11.9, 25.1, 17.1), 36);
    EXPECT_EQ(zorcld.CountFiles(), 2U);
}

TEST(ZorcldGround, Picture_BeforeAndAfter)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("house.ply", MakeHousePly());
    const std::string sOut = zorcld.GetPath("ground.png");
    const CRun run = zorcld.Run({"ground", sFile, "--picture", sOut, "--size", "800x400", "--unit", "m"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(run.sOut, MakeReport(sFile));
    const CPng png = ReadPng(sOut);
    ASSERT_EQ(png.nWidth, 800U);
    ASSERT_EQ(png.nHeight, 400U);
    EXPECT_GT(CountLight(png, 0, 360), 100); // the roof
    EXPECT_LT(CountLight(png, 370, 700), 20);
    // Wide clouds go one below the other.
    const std::string sRow = zorcld.Write("row.ply", MakePly({0, 0, 0, 30, 0, 0, 60, 1, 0, 90, 0, 0}));
    EXPECT_EQ(zorcld.Run({"ground", sRow, "--picture", sOut, "--size", "800x400"}).nStatus, 0);
}

TEST(ZorcldGround, FewPoints_ArePicturesToo)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("ground.png");
    const std::string sOne = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    const std::string sTower = zorcld.Write("tower.ply", MakePly({0, 0, 0, 0.5F, 0, 200000, 1, 0, -200000}));
    for (const std::string& sFile : {sOne, sTower})
    {
        const CRun run = zorcld.Run({"ground", sFile, "--picture", sOut, "-o", zorcld.GetPath("g.cld")});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_GT(ReadPng(sOut).CountColors(), 20U);
    }
}

TEST(ZorcldGround, WrongUsage_IsToldBeforeReading)
{
    const CZorcld zorcld;
    const std::string sMissing = zorcld.GetPath("missing.ply");
    for (const std::vector<std::string>& vecArgs : {std::vector<std::string>{"-o", "ground.txt"},
                                                    {"-o", "ground"},
                                                    {"--picture", "ground.jpg"},
                                                    {"--picture", "ground.png", "--size", "7x7"}})
    {
        std::vector<std::string> vecAll = {"ground", sMissing};
        vecAll.insert(vecAll.end(), vecArgs.begin(), vecArgs.end());
        const CRun run = zorcld.Run(vecAll);
        EXPECT_EQ(run.nStatus, 2) << vecArgs.back();
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    }
}

TEST(ZorcldGround, Failure_OneLineAndNothingLeft)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("house.ply", MakeHousePly());
    const std::string sOld = zorcld.Write("old.csv", "old");
    for (const std::vector<std::string>& vecArgs :
         {std::vector<std::string>{zorcld.GetPath("missing.ply"), "-o", sOld},
          {sFile, "-o", zorcld.GetPath("nowhere/g.cld")},
          {sFile, "-o", sOld, "--picture", zorcld.GetPath("nowhere/g.png")},
          {sFile, "-o", zorcld.GetPath("nowhere/g.csv"), "--picture", zorcld.GetPath("g.png")},
          {sFile, "-o", sOld, "--picture", zorcld.GetPath("g.png"), "--color", "file"}})
    {
        std::vector<std::string> vecAll = {"ground"};
        vecAll.insert(vecAll.end(), vecArgs.begin(), vecArgs.end());
        const CRun run = zorcld.Run(vecAll);
        EXPECT_EQ(run.nStatus, 1) << vecArgs.back();
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    }
    EXPECT_EQ(ReadBytes(sOld), "old");
    EXPECT_EQ(zorcld.CountFiles(), 2U);
}

TEST(ZorcldGround, Feet_FilteredInMetres)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    const std::string sMetres = zorcld.Write("metres.las", MakeHouseLas(1.0).GetBytes());
    EXPECT_NE(zorcld.Run({"ground", sMetres}).sOut.find(": 3159 of 3559"), std::string::npos);
    CLasFile las = MakeHouseLas(c_dFoot);
    const std::string sUnknown = zorcld.Write("unknown.las", las.GetBytes());
    EXPECT_EQ(zorcld.Run({"ground", sUnknown}).sOut.find(": 3159 of 3559"), std::string::npos);

    las.vecNamed = LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9003}});
    const std::string sFeet = zorcld.Write("feet.las", las.GetBytes());
    const std::string sOut = zorcld.GetPath("ground.csv");
    const CRun run =
        zorcld.Run({"ground", sFeet, "-o", sOut, "--picture", zorcld.GetPath("p.png"), "--size", "400x300"});
    EXPECT_NE(run.sOut.find(": 3159 of 3559"), std::string::npos) << run.sOut;
    EXPECT_EQ(std::count(run.sErr.begin(), run.sErr.end(), '\n'), 2) << run.sErr; // and what is not written
    EXPECT_NE(run.sErr.find("coordinates are in ft (0.304801 m)"), std::string::npos) << run.sErr;
    const std::string sText = ReadBytes(sOut); // coordinates stay feet
    EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n'), 3160);
    EXPECT_NE(sText.find("\n193.5690,193.5690,3.2810\n"), std::string::npos) << sText.substr(0, 300);

    // What the user says goes before what the file says.
    const CRun asTheyAre = zorcld.Run({"ground", sFeet, "--unit-scale", "1"});
    EXPECT_EQ(asTheyAre.sOut.find(": 3159 of 3559"), std::string::npos) << asTheyAre.sOut;
    EXPECT_EQ(asTheyAre.sErr.find("filtered in metres"), std::string::npos) << asTheyAre.sErr;
    EXPECT_NE(asTheyAre.sErr.find("houses are wider than its windows"), std::string::npos) << asTheyAre.sErr;
    EXPECT_NE(zorcld.Run({"ground", sUnknown, "--unit-scale", "0.3048"}).sOut.find(": 3159 of 3559"),
              std::string::npos);
}

TEST(ZorcldGround, HeightsInAnotherUnit_AreScaledByTheirs)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = MakeHouseLas(1.0);
    for (CLasPnt& pnt : las.vecPnts)
        pnt.z = pnt.z == 1000 ? 1000 : 1900; // the roof 0.9 feet above the ground: 0.27 m
    las.vecNamed = {
        LasWkt("COMPD_CS[\"c\",PROJCS[\"p\",UNIT[\"metre\",1]],VERT_CS[\"v\",UNIT[\"foot\",0.3048]]]")};
    const CRun run = zorcld.Run({"ground", zorcld.Write("mixed.las", las.GetBytes())});
    EXPECT_NE(run.sOut.find(": 3559 of 3559"), std::string::npos) << run.sOut; // as low as that it is none
    EXPECT_NE(run.sErr.find("coordinates are in m, heights in ft (0.3048 m)"), std::string::npos) << run.sErr;
}

TEST(ZorcldGround, Degrees_AreRefusedWithTheReason)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = MakeHouseLas(1.0);
    las.vecNamed = LasGeoKeys({{1024, 0, 1, 2}, {2048, 0, 1, 4326}});
    const std::string sFile = zorcld.Write("degrees.las", las.GetBytes());
    const CRun run = zorcld.Run({"ground", sFile, "-o", zorcld.GetPath("g.csv")});
    EXPECT_EQ(run.nStatus, 1);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("its x and y are angles (degrees), the ground filter goes by metres"),
              std::string::npos)
        << run.sErr;
    EXPECT_EQ(zorcld.CountFiles(), 1U);
    EXPECT_NE(zorcld.Run({"ground", sFile, "--unit-scale", "1"}).sOut.find(": 3159 of 3559"),
              std::string::npos);
    EXPECT_EQ(zorcld.Run({"ground", sFile, "--unit-scale", "0"}).nStatus, 2);
}

TEST(ZorcldGround, OddResult_IsNotedWithItsCause)
{
    const CZorcld zorcld;
    const auto note = [&](double dStep)
    {
        std::vector<float> vecCoords;
        for (int i = 0; i < 900; ++i)
            for (const double d : {dStep * (i % 30), dStep * (i / 30), 1.0})
                vecCoords.push_back(static_cast<float>(d));
        const CRun run = zorcld.Run({"ground", zorcld.Write("flat.ply", MakePly(vecCoords))});
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        return run.sErr;
    };
    EXPECT_NE(note(1.0).find("nearly every point is ground"), std::string::npos);
    EXPECT_NE(note(30.0).find("too sparse"), std::string::npos);
    EXPECT_NE(note(0.008).find("degrees"), std::string::npos);
}
