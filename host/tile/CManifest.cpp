#include <host/tile/CManifest.h>

#include <filesystem>

namespace zorcld
{

namespace fs = std::filesystem;

std::string FindManifestPath(const std::string& sPath)
{
    std::error_code error;
    return fs::is_directory(sPath, error) ? (fs::path(sPath) / CManifest::c_pFile).string() : sPath;
}

std::string FindTilePath(const std::string& sPath, const CTileEntry& tile)
{
    return (fs::path(FindManifestPath(sPath)).parent_path() / tile.sFile).string();
}

} // namespace zorcld
