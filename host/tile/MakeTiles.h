#ifndef HOST_TILE_MAKETILES_H
#define HOST_TILE_MAKETILES_H

#include <host/tile/CManifest.h>

#include <string>
#include <vector>

namespace zorcld
{

class CConsole;
struct CInputOptions;

/// What a run has done.
struct CMadeTiles
{
    CManifest manifest;
    std::size_t nNumKept = 0; ///< tiles that were there from an earlier run
};

/// Cuts the files into tiles, or goes on where a run has been interrupted.
/// @throws CFailure, CUsageError
CMadeTiles MakeTiles(const std::vector<CInputOptions>& vecInputs, const CTileOptions& options,
                     const std::string& sFolder, const CConsole& console);

} // namespace zorcld

#endif
