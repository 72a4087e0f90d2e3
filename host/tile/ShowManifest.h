#ifndef HOST_TILE_SHOWMANIFEST_H
#define HOST_TILE_SHOWMANIFEST_H

#include <string>

namespace zorcld
{

/// Prints what tiles hold, without opening any, on standard output.
/// @param sManifest  the manifest, or its folder.
/// @throws CFailure
void ShowManifest(const std::string& sManifest, bool bJson);

} // namespace zorcld

#endif
