#ifndef HOST_TILE_CTILEPNT_H
#define HOST_TILE_CTILEPNT_H

#include <array>
#include <cstdint>

namespace zorcld
{

/// Where all tiles count their steps of 1/10000 from, coordinate units.
using TOrigin = std::array<float, 3>;

/// A point as a tile stores it.
struct CTilePnt
{
    std::array<std::int32_t, 3> anSteps{};  ///< from the origin of all tiles
    std::array<std::uint16_t, 3> anColor{}; ///< as the file has it: to 255, or to 65535
};

} // namespace zorcld

#endif
