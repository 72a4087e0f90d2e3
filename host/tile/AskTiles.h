#ifndef HOST_TILE_ASKTILES_H
#define HOST_TILE_ASKTILES_H

#include <zor3geom/RECT_2D.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class CPntCld;

namespace zorcld
{

class CConsole;
class COutFile;
struct CQueryOptions;
struct CManifest;

/// Number of points in a rectangle, its edges included. Opens those tiles only that its edges cut.
/// @param sManifest  the manifest, or its folder.
/// @throws CFailure
std::int64_t CountInTiles(const std::string& sManifest, const zor::geom::RECT_2D& rect);

/// Gets a tile of which only the core's points are left.
using TOnCore = std::function<void(CPntCld& cloud)>;

/// Opens one tile after another, those that have a point in the bounds.
/// @param bounds  none: all tiles.
/// @throws CFailure when a tile is not the one of the manifest, which its hash tells.
void ForEachCore(const CManifest& manifest, const std::string& sManifest,
                 const std::optional<zor::geom::RECT_2D>& bounds, const CConsole& console,
                 const TOnCore& onCore);

/// Writes what the query delivers of all cores, not yet committed. A level of detail is that of each tile.
/// @return how many points that were.
/// @throws CFailure, CUsageError
std::int64_t WritePntsOfTiles(const std::string& sManifest, const CQueryOptions& options, COutFile& out,
                              const CConsole& console);

/// Fills the cloud with the points of all cores that have a point in the bounds; of very many with an even
/// share of each tile, which the console is told.
/// @param cloud  of no type.
/// @throws CFailure when there is no point.
void MergeTiles(CPntCld& cloud, const std::string& sManifest, const std::optional<zor::geom::RECT_2D>& bounds,
                const CConsole& console);

} // namespace zorcld

#endif
