#ifndef HOST_TILE_NAMETILE_H
#define HOST_TILE_NAMETILE_H

#include <string>

namespace zorcld
{

struct CCell;

/// The name of a tile's file.
std::string NameTile(const CCell& cell);

} // namespace zorcld

#endif
