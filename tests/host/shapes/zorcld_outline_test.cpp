#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
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
