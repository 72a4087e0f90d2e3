#ifndef HOST_TILE_CHECKTILES_H
#define HOST_TILE_CHECKTILES_H

#include <cstddef>
#include <string>

namespace zorcld
{

class CConsole;

/// Compares all tiles with what their manifest tells; a note for each that is another one, or missing.
/// @param sManifest  the manifest, or its folder.
/// @return how many there are.
/// @throws CFailure when one is not as it says, or the manifest is damaged.
std::size_t CheckTiles(const std::string& sManifest, const CConsole& console);

} // namespace zorcld

#endif
