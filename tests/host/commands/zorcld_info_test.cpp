#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace
{

nlohmann::json GetInfo(const CZorcld& zorcld, const std::string& sFile)
{
    const CRun run = zorcld.Run({"info", "--json", sFile});
    EXPECT_EQ(run.nStatus, 0) << run.sErr;
    return nlohmann::json::parse(run.sOut);
}

} // namespace

TEST(ZorcldInfo, Json_TellsTheGrid)
{
    const CZorcld zorcld;
    const nlohmann::json info = GetInfo(zorcld, zorcld.Write("grid.ply", MakeGridPly(40)));
    EXPECT_EQ(info["type"], "ply");
    EXPECT_EQ(info["points"], 1600);
    EXPECT_EQ(info["announced"], 1600);
    EXPECT_EQ(info["duplicates_removed"], 0);
    EXPECT_EQ(info["color"], true);
    EXPECT_EQ(info["bounds"]["min"], nlohmann::json({0.0, 0.0, 0.0}));
    EXPECT_EQ(info["bounds"]["max"], nlohmann::json({39.0, 39.0, 78.0}));
    EXPECT_NEAR(info["plan_density"].get<double>(), 1.0, 0.15);
    EXPECT_NEAR(info["plan_spacing"].get<double>(), 1.0, 0.08);
    ASSERT_EQ(info["levels_of_detail"].size(), 10U);
    EXPECT_EQ(info["levels_of_detail"][0]["spacing"], 0.1);
    EXPECT_EQ(info["levels_of_detail"][0]["points"], 1600);
    EXPECT_LT(info["levels_of_detail"][7]["points"], 100);
    EXPECT_GE(info["seconds"]["load"].get<double>(), 0.0);
    EXPECT_GT(info["peak_memory_bytes"].get<double>(), 1e6);
    EXPECT_TRUE(info["warnings"].empty());
}

TEST(ZorcldInfo, Json_CountsDuplicates)
{
    const CZorcld zorcld;
    const nlohmann::json info = GetInfo(
        zorcld, zorcld.Write("stacked.ply", MakePly({0, 0, 0, 1, 1, 1, 0, 0, 0.01F, 5, 5, 5, 0, 0, 0.02F})));
    EXPECT_EQ(info["announced"], 5);
    EXPECT_EQ(info["points"], 3);
    EXPECT_EQ(info["duplicates_removed"], 2);
    EXPECT_EQ(info["color"], false);
}

// Points that are not numbers, and points that are not in the file, are no duplicates.
TEST(ZorcldInfo, LostPnts_EachByItsName)
{
    const CZorcld zorcld;
    const float fNan = std::nanf("");
    const nlohmann::json info = GetInfo(
        zorcld, zorcld.Write("nan.ply", MakePly({1, 1,    1,    2,    3, 4, fNan, fNan, fNan, 2,   3,
                                                 4, fNan, fNan, fNan, 5, 5, 5,    7,    8,    fNan})));
    EXPECT_EQ(info["announced"], 7);
    EXPECT_EQ(info["points"], 4); // the last one with the first one's height
    EXPECT_EQ(info["duplicates_removed"], 1);
    EXPECT_EQ(info["not_numbers"], 3);
    EXPECT_EQ(info["never_there"], 0);
    const CRun run = zorcld.Run({"info", zorcld.GetPath("nan.ply")});
    EXPECT_NE(run.sOut.find("Not numbers         3 points with coordinates that are none\n"),
              std::string::npos)
        << run.sOut;
    const std::string sHead = "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value -1\n";
    const nlohmann::json grid = GetInfo(zorcld, zorcld.Write("nan.asc", sHead + "1 2\nnan -1\n"));
    EXPECT_TRUE(grid["announced"].is_null());
    EXPECT_EQ(grid["duplicates_removed"], 0);
    EXPECT_EQ(grid["not_numbers"], 1);
    if (!CZorcld::HasLaszip())
        GTEST_SKIP() << "the points of LAS are not read without LASzip";
    CLasFile las = LasOf(1, 5);
    las.adOffset = {0.03, 0.0, 0.0};
    las.nAnnounced = 9;
    las.vecPnts[4] = las.vecPnts[3];
    const nlohmann::json cut = GetInfo(zorcld, zorcld.Write("cut.las", las.GetBytes()));
    EXPECT_EQ(cut["announced"], 9);
    EXPECT_EQ(cut["duplicates_removed"], 1);
    EXPECT_EQ(cut["not_numbers"], 0);
    EXPECT_EQ(cut["never_there"], 4);
    EXPECT_NE(
        zorcld.Run({"info", zorcld.GetPath("cut.las")}).sOut.find("Never there         4 announced points\n"),
        std::string::npos);
}

