#include <host/shapes/ParseGeoJson.h>

#include <nlohmann/json.hpp>

#include <stdexcept>

namespace zorcld
{

using nlohmann::json;

namespace
{

constexpr int c_nMaxDepth = 16; // of collections within collections

const json& Get(const json& object, const char* pKey)
{
    const auto it = object.is_object() ? object.find(pKey) : object.end();
    if (!object.is_object() || it == object.end())
        throw std::runtime_error(std::string("is not GeoJSON: '") + pKey + "' is missing");
    return *it;
}

zor::geom::PNT_2D ParsePosition(const json& position)
{
    if (!position.is_array() || position.size() < 2 || !position[0].is_number() || !position[1].is_number())
        throw std::runtime_error("is not GeoJSON: a position is not an array of two numbers or more");
    return {position[0].get<double>(), position[1].get<double>()};
}

const json& ExpectArray(const json& value)
{
    if (!value.is_array())
        throw std::runtime_error("is not GeoJSON: coordinates are not nested as the type asks for");
    return value;
}

TRing ParseRing(const json& positions)
{
    TRing ring;
    for (const json& position : ExpectArray(positions))
        ring.push_back(ParsePosition(position));
    return ring;
}

void AddPolygon(const json& rings, CShapes& shapes)
{
    zor::geom::TMultiPartPolygon polygon;
    bool bOuter = true;
    for (const json& ring : ExpectArray(rings))
    {
        if (bOuter)
            ExpectCorners(polygon.outer = ParseRing(ring));
        else
            polygon.holes.push_back(ParseRing(ring));
        bOuter = false;
    }
    if (!bOuter)
        shapes.vecPolygons.push_back(polygon);
}

void AddShape(const json& object, int nDepth, CShapes& shapes);

void AddMembers(const json& members, int nDepth, CShapes& shapes)
{
    if (nDepth == c_nMaxDepth)
        throw std::runtime_error("collections are nested too deeply");
    for (const json& member : ExpectArray(members))
        AddShape(member, nDepth + 1, shapes);
}

void AddShape(const json& object, int nDepth, CShapes& shapes)
{
    const json& type = Get(object, "type");
    const std::string sType = type.is_string() ? type.get<std::string>() : std::string();
    if (sType == "FeatureCollection")
        AddMembers(Get(object, "features"), nDepth, shapes);
    else if (sType == "GeometryCollection")
        AddMembers(Get(object, "geometries"), nDepth, shapes);
    else if (sType == "Feature")
    {
        const json& geometry = Get(object, "geometry");
        if (!geometry.is_null() && nDepth < c_nMaxDepth)
            AddShape(geometry, nDepth + 1, shapes);
    }
    else if (sType == "Polygon")
        AddPolygon(Get(object, "coordinates"), shapes);
    else if (sType == "MultiPolygon")
        for (const json& rings : ExpectArray(Get(object, "coordinates")))
            AddPolygon(rings, shapes);
    else if (sType == "LineString")
        shapes.vecLines.push_back(ParseRing(Get(object, "coordinates")));
    else if (sType == "MultiLineString")
        for (const json& line : ExpectArray(Get(object, "coordinates")))
            shapes.vecLines.push_back(ParseRing(line));
    else if (sType != "Point" && sType != "MultiPoint") // points bound nothing
        throw std::runtime_error("is not GeoJSON: the type of an object is not known");
}

/// What a JSON error says behind the name of its kind in brackets.
std::string DropTag(const std::string& sWhat)
{
    const std::size_t nEnd = sWhat.find("] ");
    return sWhat.substr(0, 1) == "[" && nEnd != std::string::npos ? sWhat.substr(nEnd + 2) : sWhat;
}

} // namespace

CShapes ParseGeoJson(const std::string& sText)
{
    CShapes shapes;
    try
    {
        AddShape(json::parse(sText), 0, shapes);
    }
    catch (const json::exception& error)
    {
        throw std::runtime_error("is not JSON: " + DropTag(error.what()));
    }
    return shapes;
}

} // namespace zorcld
