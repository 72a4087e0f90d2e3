#include <host/tile/TileFolder.h>

#include <host/output/CFailure.h>
#include <host/output/RemoveAbandoned.h>
#include <host/tile/CManifest.h>

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

} // namespace zorcld
