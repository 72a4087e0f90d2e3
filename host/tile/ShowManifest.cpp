#include <host/tile/ShowManifest.h>

#include <host/output/FormatCoord.h>
#include <host/output/FormatCount.h>
#include <host/output/PrintLine.h>
#include <host/tile/CManifest.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

/// Sums over the tiles.
struct CSums
{
    explicit CSums(const CManifest& manifest)
    {
        for (const CTileEntry& tile : manifest.vecTiles)
        {
            nNumBuffer += tile.nNumBuffer;
            nNumBytes += tile.nNumBytes;
            nMaxPnts = std::max(nMaxPnts, tile.nNumPnts + tile.nNumBuffer);
        }
    }

    std::int64_t nNumBuffer = 0;
    std::int64_t nNumBytes = 0;
    std::int64_t nMaxPnts = 0; // of one file
};

void PrintJson(const std::string& sPath, const CManifest& manifest, const CSums& sums)
{
    const zor::geom::RECT_3D& box = manifest.box;
    const TJson info = {
        {"file", sPath},
        {"type", "tiles"},
        {"points", manifest.nNumPnts},
        {"duplicates_removed", manifest.nNumDuplicates},
        {"color", manifest.bColor},
        {"bounds", {{"min", {box.xmin, box.ymin, box.zmin}}, {"max", {box.xmax, box.ymax, box.zmax}}}},
        {"tiles", manifest.vecTiles.size()},
        {"size", manifest.options.dSize},
        {"buffer", manifest.options.dBuffer},
        {"buffer_points", sums.nNumBuffer},
        {"largest_tile", sums.nMaxPnts},
        {"bytes", sums.nNumBytes},
        {"sources", manifest.vecFiles.size()}};
    fmt::print("{}\n", info.dump(2, ' ', false, TJson::error_handler_t::replace));
}

} // namespace

void ShowManifest(const std::string& sManifest, bool bJson)
{
    const CManifest manifest = CManifest::Read(sManifest);
    const CSums sums(manifest);
    const std::string sPath = FindManifestPath(sManifest);
    if (bJson)
    {
        PrintJson(sPath, manifest, sums);
        return;
    }
    PrintLine("File", sPath);
    PrintLine("Type", fmt::format("tiles of {}",
                                  FormatCount(static_cast<std::int64_t>(manifest.vecFiles.size()), "file")));
    PrintLine("Points", GroupDigits(manifest.nNumPnts));
    PrintLine("Duplicates removed", manifest.options.bDedupe
                                        ? GroupDigits(manifest.nNumDuplicates) + " (equal in x, y and z)"
                                        : "none, all points are kept");
    PrintLine("Colour", manifest.bColor ? "yes" : "no");
    const zor::geom::RECT_3D& box = manifest.box;
    const auto printRange = [](const char* pLabel, char c, double dMin, double dMax)
    {
        PrintLine(pLabel, fmt::format("{} {} to {}   ({})", c, FormatCoord(dMin, 14), FormatCoord(dMax, 14),
                                      FormatCoord(dMax - dMin)));
    };
    printRange("Bounds", 'x', box.xmin, box.xmax);
    printRange("", 'y', box.ymin, box.ymax);
    printRange("", 'z', box.zmin, box.zmax);
    PrintLine("Tiles", fmt::format("{}, edge {:g}, buffer {:g}",
                                   GroupDigits(static_cast<std::int64_t>(manifest.vecTiles.size())),
                                   manifest.options.dSize, manifest.options.dBuffer));
    PrintLine("Largest tile", FormatCount(sums.nMaxPnts, "point") + " with its buffer");
    PrintLine("In buffers", FormatCount(sums.nNumBuffer, "point"));
}

} // namespace zorcld
