#include <host/tile/RefuseInput.h>

#include <host/output/RefuseSameFile.h>
#include <host/tile/CManifest.h>

#include <filesystem>

namespace zorcld
{

void RefuseInput(const std::string& sInPath, const std::string& sOutPath, const char* pOption, bool bForce)
{
    std::error_code error;
    if (bForce || !std::filesystem::exists(sOutPath, error))
        return;
    RefuseSameFile(FindManifestPath(sInPath), sOutPath, pOption, bForce);
    if (!CManifest::IsManifest(sInPath))
        return;
    for (const CTileEntry& tile : CManifest::Read(sInPath).vecTiles)
        RefuseSameFile(FindTilePath(sInPath, tile), sOutPath, pOption, bForce);
}

} // namespace zorcld