// With the digits of --json, edges of the rectangle lie where points lie.
TEST(ZorcldInfo, Bounds_AreThoseOfThePoints)
{
    const CZorcld zorcld;
    const auto expect = [&](const std::string& sFile)
    {
        const nlohmann::json info = GetInfo(zorcld, sFile);
        const nlohmann::json& bounds = info["bounds"];
        const std::string sRect = bounds["min"][0].dump() + "," + bounds["min"][1].dump() + "," +
                                  bounds["max"][0].dump() + "," + bounds["max"][1].dump();
        EXPECT_EQ(zorcld.Run({"count", sFile, "--rect=" + sRect}).sOut, info["points"].dump() + "\n")
            << sRect;
        const std::string sOut = zorcld.GetPath("out.ply");
        EXPECT_EQ(zorcld.Run({"points", sFile, "--rect=" + sRect, "-o", sOut}).nStatus, 0);
        EXPECT_NE(ReadBytes(sOut).find("element vertex " + info["points"].dump() + "\n"), std::string::npos);
        return bounds;
    };
    std::vector<float> vecCoords;
    for (int i = 0; i < 300; ++i)
        vecCoords.insert(vecCoords.end(), {635619.85F + 0.07F * static_cast<float>(i),
                                           1e6F - 0.3F * static_cast<float>(i), static_cast<float>(i % 7)});
    const nlohmann::json bounds = expect(zorcld.Write("many.ply", MakePly(vecCoords)));
    EXPECT_EQ(bounds["min"][2], 0.0);
    EXPECT_EQ(bounds["max"][2], 6.0);
    expect(zorcld.Write("one.ply", MakePly({0.1F, -0.3F, 1e5F})));
    if (CZorcld::HasLas())
        expect(zorcld.Write("in.las", LasOf(1, 200).GetBytes()));
}

// A grid without a corner lies at a number that stands for none.
TEST(ZorcldInfo, Sentinels_AreNotPrintedInFull)
{
    const CZorcld zorcld;
    const std::string sHead = "ncols 2\nnrows 2\nxllcenter 10\nyllcenter 20\ncellsize 5\nNODATA_value -1\n";
    const CRun run = zorcld.Run({"info", zorcld.Write("centre.asc", sHead + "1 2\n3 4\n")});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(run.sOut.find("3.40282e+38 to    3.40282e+38   (0.0000)\n"), std::string::npos) << run.sOut;
    EXPECT_EQ(run.sOut.find("00000"), std::string::npos) << run.sOut;
    const std::string sFar = zorcld.Write("far.ply", MakePly({1e38F, 1, 2, 1e38F, 2, 3}));
    EXPECT_EQ(zorcld.Run({"info", sFar}).sOut.find("00000"), std::string::npos);
}

// Told by the points, not by the bounds that the header gives.
TEST(ZorcldInfo, MovedPnts_AreTold)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = LasOf(1, 5);
    las.adScale = {1.0, 1.0, 1.0};
    EXPECT_TRUE(GetInfo(zorcld, zorcld.Write("near.las", las.GetBytes()))["warnings"].empty());
    las.vecPnts[4].x = las.vecPnts[0].x - 300000;
    const std::string sFar = zorcld.Write("far.las", las.GetBytes());
    const CRun run = zorcld.Run({"points", sFar, "-o", zorcld.GetPath("o.csv")});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_NE(run.sErr.find("points lie more than 214748 units from the first one"), std::string::npos)
        << run.sErr;
}

