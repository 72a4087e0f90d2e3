#include <formats/Compact.h>
#include <host/output/COutFile.h>
#include <host/shapes/Shapes.h>

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

/// The ring with its first corner again at the end.
TRing MakeClosed(TRing ring)
{
    if (!ring.empty() && (ring.front().x != ring.back().x || ring.front().y != ring.back().y))
        ring.push_back(ring.front());
    return ring;
}

} // namespace

double CalcLength(const TRing& ring)
{
    double dLength = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i)
    {
        const zor::geom::PNT_2D& next = ring[(i + 1) % ring.size()];
        dLength += std::hypot(next.x - ring[i].x, next.y - ring[i].y);
    }
    return dLength;
}

double CalcSignedArea(const TRing& ring)
{
    double dTwice = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) // against the first corner: small numbers
        dTwice += (ring[i].x - ring[0].x) * (ring[i + 1].y - ring[0].y) -
                  (ring[i + 1].x - ring[0].x) * (ring[i].y - ring[0].y);
    return dTwice / 2.0;
}

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
            feature["properties"][sName] = Round(dValue);
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

} // namespace zorcld
