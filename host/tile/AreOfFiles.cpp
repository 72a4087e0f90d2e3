#include <host/tile/AreOfFiles.h>

#include <host/files/CInputOptions.h>
#include <host/tile/CTilePlan.h>
#include <host/tile/HashFile.h>

#include <algorithm>

namespace zorcld
{

bool AreOfFiles(const CTilePlan& plan, const std::vector<CInputOptions>& vecInputs,
                const CTileOptions& options)
{
    if (!(plan.options == options) || plan.vecFiles.size() != vecInputs.size())
        return false;
    return std::equal(vecInputs.begin(), vecInputs.end(), plan.vecFiles.begin(),
                      [](const CInputOptions& input, const CPlannedFile& planned)
                      {
                          const CPlannedFile now = LookAtTime(input.sPath);
                          return now.file.nNumBytes == planned.file.nNumBytes &&
                                 (now.nTime == planned.nTime || HashFile(input.sPath) == planned.file.sHash);
                      });
}

bool AreOfFiles(const CManifest& manifest, const std::vector<CInputOptions>& vecInputs,
                const CTileOptions& options)
{
    return manifest.options == options && manifest.vecFiles.size() == vecInputs.size() &&
           std::equal(vecInputs.begin(), vecInputs.end(), manifest.vecFiles.begin(),
                      [](const CInputOptions& input, const CTiledFile& file) {
                          return LookAtTime(input.sPath).file.nNumBytes == file.nNumBytes &&
                                 HashFile(input.sPath) == file.sHash;
                      });
}

} // namespace zorcld
