#include <host/tile/CManifest.h>

#include <host/output/COutFile.h>
#include <host/tile/CalcSeal.h>

#include <filesystem>

namespace zorcld
{

namespace fs = std::filesystem;
using TJson = nlohmann::ordered_json;

namespace
{

TJson JsonFromBox(const zor::geom::RECT_3D& box)
{
    return {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}};
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
    return {{"metres_per_unit", known(units.dPlan)},
            {"metres_per_height_unit", known(units.dHeight)},
            {"angles", units.bAngles}};
}

std::string FindManifestPath(const std::string& sPath)
{
    std::error_code error;
    return fs::is_directory(sPath, error) ? (fs::path(sPath) / CManifest::c_pFile).string() : sPath;
}

std::string FindTilePath(const std::string& sPath, const CTileEntry& tile)
{
    return (fs::path(FindManifestPath(sPath)).parent_path() / tile.sFile).string();
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
    json["seal"] = CalcSeal(TJson::parse(json.dump(-1, ' ', false, TJson::error_handler_t::replace)));
    COutFile out(FindManifestPath(sPath));
    out.Write(json.dump(1, ' ', false, TJson::error_handler_t::replace) + "\n");
    out.Commit();
}

} // namespace zorcld
