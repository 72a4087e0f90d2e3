#include <host/tile/PrintTileCommands.h>

#include <host/output/CFailure.h>
#include <host/output/PrintMessage.h>
#include <host/tile/CManifest.h>
#include <host/tile/GroundOfTiles.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace zorcld
{

namespace
{

/// As one word of a shell's line.
std::string Quote(const std::string& sPath)
{
    const std::string sText = sPath.substr(0, 1) == "-" ? "./" + sPath : sPath; // no option's name
    constexpr const char* c_pPlain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./,-+=:@%";
    if (!sText.empty() && sText.find_first_not_of(c_pPlain) == std::string::npos)
        return sText;
    std::string sQuoted = "'";
    for (const char c : sText)
        sQuoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return sQuoted + "'";
}

/// As the ground of a file: a unit that is not known is taken for a metre.
double GetMetres(double dMetresOrNone)
{
    return dMetresOrNone > 0.0 ? dMetresOrNone : 1.0;
}

std::string FormatScale(const CTileUnits& units)
{
    const double dPlan = GetMetres(units.dPlan);
    const double dHeight = GetMetres(units.dHeight);
    if (dPlan == 1.0 && dHeight == 1.0)
        return {};
    return dPlan == dHeight ? fmt::format(" --unit-scale={}", dPlan)
                            : fmt::format(" --unit-scale={},{}", dPlan, dHeight);
}

/// Each command would replace the tile that it reads.
void RefuseFolderOfTiles(const std::string& sManifest, const std::string& sFolder)
{
    const std::filesystem::path tiles = std::filesystem::path(FindManifestPath(sManifest)).parent_path();
    std::error_code error;
    if (std::filesystem::equivalent(tiles.empty() ? "." : tiles, sFolder, error))
        throw CUsageError(fmt::format("--output: '{}' is the folder of the tiles", sFolder));
}

} // namespace

void PrintGroundCommands(const std::string& sManifest, const std::string& sFolder,
                         const std::optional<CTileUnits>& units)
{
    const CManifest manifest = CManifest::Read(sManifest);
    const CTileUnits& used = units ? *units : manifest.units;
    RefuseFolderOfTiles(sManifest, sFolder);
    if (const std::string sCause = FindGroundCause(manifest, used); !sCause.empty())
        throw CFailure(sManifest, sCause);
    std::error_code error;
    std::filesystem::create_directories(sFolder, error);
    if (error)
        throw CFailure(sFolder, "cannot be created: " + error.message());
    const std::string sScale = FormatScale(used);
    for (const CTileEntry& tile : manifest.vecTiles)
    {
        const std::string sOut = (std::filesystem::path(sFolder) / tile.sFile).string();
        fmt::print("zorcld ground {} --xxh128 {} --core={},{},{},{}{} -o {}\n",
                   Quote(FindTilePath(sManifest, tile)), tile.sHash, tile.core.xmin, tile.core.ymin,
                   tile.core.xmax, tile.core.ymax, sScale, Quote(sOut));
    }
}

} // namespace zorcld
