// Points chosen in plan: rectangles, lines, contours, and counts.
#include <tests/host/support/CZorcld.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

struct CPlace
{
    double x;
    double y;
};

/// A grid of 40 × 40 points one unit apart, and what of it a run writes.
class CGrid
{
public:
    CGrid() : m_sFile(m_zorcld.Write("grid.ply", MakeGridPly(c_nSide))) {}

    /// @return the points written, as a set of x and y; every one must come once.
    std::set<std::pair<int, int>> Ask(std::vector<std::string> vecArgs)
    {
        const std::string sOut = m_zorcld.GetPath("out.csv");
        vecArgs.insert(vecArgs.begin(), {"points", m_sFile, "-o", sOut});
        const CRun run = m_zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        std::set<std::pair<int, int>> setPnts;
        std::istringstream lines(ReadBytes(sOut));
        std::string sLine;
        std::getline(lines, sLine); // header
        while (std::getline(lines, sLine))
        {
            double x = 0.0;
            double y = 0.0;
            EXPECT_EQ(std::sscanf(sLine.c_str(), "%lf,%lf", &x, &y), 2);
            EXPECT_TRUE(setPnts.emplace(std::lround(x), std::lround(y)).second) << "twice: " << sLine;
        }
        return setPnts;
    }

    /// The points for which a condition holds.
    static std::set<std::pair<int, int>> Scan(const std::function<bool(int, int)>& isWanted)
    {
        std::set<std::pair<int, int>> setPnts;
        for (int x = 0; x < c_nSide; ++x)
            for (int y = 0; y < c_nSide; ++y)
                if (isWanted(x, y))
                    setPnts.emplace(x, y);
        return setPnts;
    }

    std::string Write(const std::string& sName, const std::string& sText)
    {
        return m_zorcld.Write(sName, sText);
    }
    const CZorcld& GetZorcld() const { return m_zorcld; }
    const std::string& GetFile() const { return m_sFile; }

    static constexpr int c_nSide = 40;

private:
    CZorcld m_zorcld;
    std::string m_sFile;
};

/// Winding of a plain crossing count; the rings of these tests pass through no point of the grid.
bool IsInRing(const std::vector<CPlace>& ring, double x, double y)
{
    bool bInside = false;
    for (std::size_t i = 0, k = ring.size() - 1; i < ring.size(); k = i++)
        if ((ring[i].y > y) != (ring[k].y > y) &&
            x < (ring[k].x - ring[i].x) * (y - ring[i].y) / (ring[k].y - ring[i].y) + ring[i].x)
            bInside = !bInside;
    return bInside;
}

std::string ToText(const std::vector<CPlace>& ring, const char* pFormat, const char* pBetween)
{
    std::string sText;
    for (std::size_t i = 0; i <= ring.size(); ++i)
    {
        std::array<char, 64> buffer{};
        const CPlace& place = ring[i % ring.size()];
        std::snprintf(buffer.data(), buffer.size(), pFormat, place.x, place.y);
        sText += (i == 0 ? "" : pBetween) + std::string(buffer.data());
    }
    return sText;
}

std::string ToJson(const std::vector<std::vector<CPlace>>& rings)
{
    std::string sText = R"({"type": "Polygon", "coordinates": [)";
    for (std::size_t i = 0; i < rings.size(); ++i)
        sText += (i == 0 ? "[" : ", [") + ToText(rings[i], "[%.17g, %.17g]", ", ") + "]";
    return sText + "]}";
}

const std::vector<CPlace> c_outer = {{3.3, 2.1}, {35.7, 5.2}, {30.1, 36.6}, {18.4, 20.9}, {6.2, 33.3}};
const std::vector<CPlace> c_hole = {{10.5, 8.5}, {10.5, 16.5}, {24.5, 15.5}, {22.5, 8.5}};

} // namespace

