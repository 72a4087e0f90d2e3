#ifndef HOST_TILE_OPENTILESOURCE_H
#define HOST_TILE_OPENTILESOURCE_H

#include <host/tile/ITileSource.h>

#include <memory>

namespace zorcld
{

struct CInputOptions;

/// @throws CFailure when the file cannot be read so.
std::unique_ptr<ITileSource> OpenTileSource(const CInputOptions& input);

} // namespace zorcld

#endif
