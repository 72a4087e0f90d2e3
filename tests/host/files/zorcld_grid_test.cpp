#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

// Where in its cell a point of a grid lies is told once, and chosen.
TEST(ZorcldGrid, Pnts_AtCornersOrCentresOfTheirCells)
{
    const CZorcld zorcld;
    const std::string sStart = "ncols 2\nnrows 2\nxllcorner 100\nyllcorner 200\n";
    const std::string sCells = "NODATA_value -9\n1 2\n3 -9\n";
    const auto pntsOf =
        [&](const std::string& sSize, const std::vector<std::string>& vecMore, const std::string& sNote)
    {
        const std::string sOut = zorcld.GetPath("o.cld");
        std::vector<std::string> vecArgs = {"convert", zorcld.Write("g.asc", sStart + sSize + sCells), sOut};
        vecArgs.insert(vecArgs.end(), vecMore.begin(), vecMore.end());
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_NE(run.sErr.find(sNote), std::string::npos) << run.sErr;
        EXPECT_EQ(zorcld.Run({"points", sOut, "-o", zorcld.GetPath("o.csv")}).nStatus, 0);
        return ReadBytes(zorcld.GetPath("o.csv"));
    };
    const auto has = [](const std::string& sText, const char* pLine)
    { return sText.find(std::string("\n") + pLine + "\n") != std::string::npos; };
    const std::string sCorner = "half a cell (5 by 5) from the centres; --cell-centre";
    EXPECT_TRUE(has(pntsOf("cellsize 10\n", {}, sCorner), "100.0000,220.0000,1.0000"));
    const std::string sCentre = pntsOf("cellsize 10\n", {"--cell-centre"}, "at the centres");
    EXPECT_TRUE(has(sCentre, "105.0000,215.0000,1.0000")) << sCentre;
    EXPECT_TRUE(has(sCentre, "115.0000,215.0000,2.0000")) << sCentre;
    EXPECT_TRUE(has(sCentre, "105.0000,205.0000,3.0000")) << sCentre;
    // Cells that are not square are not loaded, but converted.
    EXPECT_TRUE(has(pntsOf("DX 10\nDY 30\n", {}, "half a cell (5 by 15)"), "110.0000,260.0000,2.0000"));
    EXPECT_TRUE(
        has(pntsOf("dx 10\ndy 30\n", {"--cell-centre"}, "at the centres"), "115.0000,245.0000,2.0000"));
    const CRun load = zorcld.Run({"info", zorcld.GetPath("g.asc")});
    EXPECT_EQ(load.nStatus, 1);
    EXPECT_NE(load.sErr.find("only square cells (cellsize) are loaded"), std::string::npos) << load.sErr;

    const CRun noGrid = zorcld.Run(
        {"convert", zorcld.Write("p.ply", MakePly({1, 2, 3})), zorcld.GetPath("q.cld"), "--cell-centre"});
    EXPECT_EQ(noGrid.nStatus, 1);
    EXPECT_NE(noGrid.sErr.find("is no grid"), std::string::npos) << noGrid.sErr;
}

TEST(ZorcldGrid, Pnts_InfoAndCheckTellWhereTheyLie)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write(
        "g.asc", "ncols 2\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9\n1 2\n3 4\n");
    const CRun info = zorcld.Run({"info", sFile});
    EXPECT_EQ(info.sErr, "");
    EXPECT_NE(info.sOut.find("Points at           the upper left corner of their cells"), std::string::npos)
        << info.sOut;
    const nlohmann::json json = nlohmann::json::parse(zorcld.Run({"info", "--json", sFile}).sOut);
    EXPECT_EQ(json["grid"]["cell"], nlohmann::json({10.0, 10.0}));
    EXPECT_EQ(json["grid"]["points_at"], "upper left corner");
    const CRun check = zorcld.Run({"check", sFile}); // nothing is wrong with it
    EXPECT_EQ(check.nStatus, 0);
    EXPECT_NE(check.sOut.find("no problems found\n    its points are the upper left corners of their cells"),
              std::string::npos)
        << check.sOut;
    const nlohmann::json checked = nlohmann::json::parse(zorcld.Run({"check", "--json", sFile}).sOut);
    EXPECT_EQ(checked["files"][0]["remarks"][0]["code"], "grid-corner");
    EXPECT_TRUE(checked["files"][0]["warnings"].empty());
}