TEST(ZorcldPlan, Rect_EdgesIncluded)
{
    CGrid grid;
    EXPECT_EQ(grid.Ask({"--rect", "3,4,10,20"}),
              CGrid::Scan([](int x, int y) { return x >= 3 && x <= 10 && y >= 4 && y <= 20; }));
    EXPECT_EQ(grid.Ask({"--rect", "-100,-100,100,100"}).size(), 1600U);
    EXPECT_EQ(grid.Ask({"--rect", "50,50,60,60"}).size(), 0U);
    EXPECT_EQ(grid.Ask({"--rect", "7,7,7,7"}).size(), 1U);
}

TEST(ZorcldPlan, Rect_TogetherWithOthersNarrowsDown)
{
    CGrid grid;
    EXPECT_EQ(grid.Ask({"--rect", "3,4,10,20", "--clip", "1,0,0,-5"}),
              CGrid::Scan([](int x, int y) { return x >= 3 && x <= 5 && y >= 4 && y <= 20; }));
    const std::size_t nThin = grid.Ask({"--rect", "3,4,30,30", "--points", "50"}).size();
    EXPECT_GT(nThin, 0U);
    EXPECT_LE(nThin, 50U);
    EXPECT_EQ(grid.Ask({"--rect", "3,4,5,5", "--points", "50"}).size(), 6U); // fewer than that: all of them
}

TEST(ZorcldPlan, Count_SameAsRect)
{
    const CGrid grid;
    const auto count = [&](const char* pRect)
    {
        const CRun run = grid.GetZorcld().Run({"count", grid.GetFile(), "--rect", pRect});
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        return run.sOut;
    };
    EXPECT_EQ(count("3,4,10,20"), "136\n");
    EXPECT_EQ(count("-1e6,-1e6,1e6,1e6"), "1600\n");
    EXPECT_EQ(count("50,50,60,60"), "0\n");
}

TEST(ZorcldPlan, Line_CorridorOnBothSides)
{
    CGrid grid;
    EXPECT_EQ(grid.Ask({"--line", "5,10,20,10,2.5"}),
              CGrid::Scan([](int x, int y) { return x >= 5 && x <= 20 && y >= 8 && y <= 12; }));
    // Across the grid: |x - y| up to 2 √2, and the ends square to the line.
    EXPECT_EQ(grid.Ask({"--line", "10.1,10.1,30.1,30.1,2"}),
              CGrid::Scan([](int x, int y) { return std::abs(x - y) <= 2 && x + y >= 21 && x + y <= 60; }));
}

TEST(ZorcldPlan, Line_EndsComeOnce)
{
    CGrid grid;
    using TPnts = std::set<std::pair<int, int>>;
    EXPECT_EQ(grid.Ask({"--line", "5,10,20,10,0"}), TPnts());
    EXPECT_EQ(grid.Ask({"--line", "5,10,20,10,0", "--ends"}), (TPnts{{5, 10}, {20, 10}}));
    EXPECT_EQ(grid.Ask({"--line", "5,10,20.5,10,0", "--ends"}), (TPnts{{5, 10}}));
    EXPECT_EQ(grid.Ask({"--line", "5,10,20,10,1", "--ends"}), grid.Ask({"--line", "5,10,20,10,1"}));
    EXPECT_EQ(grid.Ask({"--line", "5,10,5,10,3", "--ends"}), (TPnts{{5, 10}})); // no length: no corridor
}

TEST(ZorcldPlan, Contour_SamePointsFromEveryKindOfFile)
{
    CGrid grid;
    const auto wanted = CGrid::Scan([](int x, int y) { return IsInRing(c_outer, x, y); });
    ASSERT_GT(wanted.size(), 300U);
    EXPECT_EQ(grid.Ask({"--contour", grid.Write("a.geojson", ToJson({c_outer}))}), wanted);
    EXPECT_EQ(grid.Ask({"--contour",
                        grid.Write("a.wkt", "POLYGON ((" + ToText(c_outer, "%.17g %.17g", ",") + "))")}),
              wanted);
    EXPECT_EQ(
        grid.Ask({"--contour", grid.Write("a.csv", "x,y\r\n" + ToText(c_outer, "%.17g,%.17g", "\r\n"))}),
        wanted);
    EXPECT_EQ(grid.Ask({"--contour", grid.Write("b.wkt", "SRID=4326; linestring Z (" +
                                                             ToText(c_outer, "%.17g %.17g 7", ", ") + ")")}),
              wanted);
    std::vector<CPlace> reversed(c_outer.rbegin(), c_outer.rend());
    EXPECT_EQ(grid.Ask({"--contour", grid.Write("c.geojson", ToJson({reversed}))}), wanted);
}

