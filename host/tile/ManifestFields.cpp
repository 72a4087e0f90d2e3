#include <host/tile/ManifestFields.h>

#include <formats/CloudLimits.h>
#include <host/output/CFailure.h>
#include <host/tile/CTilePlan.h>
#include <host/tile/CalcSeal.h>
#include <host/tile/ReadText.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <optional>
#include <set>

namespace zorcld
{

using zor::geom::RECT_2D;
using zor::geom::RECT_3D;

namespace
{

constexpr std::int64_t c_nMost = std::int64_t{1} << 53U; // whole numbers that every reader of JSON keeps
constexpr double c_dMost = 1.0e12;                       // no coordinate, and no size, comes near it

RECT_3D BoxFromJson(const CJsonField& json)
{
    std::array<std::array<double, 3>, 2> aad{};
    for (std::size_t i = 0; i < 2; ++i)
    {
        const CJsonField corner = json.At(i == 0 ? "min" : "max");
        corner.RequireSize(3);
        for (std::size_t k = 0; k < 3; ++k)
            aad[i][k] = corner.Nth(k).GetNumber(-c_dMost, c_dMost);
    }
    for (std::size_t k = 0; k < 3; ++k)
        if (aad[0][k] > aad[1][k])
            json.Fail("has a minimum above its maximum");
    return {aad[0][0], aad[0][1], aad[0][2], aad[1][0], aad[1][1], aad[1][2]};
}

bool IsSame(const RECT_2D& a, const RECT_2D& b)
{
    return a.xmin == b.xmin && a.ymin == b.ymin && a.xmax == b.xmax && a.ymax == b.ymax;
}

bool IsInCore(const RECT_3D& box, const RECT_2D& core)
{
    return box.xmin >= core.xmin && box.ymin >= core.ymin && box.xmax < core.xmax && box.ymax < core.ymax;
}

CTileGrid MakeGrid(const CManifest& manifest, const CJsonField& json)
{
    try
    {
        return {manifest.options.dSize, manifest.options.dBuffer, manifest.origin, manifest.units.dPlan};
    }
    catch (const CUsageError&)
    {
        json.At("options").At("size").Fail("is too small for the origin");
    }
}

/// What a tile's fields say together with those of all tiles.
void CheckTile(const CTileEntry& tile, const CTileGrid& grid, const CJsonField& json)
{
    if (tile.sFile != NameTile(tile.cell))
        json.At("file").Fail("is not the name of that column and row");
    if (!IsSame(tile.core, grid.GetCore(tile.cell)))
        json.At("core").Fail("is not that of column, row, size and origin");
    if (!IsInCore(tile.box, tile.core))
        json.At("bounds").Fail("lie beyond the core");
}

void CheckSums(const CManifest& manifest, const CJsonField& json)
{
    std::int64_t nNumPnts = 0;
    RECT_3D box = manifest.vecTiles.front().box;
    for (const CTileEntry& tile : manifest.vecTiles)
    {
        nNumPnts += tile.nNumPnts;
        box = {std::min(box.xmin, tile.box.xmin), std::min(box.ymin, tile.box.ymin),
               std::min(box.zmin, tile.box.zmin), std::max(box.xmax, tile.box.xmax),
               std::max(box.ymax, tile.box.ymax), std::max(box.zmax, tile.box.zmax)};
    }
    if (nNumPnts != manifest.nNumPnts)
        json.At("points").Fail(fmt::format("is not the sum of the tiles' points, {}", nNumPnts));
    const RECT_3D& all = manifest.box;
    if (box.xmin != all.xmin || box.ymin != all.ymin || box.zmin != all.zmin || box.xmax != all.xmax ||
        box.ymax != all.ymax || box.zmax != all.zmax)
        json.At("bounds").Fail("are not those of all tiles");
    std::int64_t nNumRead = 0;
    for (const CTiledFile& file : manifest.vecFiles)
        nNumRead += std::min(file.nNumPnts, c_nMost);
    if (nNumRead != manifest.nNumPnts + manifest.nNumDuplicates ||
        (manifest.nNumDuplicates != 0 && !manifest.options.bDedupe))
        json.At("duplicates_removed").Fail("does not fit the points of sources and tiles");
}

} // namespace

CCell CellFromJson(const CJsonField& column, const CJsonField& row)
{
    constexpr std::int64_t c_nMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t c_nMax = std::numeric_limits<std::int32_t>::max();
    return {static_cast<std::int32_t>(column.GetWhole(c_nMin, c_nMax)),
            static_cast<std::int32_t>(row.GetWhole(c_nMin, c_nMax))};
}

TOrigin OriginFromJson(const CJsonField& json)
{
    json.RequireSize(3);
    TOrigin origin{};
    for (std::size_t k = 0; k < 3; ++k)
    {
        const CJsonField axis = json.Nth(k);
        const double d = axis.GetNumber(-c_dMost, c_dMost);
        origin[k] = static_cast<float>(d);
        if (static_cast<double>(origin[k]) != d)
            axis.Fail("is no float");
    }
    return origin;
}

CTileEntry TileFromJson(const CJsonField& json)
{
    CTileEntry tile;
    tile.sFile = json.At("file").GetText();
    tile.cell = CellFromJson(json.At("column"), json.At("row"));
    const CJsonField core = json.At("core");
    core.RequireSize(4);
    std::array<double, 4> ad{};
    for (std::size_t k = 0; k < 4; ++k)
        ad[k] = core.Nth(k).GetNumber(-c_dMost, c_dMost);
    tile.core = {ad[0], ad[1], ad[2], ad[3]};
    tile.nNumPnts = json.At("points").GetWhole(1, c_nMaxCloudPnts);
    tile.nNumBuffer = json.At("buffer_points").GetWhole(0, c_nMaxCloudPnts - tile.nNumPnts);
    tile.box = BoxFromJson(json.At("bounds"));
    tile.nNumBytes = json.At("bytes").GetWhole(0, c_nMost);
    tile.sHash = json.At("xxh128").GetHash();
    return tile;
}

CTiledFile FileFromJson(const CJsonField& json)
{
    return {json.At("file").GetText(), json.At("bytes").GetWhole(0, c_nMost), json.At("xxh128").GetHash(),
            json.At("points").GetWhole(0, c_nMost)};
}

CTileOptions OptionsFromJson(const CJsonField& json)
{
    const CJsonField dedupe = json.At("dedupe");
    const std::string sDedupe = dedupe.GetText();
    if (sDedupe != "none" && sDedupe != "exact")
        dedupe.Fail("is neither \"none\" nor \"exact\"");
    CTileOptions options = {json.At("size").GetNumber(0.01, 1.0e6), json.At("buffer").GetNumber(0.0, 1.0e5),
                            sDedupe == "exact", std::nullopt};
    if (json.Has("unit_scale"))
    {
        const CJsonField scale = json.At("unit_scale");
        scale.RequireSize(2);
        options.units =
            CTileUnits{scale.Nth(0).GetNumber(1e-6, 1e6), scale.Nth(1).GetNumber(1e-6, 1e6), false};
    }
    return options;
}

CTileUnits UnitsFromJson(const CJsonField& json)
{
    const auto known = [&](const char* pName)
    {
        const CJsonField metres = json.At(pName);
        return metres.IsNull() ? 0.0 : metres.GetNumber(std::numeric_limits<double>::min(), c_dMost);
    };
    return {known("metres_per_unit"), known("metres_per_height_unit"), json.At("angles").GetBool()};
}

CManifest ManifestFromJson(const CJsonField& json)
{
    CManifest manifest;
    static_cast<void>(json.At("program").GetText());
    manifest.options = OptionsFromJson(json.At("options"));
    manifest.dMargin = json.At("margin").GetNumber(0.0, c_dMost);
    manifest.origin = OriginFromJson(json.At("origin"));
    manifest.bColor = json.At("color").GetBool();
    manifest.units = UnitsFromJson(json);
    manifest.nNumPnts = json.At("points").GetWhole(1, c_nMost);
    manifest.nNumDuplicates = json.At("duplicates_removed").GetWhole(0, c_nMost);
    manifest.box = BoxFromJson(json.At("bounds"));
    json.At("sources").ForEach([&](const CJsonField& file)
                               { manifest.vecFiles.push_back(FileFromJson(file)); });
    const CTileGrid grid = MakeGrid(manifest, json);
    std::set<CCell> setCells;
    json.At("tiles").ForEach(
        [&](const CJsonField& field)
        {
            manifest.vecTiles.push_back(TileFromJson(field));
            CheckTile(manifest.vecTiles.back(), grid, field);
            if (!setCells.insert(manifest.vecTiles.back().cell).second)
                field.Fail("is of a column and row that another tile has");
        });
    if (manifest.vecTiles.empty())
        json.At("tiles").Fail("is empty");
    CheckSums(manifest, json);
    if (manifest.dMargin != grid.GetMargin())
        json.At("margin").Fail(fmt::format("is not that of origin, buffer and unit, {:g}", grid.GetMargin()));
    return manifest;
}

bool CManifest::IsManifest(const std::string& sPath)
{
    const std::string sFile = FindManifestPath(sPath);
    std::error_code error;
    if (!std::filesystem::is_regular_file(sFile, error) ||
        std::filesystem::path(sFile).extension() != ".json")
        return false;
    // The name says it, so that what is wrong in the file is told; else its text, whatever the order of keys.
    return std::filesystem::path(sFile).filename() == c_pFile ||
           ReadText(sFile).value_or("").find(c_pFormat) != std::string::npos;
}

CManifest CManifest::Read(const std::string& sPath)
{
    const std::string sFile = FindManifestPath(sPath);
    const std::optional<std::string> text = ReadText(sFile);
    if (!text)
        throw CFailure(sFile, std::string("cannot be read: ") + std::strerror(ENOENT));
    const std::string& sText = *text;
    const CJsonField::TJson json = CJsonField::TJson::parse(sText, nullptr, false);
    const bool bNul = sText.find('\0') != std::string::npos; // the parser takes it for the end
    if (bNul || !json.is_object() || json.value("format", CJsonField::TJson()) != c_pFormat)
        throw CFailure(sFile, "is no manifest of tiles");
    if (json.value("format_version", CJsonField::TJson()) != c_nFormatVersion)
        throw CFailure(sFile, "is a manifest of another version of the format");
    try
    {
        const CJsonField fields(json);
        CManifest manifest = ManifestFromJson(fields);
        const CJsonField seal = fields.At("seal");
        if (seal.GetHash() != CalcSeal(json))
            seal.Fail("is not that of the rest, which was changed by hand");
        return manifest;
    }
    catch (const CFieldError& error)
    {
        throw CFailure(sFile, std::string("is damaged: ") + error.what());
    }
}

} // namespace zorcld
