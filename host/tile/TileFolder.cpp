#include <host/tile/TileFolder.h>

#include <formats/CPlacedFile.h>
#include <host/output/CFailure.h>
#include <host/tile/CManifest.h>

#include <fmt/format.h>

#include <filesystem>

namespace zorcld
{

namespace fs = std::filesystem;

void RemoveCutOff(const std::string& sFolder)
{
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(sFolder, error))
    {
        const std::string sName = entry.path().filename().string();
        const bool bOurs = sName.rfind("tile_", 0) == 0 || sName.rfind(CManifest::c_pFile, 0) == 0;
        if (bOurs && sName.find(CPlacedFile::c_sSuffix.substr(0, 8)) != std::string::npos)
            fs::remove(entry.path(), error);
    }
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
