// What a manifest is written as; ManifestFields.cpp reads it.
#include <host/tile/CManifest.h>

#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/tile/CalcSeal.h>
#include <host/tile/ManifestFields.h>

namespace zorcld
{

using TJson = nlohmann::ordered_json;

namespace
{

TJson JsonFromBox(const zor::geom::RECT_3D& box)
{
    return {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}};
}

/// What readers would refuse is not written. The seal is not among it: it is calculated of what they get.
void RequireReadable(const TJson& json, const std::string& sPath)
{
    try
    {
        static_cast<void>(ManifestFromJson(CJsonField(json)));
    }
    catch (const CFieldError& error)
    {
        throw CFailure(sPath, std::string("is not written, for nobody could read it: ") + error.what());
    }
}

} // namespace

TJson JsonFromTile(const CTileEntry& tile)
{
    return {{"file", tile.sFile},
            {"column", tile.cell.nColumn},
            {"row", tile.cell.nRow},
            {"core", {tile.core.xmin, tile.core.ymin, tile.core.xmax, tile.core.ymax}},
            {"points", tile.nNumPnts},
            {"buffer_points", tile.nNumBuffer},
            {"bounds", JsonFromBox(tile.box)},
            {"bytes", tile.nNumBytes},
            {"xxh128", tile.sHash}};
}

TJson JsonFromFile(const CTiledFile& file)
{
    return {
        {"file", file.sPath}, {"bytes", file.nNumBytes}, {"xxh128", file.sHash}, {"points", file.nNumPnts}};
}

TJson JsonFromOptions(const CTileOptions& options)
{
    TJson json = {
        {"size", options.dSize}, {"buffer", options.dBuffer}, {"dedupe", options.bDedupe ? "exact" : "none"}};
    if (options.units)
        json["unit_scale"] = {options.units->dPlan, options.units->dHeight};
    return json;
}

TJson JsonFromUnits(const CTileUnits& units)
{
    const auto known = [](double d) { return d > 0.0 ? TJson(d) : TJson(); };
    TJson json = {{"metres_per_unit", known(units.dPlan)},
                  {"metres_per_height_unit", known(units.dHeight)},
                  {"angles", units.bAngles}};
    if (units.dRadians > 0.0)
        json["radians_per_unit"] = units.dRadians;
    return json;
}

void CManifest::Write(const std::string& sPath) const
{
    TJson json = {{"format", c_pFormat},
                  {"format_version", c_nFormatVersion},
                  {"program", "zorcld " ZORCLD_VERSION},
                  {"options", JsonFromOptions(options)},
                  {"margin", dMargin},
                  {"origin", origin},
                  {"color", bColor},
                  {"points", nNumPnts},
                  {"duplicates_removed", nNumDuplicates},
                  {"bounds", JsonFromBox(box)}};
    json.update(JsonFromUnits(units));
    json["sources"] = TJson::array();
    for (const CTiledFile& file : vecFiles)
        json["sources"].push_back(JsonFromFile(file));
    json["tiles"] = TJson::array();
    for (const CTileEntry& tile : vecTiles)
        json["tiles"].push_back(JsonFromTile(tile));
    // Of what a reader gets: names of files may hold bytes that are no text.
    const TJson read = TJson::parse(json.dump(-1, ' ', false, TJson::error_handler_t::replace));
    RequireReadable(read, FindManifestPath(sPath));
    json["seal"] = CalcSeal(read);
    COutFile out(FindManifestPath(sPath));
    out.Write(json.dump(1, ' ', false, TJson::error_handler_t::replace) + "\n");
    out.Commit();
}

} // namespace zorcld
