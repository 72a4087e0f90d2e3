// The readers of shapes, each with the same shapes in its own format, and with what they refuse.
#include <host/output/CFailure.h>
#include <host/shapes/ParseCsvRing.h>
#include <host/shapes/ParseGeoJson.h>
#include <host/shapes/ParseWkt.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace zorcld
{

namespace
{

std::vector<std::pair<double, double>> PairsOf(const TRing& ring)
{
    std::vector<std::pair<double, double>> vecPairs;
    for (const zor::geom::PNT_2D& pnt : ring)
        vecPairs.emplace_back(pnt.x, pnt.y);
    return vecPairs;
}

const std::vector<std::pair<double, double>> c_triangle = {{0.0, 0.0}, {4.0, 0.0}, {0.0, 4.5}, {0.0, 0.0}};

/// What is wrong with a text; empty: nothing is.
template <class TParse>
std::string FindCause(TParse parse, const std::string& sText)
{
    try
    {
        static_cast<void>(parse(sText));
        return {};
    }
    catch (const std::runtime_error& error)
    {
        return error.what();
    }
}

} // namespace

TEST(ParseShapes, Wkt_PolygonsAndLines)
{
    const CShapes shapes =
        ParseWkt("SRID=25832;polygon z ((0 0 9, 4 0 9, 0 4.5 9, 0 0 9), (1 1 9, 2 1 9, 1 2 9, 1 1 9));\n"
                 "MULTILINESTRING ((1 2, 3 4), (5 6, +7 8e0)) POINT EMPTY");
    ASSERT_EQ(shapes.vecPolygons.size(), 1U);
    EXPECT_EQ(PairsOf(shapes.vecPolygons[0].outer), c_triangle);
    ASSERT_EQ(shapes.vecPolygons[0].holes.size(), 1U);
    EXPECT_EQ(shapes.vecPolygons[0].holes[0].size(), 4U);
    ASSERT_EQ(shapes.vecLines.size(), 2U);
    EXPECT_EQ(PairsOf(shapes.vecLines[1]), (std::vector<std::pair<double, double>>{{5.0, 6.0}, {7.0, 8.0}}));
}

TEST(ParseShapes, Wkt_NamesTheByte)
{
    EXPECT_EQ(FindCause(ParseWkt, "POLYGON ((0 0, 1))"), "is not well-known text: no number at byte 16");
    EXPECT_EQ(FindCause(ParseWkt, "POINT (1 2)"), "is not well-known text: no polygon or line at byte 6");
    EXPECT_EQ(FindCause(ParseWkt, " \n"), "is empty");
}

TEST(ParseShapes, GeoJson_FeaturesAndCollections)
{
    const CShapes shapes = ParseGeoJson(
        R"({"type": "FeatureCollection", "features": [
            {"type": "Feature", "geometry": null},
            {"type": "Feature", "geometry": {"type": "GeometryCollection", "geometries": [
                {"type": "Polygon", "coordinates": [[[0, 0], [4, 0, 7], [0, 4.5], [0, 0]]]},
                {"type": "Point", "coordinates": [1, 2]},
                {"type": "LineString", "coordinates": [[1, 2], [3, 4]]}]}}]})");
    ASSERT_EQ(shapes.vecPolygons.size(), 1U);
    EXPECT_EQ(PairsOf(shapes.vecPolygons[0].outer), c_triangle);
    EXPECT_EQ(shapes.vecLines.size(), 1U);
}

TEST(ParseShapes, GeoJson_NamesWhatIsWrong)
{
    EXPECT_EQ(FindCause(ParseGeoJson, R"({"type": "Polygon"})"), "is not GeoJSON: 'coordinates' is missing");
    EXPECT_EQ(FindCause(ParseGeoJson, R"({"type": "Polygon", "coordinates": [[[0, 0], [1, 1], [0, 0]]]})"),
              "holds a polygon of fewer than three corners");
    EXPECT_EQ(FindCause(ParseGeoJson, "POLYGON").find("is not JSON: "), 0U);
}

TEST(ParseShapes, Csv_SeparatorsAndHeader)
{
    for (const char* pText : {"0,0\n4,0\n0,4.5\n0,0\n", "0 0\r\n4\t0\r\n\r\n0   4.5\r\n0 0",
                              "\xEF\xBB\xBFid;Y;\"x\"\n7;0;0\n7;0;4\n7;4.5;0\n7;0;0\n"})
    {
        SCOPED_TRACE(pText);
        const CShapes shapes = ParseCsvRing(pText);
        ASSERT_EQ(shapes.vecPolygons.size(), 1U);
        EXPECT_EQ(PairsOf(shapes.vecPolygons[0].outer), c_triangle);
    }
}

TEST(ParseShapes, Csv_NamesTheLine)
{
    EXPECT_EQ(FindCause(ParseCsvRing, "0,0\n1,x\n"), "line 2 has no two numbers for x and y");
    EXPECT_EQ(FindCause(ParseCsvRing, "0,0\n1,1\n"), "holds a polygon of fewer than three corners");
}

TEST(ParseShapes, Rings_LengthAreaAndRegions)
{
    const TRing square = {{0.0, 0.0}, {0.0, 2.0}, {2.0, 2.0}, {2.0, 0.0}};
    EXPECT_FALSE(IsClosed(square));
    EXPECT_TRUE(IsClosed(MakeClosed(square)));
    EXPECT_EQ(MakeClosed(MakeClosed(square)).size(), 5U);
    EXPECT_EQ(CalcLength(square), 8.0);
    EXPECT_EQ(CalcSignedArea(square), -4.0); // clockwise

    CShapes shapes;
    shapes.vecLines = {square};
    EXPECT_THROW(static_cast<void>(shapes.GetRegions("f")), CFailure);
    shapes.vecLines.push_back(MakeClosed(square));
    EXPECT_EQ(shapes.GetRegions("f").size(), 1U);
}

} // namespace zorcld
