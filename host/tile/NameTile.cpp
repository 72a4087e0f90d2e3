#include <host/tile/NameTile.h>

#include <host/tile/CTileGrid.h>

#include <fmt/format.h>

namespace zorcld
{

std::string NameTile(const CCell& cell)
{
    return fmt::format("tile_{}_{}.cld", cell.nColumn, cell.nRow);
}

} // namespace zorcld