// The library's contour query delivers nothing of leaves that a contour with holes passes through.
TEST(ZorcldPlan, Contour_HolesAreTakenOutPointByPoint)
{
    CGrid grid;
    const auto isIn = [](int x, int y) { return IsInRing(c_outer, x, y) && !IsInRing(c_hole, x, y); };
    const std::string sPath = grid.Write("a.geojson", ToJson({c_outer, c_hole}));
    EXPECT_EQ(grid.Ask({"--contour", sPath}), CGrid::Scan(isIn));
    EXPECT_EQ(grid.Ask({"--contour", sPath, "--outside"}),
              CGrid::Scan([&](int x, int y) { return !isIn(x, y); }));
}

TEST(ZorcldPlan, Contour_SeveralPolygonsTogether)
{
    CGrid grid;
    const std::string sPath =
        grid.Write("many.wkt", "GEOMETRYCOLLECTION (POLYGON EMPTY, MULTIPOLYGON "
                               "(((0 0, 4 0, 4 4, 0 4, 0 0)), ((2 2, 8 2, 8 8, 2 8, 2 2))));"
                               "POLYGON ((20 20, 21 20, 21 21, 20 21))");
    EXPECT_EQ(grid.Ask({"--contour", sPath}), CGrid::Scan(
                                                  [](int x, int y)
                                                  {
                                                      return (x <= 4 && y <= 4) ||
                                                             (x >= 2 && x <= 8 && y >= 2 && y <= 8) ||
                                                             (x >= 20 && x <= 21 && y >= 20 && y <= 21);
                                                  }));
}

// Points on an edge, of a hole too, belong to the region.
TEST(ZorcldPlan, Contour_EdgesIncluded)
{
    CGrid grid;
    const std::string sPath =
        grid.Write("edges.wkt", "POLYGON ((2 2, 12 2, 12 12, 2 12, 2 2), (5 5, 9 5, 9 9, 5 9, 5 5))");
    EXPECT_EQ(grid.Ask({"--contour", sPath}),
              CGrid::Scan(
                  [](int x, int y)
                  { return x >= 2 && x <= 12 && y >= 2 && y <= 12 && !(x > 5 && x < 9 && y > 5 && y < 9); }));
}

// Any edge: of a hole in another one, and beside the outer ring.
TEST(ZorcldPlan, Contour_EdgesOfHolesIncludedWhereverTheyRun)
{
    CGrid grid;
    const std::string sPath = grid.Write(
        "holes.wkt", "POLYGON ((2 2, 12 2, 12 12, 2 12), (5 5, 9 5, 9 9, 5 9), (7 7, 20 7, 20 10, 7 10))");
    const auto isOnBox = [](int x, int y, int xmin, int ymin, int xmax, int ymax)
    {
        return x >= xmin && x <= xmax && y >= ymin && y <= ymax &&
               (x == xmin || x == xmax || y == ymin || y == ymax);
    };
    const auto isIn = [&](int x, int y)
    {
        const bool bOnEdge =
            isOnBox(x, y, 2, 2, 12, 12) || isOnBox(x, y, 5, 5, 9, 9) || isOnBox(x, y, 7, 7, 20, 10);
        const bool bInHole = (x > 5 && x < 9 && y > 5 && y < 9) || (x > 7 && x < 20 && y > 7 && y < 10);
        return bOnEdge || (x > 2 && x < 12 && y > 2 && y < 12 && !bInHole);
    };
    EXPECT_EQ(grid.Ask({"--contour", sPath}), CGrid::Scan(isIn));
}

