#ifndef HOST_TILE_AREOFFILES_H
#define HOST_TILE_AREOFFILES_H

#include <vector>

namespace zorcld
{

struct CInputOptions;
struct CManifest;
struct CTileOptions;
struct CTilePlan;

/// Are tiles, planned or made, of these files, cut by these options? Size and time of a file stand for what
/// is in it; where the time is another one, or not noted, its hash tells.
bool AreOfFiles(const CTilePlan& plan, const std::vector<CInputOptions>& vecInputs,
                const CTileOptions& options);
bool AreOfFiles(const CManifest& manifest, const std::vector<CInputOptions>& vecInputs,
                const CTileOptions& options);

} // namespace zorcld

#endif