TEST(ZorcldInfo, CoordinateSystem_AsTheFileStatesIt)
{
    if (!CZorcld::HasLas())
        GTEST_SKIP() << "LAS is not read";
    const CZorcld zorcld;
    CLasFile las = LasOf(1, 5);
    EXPECT_TRUE(GetInfo(zorcld, zorcld.Write("a.las", las.GetBytes()))["coordinate_system"].is_null());

    las.vecNamed = LasGeoKeys({{1024, 0, 1, 1}, {3072, 0, 1, 2903}, {3073, 34737, 6, 0}, {3076, 0, 1, 9003}},
                              {}, "Place|");
    const std::string sKeys = zorcld.Write("keys.las", las.GetBytes());
    const nlohmann::json keys = GetInfo(zorcld, sKeys)["coordinate_system"];
    EXPECT_EQ(keys["source"], "geokeys");
    EXPECT_EQ(keys["name"], "Place");
    EXPECT_EQ(keys["code"], "EPSG:2903");
    EXPECT_EQ(keys["unit"]["name"], "US survey foot");
    EXPECT_NEAR(keys["unit"]["metres"].get<double>(), 0.3048006096, 1e-9);
    EXPECT_TRUE(keys["height_unit"].is_null());
    const std::string sText = zorcld.Run({"info", sKeys}).sOut;
    EXPECT_NE(sText.find("Coordinate system   Place, EPSG:2903 (GeoKeys)\n"), std::string::npos) << sText;
    EXPECT_NE(sText.find("Unit                US survey foot (0.30480061 m)\n"), std::string::npos) << sText;

    const std::string sWkt = "GEOGCS[\"Some\nwhere\",UNIT[\"degree\",0.0174532925199433]]";
    las.vecNamed = {LasWkt(sWkt)};
    const std::string sDegrees = zorcld.Write("wkt.las", las.GetBytes());
    const nlohmann::json wkt = GetInfo(zorcld, sDegrees)["coordinate_system"];
    EXPECT_EQ(wkt["source"], "wkt");
    EXPECT_EQ(wkt["wkt"], sWkt);
    EXPECT_NEAR(wkt["unit"]["radians"].get<double>(), 0.0174532925, 1e-9);
    EXPECT_NE(zorcld.Run({"info", sDegrees}).sOut.find("Coordinate system   Some?where (WKT)\n"),
              std::string::npos);
}

TEST(ZorcldInfo, OnePoint_HasNoDensity)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("one.ply", MakePly({1, 2, 3}));
    const nlohmann::json info = GetInfo(zorcld, sFile);
    EXPECT_EQ(info["points"], 1);
    EXPECT_TRUE(info["plan_density"].is_null());
    EXPECT_EQ(zorcld.Run({"info", sFile}).nStatus, 0);
}

TEST(ZorcldInfo, Text_NamesWhatItTells)
{
    const CZorcld zorcld;
    const CRun run = zorcld.Run({"info", zorcld.Write("grid.ply", MakeGridPly(40))});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_EQ(run.sErr, ""); // no terminal, no progress bar
    for (const char* pText : {"1 600", "Duplicates removed  0 of 1 600", "Colour", "Bounds", "Plan spacing",
                              "Level of detail", "Load time", "Peak memory"})
        EXPECT_NE(run.sOut.find(pText), std::string::npos) << pText << run.sOut;
}

// Double coordinates are read as floats: the user is told, unless he wants quiet.
TEST(ZorcldInfo, DoubleCoordinates_Warned)
{
    const CZorcld zorcld;
    const std::string sFile =
        zorcld.Write("double.ply", MakePlyHeader("element vertex 2\nproperty double x\nproperty double y\n"
                                                 "property double z\n") +
                                       std::string(48, '\1'));
    const CRun run = zorcld.Run({"info", sFile});
    EXPECT_EQ(run.nStatus, 0);
    EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
    EXPECT_NE(run.sErr.find("declared 'double' but read as 'float'"), std::string::npos) << run.sErr;
    EXPECT_EQ(zorcld.Run({"info", "--quiet", sFile}).sErr, "");
}