// The corners are the points' own coordinates, to the last bit.
TEST(ZorcldPlan, Contour_PntsAtItsOutermostCornersAreInside)
{
    const CZorcld zorcld;
    std::mt19937 random(5);
    std::uniform_real_distribution<float> draw(1234.5F, 1284.5F);
    std::vector<float> vecCoords(3000);
    std::generate(vecCoords.begin(), vecCoords.end(), [&] { return draw(random); });
    const std::string sFile = zorcld.Write("far.ply", MakePly(vecCoords));
    const auto calcPlace = [&](std::size_t i) // as the cloud holds it, by the first point
    {
        const auto calc = [](double d, double dOrg)
        { return std::trunc((d - dOrg) * 10000.0) / 10000.0 + dOrg; };
        return CPlace{calc(static_cast<double>(vecCoords[3 * i]), static_cast<double>(vecCoords[0])),
                      calc(static_cast<double>(vecCoords[3 * i + 1]), static_cast<double>(vecCoords[1]))};
    };
    for (std::size_t i = 0; i < 20; ++i)
    {
        const CPlace a = calcPlace(i);
        const CPlace b = calcPlace(i + 500);
        std::ptrdiff_t nWanted = 0;
        for (std::size_t k = 0; k < 1000; ++k)
            nWanted += std::min(a.x, b.x) <= calcPlace(k).x && calcPlace(k).x <= std::max(a.x, b.x) &&
                               std::min(a.y, b.y) <= calcPlace(k).y && calcPlace(k).y <= std::max(a.y, b.y)
                           ? 1
                           : 0;
        const std::string sContour = zorcld.Write("box.geojson", ToJson({{a, {a.x, b.y}, b, {b.x, a.y}}}));
        const std::string sOut = zorcld.GetPath("out.csv");
        ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sOut, "--contour", sContour}).nStatus, 0);
        const std::string sText = ReadBytes(sOut);
        EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n') - 1, nWanted) << i;
    }
}

// So small a cloud that the library takes every square of it as cut near its corners.
TEST(ZorcldPlan, Contour_SmallCloudsAreCutExactly)
{
    const CZorcld zorcld;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> draw(0.0F, 0.25F);
    std::vector<float> vecCoords;
    int nWanted = 0;
    for (int i = 0; i < 3000; ++i)
    {
        const float x = draw(random);
        const float y = draw(random);
        vecCoords.insert(vecCoords.end(), {x, y, 0.0F});
    }
    const std::string sFile = zorcld.Write("small.ply", MakePly(vecCoords));
    const std::string sAll = zorcld.GetPath("all.csv");
    const std::string sHalf = zorcld.GetPath("half.csv");
    ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sAll}).nStatus, 0);
    std::istringstream lines(ReadBytes(sAll));
    std::string sLine;
    while (std::getline(lines, sLine))
        nWanted += !sLine.empty() && sLine[0] == '0' && std::stod(sLine) < 0.12345 ? 1 : 0;
    const std::string sContour =
        zorcld.Write("half.wkt", "POLYGON ((-1 -1, 0.12345 -1, 0.12345 1, -1 1, -1 -1))");
    ASSERT_EQ(zorcld.Run({"points", sFile, "-o", sHalf, "--contour", sContour}).nStatus, 0);
    const std::string sText = ReadBytes(sHalf);
    EXPECT_GT(nWanted, 1000);
    EXPECT_EQ(std::count(sText.begin(), sText.end(), '\n') - 1, nWanted);
}

