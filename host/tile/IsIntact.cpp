#include <host/tile/IsIntact.h>

#include <host/tile/CManifest.h>
#include <host/tile/HashFile.h>

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace zorcld
{

bool IsIntact(const std::string& sPath, const CTileEntry& tile)
{
    std::error_code error;
    const std::uintmax_t nNumBytes = std::filesystem::file_size(sPath, error);
    return !error && nNumBytes == static_cast<std::uintmax_t>(tile.nNumBytes) &&
           HashFile(sPath) == tile.sHash;
}

} // namespace zorcld
