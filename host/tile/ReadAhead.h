#ifndef HOST_TILE_READAHEAD_H
#define HOST_TILE_READAHEAD_H

#include <host/tile/ITileSource.h>

namespace zorcld
{

/// What `ITileSource::ForEach` does, with the file read and decoded on a thread of its own, a few calls ahead
/// of those to `onPnts`, which come on the caller's. Without a thread to have,
/// or where memory is limited, it is done here.
/// @throws what the source or `onPnts` throws.
void ReadAhead(ITileSource& source, const TOrigin& origin, const ITileSource::TOnPnts& onPnts);

} // namespace zorcld

#endif
