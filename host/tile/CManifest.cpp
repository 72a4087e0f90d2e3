#include <host/tile/CManifest.h>

#include <host/output/CFailure.h>
#include <host/output/COutFile.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zorcld
{

namespace fs = std::filesystem;
using TJson = nlohmann::ordered_json;

namespace
{

constexpr const char* c_pFormat = "zor4data-tiles";
constexpr int c_nFormatVersion = 1;

TJson JsonFromBox(const zor::geom::RECT_3D& box)
{
    return {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}};
}

zor::geom::RECT_3D BoxFromJson(const TJson& json)
{
    const auto min = json.at("min").get<std::array<double, 3>>();
    const auto max = json.at("max").get<std::array<double, 3>>();
    return {min[0], min[1], min[2], max[0], max[1], max[2]};
}

std::string ReadText(const std::string& sPath)
{
    std::ifstream file(sPath, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf()))
        throw CFailure(sPath, std::string("cannot be read: ") + std::strerror(errno));
    return text.str();
}

CManifest ManifestFromJson(const TJson& json)
{
    CManifest manifest;
    manifest.options = OptionsFromJson(json.at("options"));
    manifest.dMargin = json.at("margin").get<double>();
    manifest.origin = json.at("origin").get<TOrigin>();
    manifest.bColor = json.at("color").get<bool>();
    manifest.units = UnitsFromJson(json);
    manifest.nNumPnts = json.at("points").get<std::int64_t>();
    manifest.nNumDuplicates = json.at("duplicates_removed").get<std::int64_t>();
    manifest.box = BoxFromJson(json.at("bounds"));
    for (const TJson& file : json.at("sources"))
        manifest.vecFiles.push_back(FileFromJson(file));
    for (const TJson& tile : json.at("tiles"))
        manifest.vecTiles.push_back(TileFromJson(tile));
    return manifest;
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

CTileEntry TileFromJson(const TJson& json)
{
    CTileEntry tile;
    tile.sFile = fs::path(json.at("file").get<std::string>()).filename().string(); // beside the manifest
    tile.cell = {json.at("column").get<std::int32_t>(), json.at("row").get<std::int32_t>()};
    const auto core = json.at("core").get<std::array<double, 4>>();
    tile.core = {core[0], core[1], core[2], core[3]};
    tile.nNumPnts = json.at("points").get<std::int64_t>();
    tile.nNumBuffer = json.at("buffer_points").get<std::int64_t>();
    tile.box = BoxFromJson(json.at("bounds"));
    tile.nNumBytes = json.at("bytes").get<std::int64_t>();
    tile.sHash = json.at("xxh128").get<std::string>();
    return tile;
}

TJson JsonFromFile(const CTiledFile& file)
{
    return {
        {"file", file.sPath}, {"bytes", file.nNumBytes}, {"xxh128", file.sHash}, {"points", file.nNumPnts}};
}

CTiledFile FileFromJson(const TJson& json)
{
    return {json.at("file").get<std::string>(), json.at("bytes").get<std::int64_t>(),
            json.at("xxh128").get<std::string>(), json.at("points").get<std::int64_t>()};
}

TJson JsonFromOptions(const CTileOptions& options)
{
    return {
        {"size", options.dSize}, {"buffer", options.dBuffer}, {"dedupe", options.bDedupe ? "exact" : "none"}};
}

CTileOptions OptionsFromJson(const TJson& json)
{
    return {json.at("size").get<double>(), json.at("buffer").get<double>(),
            json.at("dedupe").get<std::string>() == "exact"};
}

TJson JsonFromUnits(const CTileUnits& units)
{
    const auto known = [](double d) { return d > 0.0 ? TJson(d) : TJson(); };
    return {{"metres_per_unit", known(units.dPlan)},
            {"metres_per_height_unit", known(units.dHeight)},
            {"angles", units.bAngles}};
}

CTileUnits UnitsFromJson(const TJson& json)
{
    const auto known = [&](const char* pName)
    {
        const TJson& metres = json.at(pName);
        return metres.is_null() ? 0.0 : metres.get<double>();
    };
    return {known("metres_per_unit"), known("metres_per_height_unit"), json.at("angles").get<bool>()};
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

bool CManifest::IsManifest(const std::string& sPath)
{
    const std::string sFile = FindManifestPath(sPath);
    std::error_code error;
    if (!fs::is_regular_file(sFile, error) || fs::path(sFile).extension() != ".json")
        return false;
    std::array<char, 64> acStart{};
    std::ifstream(sFile, std::ios::binary).read(acStart.data(), acStart.size());
    return std::string(acStart.data(), acStart.size()).find(c_pFormat) != std::string::npos;
}

CManifest CManifest::Read(const std::string& sPath)
{
    const std::string sFile = FindManifestPath(sPath);
    const TJson json = TJson::parse(ReadText(sFile), nullptr, false);
    if (!json.is_object() || json.value("format", TJson()) != c_pFormat)
        throw CFailure(sFile, "is no manifest of tiles");
    if (json.value("format_version", TJson()) != c_nFormatVersion)
        throw CFailure(sFile, "is a manifest of another version of the format");
    try
    {
        return ManifestFromJson(json);
    }
    catch (const nlohmann::json::exception& error)
    {
        throw CFailure(sFile, std::string("is damaged: ") + error.what());
    }
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
    COutFile out(FindManifestPath(sPath));
    out.Write(json.dump(1, ' ', false, TJson::error_handler_t::replace) + "\n");
    out.Commit();
}

} // namespace zorcld
