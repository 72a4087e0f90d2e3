#include <host/tile/TileFolder.h>

#include <host/output/CFailure.h>
#include <host/output/RemoveAbandoned.h>
#include <host/tile/CManifest.h>
#include <host/tile/CTileWork.h>
#include <host/tile/NameTile.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

/// @return what follows a whole number at the beginning; nothing where there is none.
std::optional<std::string_view> SkipNumber(std::string_view sText)
{
    const std::size_t nSign = sText.substr(0, 1) == "-" ? 1 : 0;
    const std::size_t nEnd = std::min(sText.find_first_not_of("0123456789", nSign), sText.size());
    if (nEnd == nSign)
        return {};
    return sText.substr(nEnd);
}

/// Is it such a name as NameTile makes?
bool IsTileName(std::string_view sName)
{
    constexpr std::string_view c_sBegin = "tile_";
    if (sName.substr(0, c_sBegin.size()) != c_sBegin)
        return false;
    const std::optional<std::string_view> column = SkipNumber(sName.substr(c_sBegin.size()));
    if (!column || column->substr(0, 1) != "_")
        return false;
    return SkipNumber(column->substr(1)) == ".cld";
}

} // namespace

bool AreTiles(const std::string& sPath)
{
    if (CManifest::IsManifest(sPath))
        return true;
    std::error_code error;
    if (!fs::is_directory(sPath, error))
        return false;
    if (fs::exists(fs::path(sPath) / CTileWork::c_pFolder, error))
        throw CFailure(sPath,
                       fmt::format("is a directory without a {} yet: its tiles are being made, or that was "
                                   "interrupted and the same zorcld tile goes on",
                                   CManifest::c_pFile));
    throw CFailure(sPath, fmt::format("is a directory without a {} of tiles", CManifest::c_pFile));
}

void RemoveCutOff(const std::string& sFolder)
{
    RemoveAbandonedOf(sFolder, [](std::string_view sTarget)
                      { return sTarget == CManifest::c_pFile || IsTileName(sTarget); });
}

void RefuseOthersTiles(const std::string& sFolder)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(sFolder, error))
    {
        const std::string sName = entry.path().filename().string();
        if (sName.rfind("tile_", 0) == 0 && entry.path().extension() == ".cld")
            throw CFailure(sFolder, fmt::format("holds {}, which no manifest there tells of; another folder, "
                                                "or this one emptied, takes tiles",
                                                sName));
    }
}

void RefuseForeign(const std::string& sFolder, const std::vector<CTileCount>& vecPlanned,
                   const std::set<CCell>& setOwn)
{
    std::error_code error;
    for (const CTileCount& tile : vecPlanned)
        if (const std::string sName = NameTile(tile.cell);
            setOwn.count(tile.cell) == 0 && fs::exists(fs::path(sFolder) / sName, error))
            throw CFailure(sFolder,
                           fmt::format("holds {}, which the interrupted run has not made; without it the "
                                       "same command goes on",
                                       sName));
}

} // namespace zorcld
