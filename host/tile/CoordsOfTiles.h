#ifndef HOST_TILE_COORDSOFTILES_H
#define HOST_TILE_COORDSOFTILES_H

#include <formats/CCoordSystem.h>

namespace zorcld
{

struct CTileUnits;

/// What a file that states these units would say of them, so that tiles are labelled as their files are. The
/// manifest has the sizes of units alone; their names are those that the sizes are known by.
CCoordSystem CoordsOfTiles(const CTileUnits& units);

} // namespace zorcld

#endif
