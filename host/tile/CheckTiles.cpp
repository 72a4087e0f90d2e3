#include <host/tile/CheckTiles.h>

#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/FormatCount.h>
#include <host/tile/CManifest.h>
#include <host/tile/IsIntact.h>

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace zorcld
{

namespace
{

std::string FindDamage(const std::string& sPath, const CTileEntry& tile)
{
    std::error_code error;
    if (!std::filesystem::exists(sPath, error))
        return "is missing";
    try
    {
        return IsIntact(sPath, tile) ? "" : "is damaged, or another file";
    }
    catch (const CFailure& failure)
    {
        return failure.GetCause();
    }
}

} // namespace

std::size_t CheckTiles(const std::string& sManifest, const CConsole& console)
{
    const CManifest manifest = CManifest::Read(sManifest);
    const std::size_t nNumTiles = manifest.vecTiles.size();
    std::size_t nNumDamaged = 0;
    CProgressBar progress(console, "comparing tiles");
    progress.Start();
    for (std::size_t i = 0; i < nNumTiles; ++i)
    {
        progress.SetPos(static_cast<int>(i * 100 / nNumTiles));
        const std::string sPath = FindTilePath(sManifest, manifest.vecTiles[i]);
        const std::string sDamage = FindDamage(sPath, manifest.vecTiles[i]);
        if (sDamage.empty())
            continue;
        ++nNumDamaged;
        console.Note(fmt::format("{}: {}", sPath, sDamage));
    }
    progress.Stop();
    if (nNumDamaged > 0)
        throw CFailure(
            FindManifestPath(sManifest),
            fmt::format("{} of its {} {} not as it says; the command that has cut them makes them again",
                        nNumDamaged, FormatCount(static_cast<std::int64_t>(nNumTiles), "tile"),
                        nNumDamaged == 1 ? "is" : "are"));
    return nNumTiles;
}

} // namespace zorcld
