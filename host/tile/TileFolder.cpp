#include <host/tile/TileFolder.h>

#include <host/output/CFailure.h>
#include <host/output/RemoveAbandoned.h>
#include <host/tile/CManifest.h>

#include <fmt/format.h>

#include <filesystem>
#include <regex>

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

/// Is it such a name as NameTile makes?
bool IsTileName(const std::string& sName)
{
    static const std::regex c_form("tile_-?[0-9]+_-?[0-9]+\\.cld");
    return std::regex_match(sName, c_form);
}

} // namespace

void RemoveCutOff(const std::string& sFolder)
{
    RemoveAbandonedOf(sFolder, [](std::string_view sTarget)
                      { return sTarget == CManifest::c_pFile || IsTileName(std::string(sTarget)); });
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
