#include <tests/host/support/CPng.h>
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <vector>

TEST(ZorcldProfile, Csv_DistanceHeightOffset)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const std::string sOut = zorcld.GetPath("profile.csv");
    // From east to west: the north is on the right.
    const CRun run = zorcld.Run({"profile", sFile, "-o", sOut, "--line", "15,10,5,10,3"});
    ASSERT_EQ(run.nStatus, 0) << run.sErr;
    const std::string sText = ReadBytes(sOut);
    EXPECT_EQ(sText.substr(0, sText.find('\n')), "distance,height,offset,x,y,red,green,blue");
    EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n'), 1 + 11 * 3);
    EXPECT_NE(sText.find("\n4.0000,22.0000,-1.0000,11.0000,11.0000,200,100,50\n"), std::string::npos)
        << sText;
    EXPECT_LT(sText.find("\n3.0000,"), sText.find("\n4.0000,")); // in order of distance
    EXPECT_LT(sText.find("\n9.0000,"), sText.find("\n10.0000,"));
}

TEST(ZorcldProfile, Png_AxesAndPoints)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(50));
    const std::string sOut = zorcld.GetPath("profile.png");
    for (const char* pLine : {"0,25,49,25,10", "0,0,49,49,2", "0,25,0.001,25,5", "500,500,600,600,5"})
    {
        const CRun run =
            zorcld.Run({"profile", sFile, "-o", sOut, "--line", pLine, "--size", "500x300", "--unit", "m"});
        ASSERT_EQ(run.nStatus, 0) << run.sErr;
        const CPng png = ReadPng(sOut);
        ASSERT_EQ(png.nWidth, 500U) << pLine;
        ASSERT_EQ(png.nHeight, 300U) << pLine;
        EXPECT_GT(png.CountColors(), 20U) << pLine; // labels, at least
    }
    ASSERT_EQ(
        zorcld.Run({"profile", sFile, "-o", sOut, "--line", "0,25,49,25,10", "--color", "height"}).nStatus,
        0);
    EXPECT_EQ(ReadPng(sOut).nWidth, 1600U);
    ASSERT_EQ(
        zorcld.Run({"profile", sFile, "-o", sOut, "--line", "0,25,49,25,10", "--size", "200x200"}).nStatus,
        0);
    EXPECT_EQ(ReadPng(sOut).nWidth, 200U);
}

TEST(ZorcldProfile, Degenerate_LinesAndClouds)
{
    const CZorcld zorcld;
    const std::string sOut = zorcld.GetPath("profile.png");
    const std::string sFlat = zorcld.Write("flat.ply", MakePly({0, 0, 5, 1, 0, 5, 2, 0, 5}));
    const std::string sTower = zorcld.Write("tower.ply", MakePly({0, 0, 0, 0.5F, 0, 200000, 1, 0, -200000}));
    for (const std::string& sFile : {sFlat, sTower})
        for (const char* pLine : {"0,0,2,0,1", "-1e9,0,1e9,0,1", "0,0,1e-9,0,1", "-1e300,0,1e300,0,1e300"})
            EXPECT_EQ(
                zorcld.Run({"profile", sFile, "-o", sOut, "--line", pLine, "--size", "300x200"}).nStatus, 0)
                << pLine;
}

TEST(ZorcldProfile, Corridor_AsAShapeForOverlays)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const std::string sOut = zorcld.GetPath("corridor.geojson");
    ASSERT_EQ(zorcld.Run({"profile", sFile, "-o", sOut, "--line", "5,10,15,10,4"}).nStatus, 0);
    const nlohmann::json collection = nlohmann::json::parse(ReadBytes(sOut), nullptr, false);
    const nlohmann::json& feature = collection["features"][0];
    EXPECT_EQ(feature["properties"]["width"], 4);
    EXPECT_EQ(feature["geometry"]["coordinates"][0],
              nlohmann::json::parse("[[5,8],[15,8],[15,12],[5,12],[5,8]]"));
    const std::string sView = zorcld.GetPath("view.png");
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", sView, "--overlay", sOut, "--size", "300x200"}).nStatus, 0);
}