TEST(ZorcldPlan, Contour_LongRingsAndSpikes)
{
    CGrid grid;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> draw(0.0, 1.0);
    std::vector<CPlace> ring;
    for (int i = 0; i < 20000; ++i)
    {
        const double dAngle = 6.283185307179586 * i / 20000.0;
        const double dRadius = 12.0 + 6.0 * draw(random);
        ring.push_back({19.7 + dRadius * std::cos(dAngle), 19.3 + dRadius * std::sin(dAngle)});
    }
    EXPECT_EQ(grid.Ask({"--contour", grid.Write("long.geojson", ToJson({ring}))}),
              CGrid::Scan([&](int x, int y) { return IsInRing(ring, x, y); }));
    // A spike, a repeated corner and a ring without area add nothing beside themselves.
    EXPECT_EQ(grid.Ask({"--contour",
                        grid.Write("spike.wkt", "POLYGON ((1 1, 5 1, 5 1, 5 5, 30 5.5, 5 5, 1 5, 1 1))")})
                  .size(),
              25U);
    EXPECT_EQ(grid.Ask({"--contour", grid.Write("flat.wkt", "POLYGON ((1 1, 5 1, 3 1, 1 1))")}).size(), 5U);
    EXPECT_EQ(
        grid.Ask({"--contour", grid.Write("far.wkt", "POLYGON ((1e12 0, 1e12 1e12, -1e12 -1e12))")}).size(),
        CGrid::Scan([](int x, int y) { return y <= x; }).size());
}

TEST(ZorcldPlan, Contour_CsvColumns)
{
    CGrid grid;
    const auto wanted = CGrid::Scan([](int x, int y) { return x <= 2 && y <= 3; });
    for (const char* pText :
         {"-1,-1\n2,-1\n2,3\n-1,3\n", "id,x,y\n7,-1,-1\n7,2,-1\n7,2,3\n7,-1,3\n",
          "\"Y\";\"X\"\r\n-1;-1\r\n-1;2\r\n3;2\r\n3;-1\r\n", "\n-1  -1\n 2\t-1 5\n2 3\n-1 3\n",
          "\xEF\xBB\xBFx, y, name\n-1, -1, a b\n2, -1, c\n2, 3,\n-1, 3"})
        EXPECT_EQ(grid.Ask({"--contour", grid.Write("c.csv", pText)}), wanted) << pText;
}

TEST(ZorcldPlan, Contour_FilesThatCannotBeUsed)
{
    CGrid grid;
    const auto fail = [&](const std::string& sPath)
    {
        const std::string sOut = grid.GetZorcld().GetPath("failed.csv");
        const CRun run = grid.GetZorcld().Run({"points", grid.GetFile(), "-o", sOut, "--contour", sPath});
        EXPECT_EQ(run.nStatus, 1) << sPath;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        EXPECT_NE(run.sErr.find(sPath), std::string::npos) << run.sErr;
        EXPECT_EQ(ReadBytes(sOut), "");
    };
    fail(grid.GetZorcld().GetPath("missing.wkt"));
    int n = 0;
    for (const char* pText :
         {"", "{", "[]", "{}", R"({"type": "Polygon"})", R"({"type": "Polygon", "coordinates": [1, 2]})",
          R"({"type": "Polygon", "coordinates": [[[1]]]})",
          R"({"type": "Polygon", "coordinates": [[["1", 2]]]})", R"({"type": "Polygon", "coordinates": []})",
          R"({"type": "Point", "coordinates": [1, 2]})",
          R"({"type": "LineString", "coordinates": [[0, 0], [1, 0], [1, 1]]})", R"({"type": "Tile"})",
          R"({"type": "Feature", "geometry": null})", "{\"type\": \"\xff\"}",
          R"({"type": "Polygon", "coordinates": [[[1e999, 2]]]})",
          R"({"type": "Polygon", "coordinates": [[]]})",
          R"({"type": "Polygon", "coordinates": [[[1, 2], [3, 4]]]})",
          R"({"type": "Polygon", "coordinates": [[[1, 2], [3, 4], [1, 2]]]})"})
        fail(grid.Write(std::to_string(n++) + ".geojson", pText));
    for (const char* pText :
         {"", "POLYGON", "POLYGON ((", "POLYGON ((1 1, 2 x))", "POINT (1 1)", "POLYGON EMPTY",
          "POLYGON ((1 nan, 2 2, 3 3))", "SRID=", "((", "LINESTRING (0 0, 1 1)"})
        fail(grid.Write(std::to_string(n++) + ".wkt", pText));
    for (const char* pText : {"", "x,y\n", "1,2\n3,4\n", "1,2\n3,4\nfive,six\n", "1,2\n3,4\n5,6e999\n",
                              "-1,0;-1,0\n4,0;-1,0\n4,0;4,0\n", "1,5 2,5\n3,5 2,5\n3,5 9,5\n",
                              "east,north\n1,2\n3,4\n5,9\n", "id,x\n1,2\n3,4\n5,9\n", "1,2\n3,4\n1,2\n"})
        fail(grid.Write(std::to_string(n++) + ".csv", pText));
    std::string sDeep;
    for (int i = 0; i < 100000; ++i)
        sDeep += R"({"type":"GeometryCollection","geometries":[)";
    fail(grid.Write("deep.geojson", sDeep));
    std::string sDeepWkt;
    for (int i = 0; i < 100000; ++i)
        sDeepWkt += "GEOMETRYCOLLECTION(";
    fail(grid.Write("deep.wkt", sDeepWkt));
}

