#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using nlohmann::json;

json Outline(const CZorcld& zorcld, const std::string& sFile, const std::string& sDistance)
{
    const std::string sOut = zorcld.GetPath("outline.geojson");
    const CRun run = zorcld.Run({"outline", sFile, "-o", sOut, "--distance", sDistance});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_EQ(run.sErr, "");
    return json::parse(ReadBytes(sOut), nullptr, false);
}

std::string MakeGrid(int nCols, int nRows, double dCell, double x, double y)
{
    std::ostringstream text;
    text.precision(12);
    text << "ncols " << nCols << "\nnrows " << nRows << "\nxllcorner " << x << "\nyllcorner " << y
         << "\ncellsize " << dCell << "\nNODATA_value -9999\n";
    for (int i = 0; i < nCols * nRows; ++i)
        text << 100 + i % 7 << (i % nCols == nCols - 1 ? "\n" : " ");
    return text.str();
}

} // namespace

TEST(ZorcldOutline, GeoJson_ClosedRingOfTheGrid)
{
    const CZorcld zorcld;
    const json collection = Outline(zorcld, zorcld.Write("grid.ply", MakeGridPly(20)), "3.5");
    ASSERT_EQ(collection["type"], "FeatureCollection");
    const json& feature = collection["features"][0];
    // The square of 19 units, whose corners may be cut.
    const double dArea = feature["properties"]["area"].get<double>();
    EXPECT_GT(dArea, 350.0);
    EXPECT_LE(dArea, 361.0);
    EXPECT_NEAR(feature["properties"]["length"].get<double>(), 76.0, 4.0);
    EXPECT_EQ(feature["properties"]["distance"], 3.5);
    EXPECT_EQ(feature["geometry"]["type"], "Polygon");
    const json& ring = feature["geometry"]["coordinates"][0];
    EXPECT_EQ(feature["properties"]["corners"], ring.size() - 1);
    EXPECT_EQ(ring.front(), ring.back());
    double dTwice = 0.0;
    for (std::size_t i = 1; i < ring.size(); ++i)
        dTwice += ring[i - 1][0].get<double>() * ring[i][1].get<double>() -
                  ring[i][0].get<double>() * ring[i - 1][1].get<double>();
    EXPECT_NEAR(dTwice, 2.0 * dArea, 1e-6); // positive: counter-clockwise, as the format has it
}

TEST(ZorcldOutline, Auto_SaysWhatItTook)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(60));
    const CRun run =
        zorcld.Run({"outline", sFile, "-o", zorcld.GetPath("outline.wkt"), "--distance", "auto"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_NE(run.sOut.find("4 times the mean plan spacing"), std::string::npos) << run.sOut;
    EXPECT_EQ(ReadBytes(zorcld.GetPath("outline.wkt")).substr(0, 10), "POLYGON ((");
}

// Cells of 8 1/10000 too, as grids in degrees have them: every other one is a step wider.
TEST(ZorcldOutline, Auto_FullGridsAreOnePart)
{
    const CZorcld zorcld;
    for (const double dCell : {1.0, 30.0, 0.1, 0.000833333, 0.000277778})
        for (const auto& [nCols, nRows] : {std::pair{12, 9}, {5, 100}, {33, 31}, {50, 2}, {3, 50}, {201, 57}})
        {
            const std::string sFile =
                zorcld.Write("grid.asc", MakeGrid(nCols, nRows, dCell, -105.550416667, 40.090416667));
            SCOPED_TRACE(std::to_string(dCell) + " " + std::to_string(nCols) + " x " + std::to_string(nRows));
            const json collection = Outline(zorcld, sFile, "auto"); // nothing on standard error
            const double dWhole = dCell * dCell * (nCols - 1) * (nRows - 1);
            const double dArea = collection["features"][0]["properties"]["area"].get<double>();
            EXPECT_GT(dArea, 0.7 * dWhole); // rows 2.8 steps apart may come 2 apart
            EXPECT_LT(dArea, 1.25 * dWhole);
        }
}

TEST(ZorcldOutline, Auto_PartOfACloud_SaysHowMuchItHolds)
{
    const CZorcld zorcld;
    std::vector<float> vecCoords;
    const auto addSquare = [&](int nSide, int nStart)
    {
        for (int i = 0; i < nSide * nSide; ++i)
            for (const int n : {nStart + i % nSide, i / nSide, 0})
                vecCoords.push_back(static_cast<float>(n));
    };
    addSquare(30, 0);
    addSquare(20, 5000);
    const std::string sFile = zorcld.Write("two.ply", MakePly(vecCoords));
    const CRun run = zorcld.Run({"outline", sFile, "-o", zorcld.GetPath("o.wkt"), "--distance", "auto"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("holds 900 of 1 300 points (69.2 %)"), std::string::npos) << run.sErr;
}

TEST(ZorcldOutline, Units_AsTheFileStatesThem)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = LasOf(0, 0);
    las.adScale = {1.0, 1.0, 1.0};
    for (int i = 0; i < 400; ++i)
        las.vecPnts.push_back({i % 20, i / 20, 0, {}});
    const auto run =
        [&](const std::vector<CLasNamedRecord>& vecRecords, const std::vector<std::string>& vecMore)
    {
        las.vecNamed = vecRecords;
        std::vector<std::string> vecArgs = {"outline",    zorcld.Write("o.las", las.GetBytes()),
                                            "-o",         zorcld.GetPath("o.wkt"),
                                            "--distance", "4"};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        return zorcld.Run(vecArgs).sOut;
    };
    const std::string sFeet = run(LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9003}}), {});
    EXPECT_NE(sFeet.find("length 76 ft, area 361.00 square ft, distance 4 ft\n"), std::string::npos) << sFeet;
    const std::string sDegrees = run({LasWkt("GEOGCS[\"g\",UNIT[\"degree\",0.0174532925199433]]")}, {});
    EXPECT_NE(sDegrees.find("distance 4 degrees, about 4.45e+05 m to the north"), std::string::npos)
        << sDegrees;
    const std::string sNamed = run(LasGeoKeys({{1024, 0, 1, 1}, {3076, 0, 1, 9003}}), {"--unit", "yd"});
    EXPECT_NE(sNamed.find("distance 4 yd\n"), std::string::npos) << sNamed;
    EXPECT_NE(run({}, {}).find("distance 4\n"), std::string::npos);
}

