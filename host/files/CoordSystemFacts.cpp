#include <host/files/CoordSystemFacts.h>

#include <formats/CCoordSystem.h>
#include <formats/MakePrintable.h>
#include <host/output/PrintLine.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

TJson TextOrNull(const std::string& sText)
{
    return sText.empty() ? TJson() : TJson(sText);
}

TJson CollectUnit(const CCoordUnit& unit)
{
    if (!unit.IsStated())
        return {};
    TJson json = {{"name", unit.sName}};
    json[unit.bAngle ? "radians" : "metres"] = unit.dSize > 0.0 ? TJson(unit.dSize) : TJson();
    return json;
}

std::string FormatUnit(const CCoordUnit& unit)
{
    if (!unit.IsStated())
        return "not stated";
    const std::string sName = MakePrintableName(unit.sName);
    return unit.bAngle || unit.dSize == 1.0 || !(unit.dSize > 0.0)
               ? sName
               : fmt::format("{} ({:.9g} m)", sName, unit.dSize);
}

} // namespace

TJson CollectCoordSystem(const CCoordSystem& coords)
{
    if (!coords.IsStated())
        return {};
    TJson json;
    json["source"] = coords.eSource == enumCoordSource::Wkt ? "wkt" : "geokeys";
    json["name"] = TextOrNull(coords.sName);
    json["code"] = TextOrNull(coords.sCode);
    json["unit"] = CollectUnit(coords.plan);
    json["height_unit"] = CollectUnit(coords.height);
    json["wkt"] = TextOrNull(coords.sWkt);
    return json;
}

void PrintCoordSystem(const CCoordSystem& coords)
{
    if (!coords.IsStated())
        return;
    std::string sText = MakePrintableName(coords.sName);
    if (!coords.sCode.empty())
        sText += (sText.empty() ? "" : ", ") + MakePrintableName(coords.sCode);
    if (sText.empty())
        sText = "without a name";
    PrintLine("Coordinate system",
              sText + (coords.eSource == enumCoordSource::Wkt ? " (WKT)" : " (GeoKeys)"));
    PrintLine("Unit", FormatUnit(coords.plan));
    if (coords.height.IsStated())
        PrintLine("Unit of heights", FormatUnit(coords.height));
}

} // namespace zorcld
