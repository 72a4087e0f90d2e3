#include <tests/host/support/CZorcld.h>
#include <tests/support/LasBytes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

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
