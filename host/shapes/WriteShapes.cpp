#include <host/shapes/WriteShapes.h>

#include <formats/Compact.h>
#include <host/output/COutFile.h>
#include <host/output/GetExtension.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zorcld
{

namespace
{

/// Cloud coordinates come in steps of 1/10000: more digits would only show the rounding of the origin.
double Round(double d)
{
    return std::round(d * c_dCompactScale) / c_dCompactScale + 0.0; // no negative zero
}

/// Areas in square degrees are small: six digits.
double RoundSmall(double d)
{
    if (std::fabs(d) >= 1.0 || d == 0.0)
        return Round(d);
    const double dStep = std::pow(10.0, 5.0 - std::floor(std::log10(std::fabs(d))));
    return std::round(d * dStep) / dStep;
}

} // namespace

void WriteGeoJson(COutFile& out, const TRing& ring, const std::vector<TProperty>& vecProperties)
{
    TRing written = MakeClosed(ring);
    if (CalcSignedArea(written) < 0.0)
        std::reverse(written.begin(), written.end());
    nlohmann::ordered_json feature = {{"type", "Feature"}};
    feature["properties"] = nlohmann::ordered_json::object();
    for (const auto& [sName, dValue] : vecProperties)
        if (dValue == std::floor(dValue) && std::fabs(dValue) < 1e15)
            feature["properties"][sName] = static_cast<std::int64_t>(dValue);
        else
            feature["properties"][sName] = RoundSmall(dValue);
    auto positions = nlohmann::ordered_json::array();
    for (const zor::geom::PNT_2D& pnt : written)
        positions.push_back({Round(pnt.x), Round(pnt.y)});
    feature["geometry"]["type"] = "Polygon";
    feature["geometry"]["coordinates"] = nlohmann::ordered_json::array({positions});
    nlohmann::ordered_json collection = {{"type", "FeatureCollection"}};
    collection["features"] = nlohmann::ordered_json::array({feature});
    out.Write(collection.dump() + "\n");
}

void WriteWkt(COutFile& out, const TRing& ring)
{
    std::string sText = "POLYGON ((";
    const char* pBetween = "";
    for (const zor::geom::PNT_2D& pnt : MakeClosed(ring))
    {
        sText += fmt::format("{}{:.4f} {:.4f}", pBetween, pnt.x, pnt.y);
        pBetween = ", ";
    }
    out.Write(sText + "))\n");
}

bool IsShapeExtension(const std::string& sExtension)
{
    return sExtension == ".geojson" || sExtension == ".json" || sExtension == ".wkt";
}

void WriteShape(COutFile& out, const TRing& ring, const std::vector<TProperty>& vecProperties)
{
    if (GetExtension(out.GetPath()) == ".wkt")
        WriteWkt(out, ring);
    else
        WriteGeoJson(out, ring, vecProperties);
}

} // namespace zorcld
