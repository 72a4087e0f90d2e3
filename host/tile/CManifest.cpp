#include <host/tile/CManifest.h>

#include <host/output/CFailure.h>
#include <host/output/COutFile.h>
#include <host/tile/ManifestFields.h>

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

std::string ReadText(const std::string& sPath)
{
    std::ifstream file(sPath, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf()))
        throw CFailure(sPath, std::string("cannot be read: ") + std::strerror(errno));
    return text.str();
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
    return {
        {"size", options.dSize}, {"buffer", options.dBuffer}, {"dedupe", options.bDedupe ? "exact" : "none"}};
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

bool CManifest::IsManifest(const std::string& sPath)
{
    const std::string sFile = FindManifestPath(sPath);
    std::error_code error;
    if (!fs::is_regular_file(sFile, error) || fs::path(sFile).extension() != ".json")
        return false;
    // The name says it, so that what is wrong in the file is told; else its text, whatever the order of keys.
    return fs::path(sFile).filename() == c_pFile || ReadText(sFile).find(c_pFormat) != std::string::npos;
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
        return ManifestFromJson(CJsonField(json));
    }
    catch (const CFieldError& error)
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