// Coordinates of another system are the common mistake: what is looked for lies elsewhere.
TEST(ZorcldPlan, NothingThere_IsNoted)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(20));
    const std::string sFar = zorcld.Write("far.wkt", "POLYGON ((500 500, 600 500, 600 600, 500 500))");
    const std::string sNear = zorcld.Write("near.wkt", "LINESTRING (-50 5, 50 5)");
    const std::string sPng = zorcld.GetPath("o.png");
    const std::string sCsv = zorcld.GetPath("o.csv");
    for (const std::vector<std::string>& vecArgs :
         {std::vector<std::string>{"view", sFile, "-o", sPng, "--overlay", sFar},
          {"profile", sFile, "-o", sPng, "--line", "500,500,600,600,5"},
          {"points", sFile, "-o", sCsv, "--contour", sFar},
          {"points", sFile, "-o", sCsv, "--rect", "500,500,600,600"}})
    {
        const CRun run = zorcld.Run(vecArgs);
        EXPECT_EQ(run.nStatus, 0) << run.sErr;
        EXPECT_TRUE(run.HasOneErrLine()) << run.sErr;
        std::vector<std::string> vecQuiet = vecArgs;
        vecQuiet.emplace_back("-q");
        EXPECT_EQ(zorcld.Run(vecQuiet).sErr, "");
    }
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", sPng, "--overlay", sNear}).sErr, "");
}

TEST(ZorcldPlan, ShapesWithoutUse_NameFileAndCause)
{
    const CZorcld zorcld;
    const std::string sFile = zorcld.Write("grid.ply", MakeGridPly(5));
    const std::string sPoint = zorcld.Write("point.geojson", R"({"type":"Point","coordinates":[1,2]})");
    const std::string sEmpty = zorcld.Write("empty.geojson", "");
    const std::string sCut = zorcld.Write("cut.geojson", R"({"type":)");
    const std::string sMissing = zorcld.GetPath("missing.wkt");
    const std::string sPng = zorcld.GetPath("o.png");
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", sPng, "--overlay", sPoint}).sErr,
              "zorcld: " + sPoint + ": holds neither a polygon nor a line\n");
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", sPng, "--overlay", sEmpty}).sErr,
              "zorcld: " + sEmpty + ": is empty\n");
    EXPECT_EQ(zorcld.Run({"view", sFile, "-o", sPng, "--overlay", sMissing}).sErr,
              "zorcld: " + sMissing + ": not found\n");
    const CRun run = zorcld.Run({"view", sFile, "-o", sPng, "--overlay", sCut});
    EXPECT_EQ(run.sErr.rfind("zorcld: " + sCut + ": is not JSON: parse error at line 1", 0), 0U) << run.sErr;
    EXPECT_EQ(zorcld.Run({"outline", sFile, "-o", sPng, "--distance", "x"}).sErr,
              "zorcld: --distance: 'x' is not a number\n");
}