TEST(ZorcldOutline, EveryKind_AndUsableAsAContour)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(30));
    for (const char* pName : {"o.geojson", "o.json", "o.wkt", "o.csv"})
    {
        const std::string sOut = zorcld.GetPath(pName);
        ASSERT_EQ(zorcld.Run({"outline", sFile, "-o", sOut, "--distance", "3.5"}).nStatus, 0) << pName;
        const std::string sInside = zorcld.GetPath("inside.csv");
        ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sInside, "--contour", sOut}).nStatus, 0) << pName;
        const std::string sText = ReadBytes(sInside);
        EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n'), 901) << pName;
    }
    EXPECT_EQ(ReadBytes(zorcld.GetPath("o.csv")).substr(0, 6), "x,y,z\n");
}

TEST(ZorcldOutline, Png_OverThePoints)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(30));
    const std::string sOut = zorcld.GetPath("o.png");
    ASSERT_EQ(zorcld.Run({"outline", sFile, "-o", sOut, "--distance", "3.5", "--size", "400x300"}).nStatus,
              0);
    const CPng png = ReadPng(sOut);
    ASSERT_EQ(png.nWidth, 400U);
    EXPECT_GT(png.CalcShareDrawn(), 0.05);
}

TEST(ZorcldOutline, None_IsAFailureThatSaysWhy)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("o.wkt");
    const std::string sGrid = zorcld.Write("grid.ply", MakeGridPly(5));
    const std::string sOne = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    const std::string sRow = zorcld.Write("row.ply", MakePly({0, 0, 0, 1, 0, 0, 2, 0, 0}));
    const std::string sFew = zorcld.Write("few.ply", MakePly({0, 0, 0, 9, 9, 0}));
    for (const std::vector<std::string>& vecArgs : {std::vector<std::string>{sGrid, "0.5"},
                                                    {sOne, "1"},
                                                    {sOne, "auto"},
                                                    {sRow, "auto"},
                                                    {sRow, "2"},
                                                    {sFew, "auto"},
                                                    {sFew, "100"}})
    {
        const CRun run = zorcld.Run({"outline", vecArgs[0], "-o", sOut, "--distance", vecArgs[1]});
        EXPECT_EQ(run.nStatus, 1) << vecArgs[0] << vecArgs[1];
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    }
    EXPECT_EQ(zorcld.CountFiles(), 4U);
}

TEST(ZorcldOutline, Picture_TellsTheDistanceWithItsUnit)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const auto readSubtitle = [&](const std::vector<std::string>& vecUnit)
    {
        std::vector<std::string> vecArgs = {"outline",    sFile, "-o",     zorcld.GetPath("out.png"),
                                            "--distance", "3.5", "--size", "1300x1000"};
        vecArgs.insert(vecArgs.end(), vecUnit.begin(), vecUnit.end());
        EXPECT_EQ(zorcld.Run(vecArgs).nStatus, 0);
        const CPng png = ReadPng(zorcld.GetPath("out.png"));
        return std::vector<unsigned char>(png.GetPixel(0, 44), png.GetPixel(0, 60));
    };
    EXPECT_NE(readSubtitle({}), readSubtitle({"--unit", "m"}));
}
