#include <host/tile/PrintTileCommands.h>

#include <host/output/CFailure.h>
#include <host/output/PrintMessage.h>
#include <host/tile/CManifest.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace zorcld
{

namespace
{

/// As one word of a shell's line.
std::string Quote(const std::string& sText)
{
    constexpr const char* c_pPlain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./,-+=:@%";
    if (!sText.empty() && sText.find_first_not_of(c_pPlain) == std::string::npos)
        return sText;
    std::string sQuoted = "'";
    for (const char c : sText)
        sQuoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return sQuoted + "'";
}

std::string FormatScale(const CTileUnits& units)
{
    if (!units.IsOther())
        return {};
    return units.dPlan == units.dHeight ? fmt::format(" --unit-scale={}", units.dPlan)
                                        : fmt::format(" --unit-scale={},{}", units.dPlan, units.dHeight);
}

} // namespace

void PrintGroundCommands(const std::string& sManifest, const std::string& sFolder)
{
    const CManifest manifest = CManifest::Read(sManifest);
    if (manifest.units.bAngles)
        throw CFailure(sManifest,
                       "x and y of its files are angles, the ground filter goes by metres: the files "
                       "must be projected first");
    std::error_code error;
    std::filesystem::create_directories(sFolder, error);
    if (error)
        throw CFailure(sFolder, "cannot be created: " + error.message());
    const std::string sScale = FormatScale(manifest.units);
    for (const CTileEntry& tile : manifest.vecTiles)
    {
        const std::string sOut = (std::filesystem::path(sFolder) / tile.sFile).string();
        fmt::print("zorcld ground {} --core={},{},{},{}{} -o {}\n", Quote(FindTilePath(sManifest, tile)),
                   tile.core.xmin, tile.core.ymin, tile.core.xmax, tile.core.ymax, sScale, Quote(sOut));
    }
}

} // namespace zorcld
