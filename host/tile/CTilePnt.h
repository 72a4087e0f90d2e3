#ifndef HOST_TILE_CTILEPNT_H
#define HOST_TILE_CTILEPNT_H

#include <array>
#include <cstdint>
#include <vector>

namespace zorcld
{

/// Where all tiles count their steps of 1/10000 from, coordinate units.
using TOrigin = std::array<float, 3>;

/// Units of coordinates, in metres.
struct CTileUnits
{
    double dPlan = 0.0;   ///< of x and y; 0: not known
    double dHeight = 0.0; ///< of z; 0: not known
    bool bAngles = false; ///< x and y are no lengths, but degrees for instance

    bool operator==(const CTileUnits& other) const
    {
        return dPlan == other.dPlan && dHeight == other.dHeight && bAngles == other.bAngles;
    }
};

/// A point as a tile stores it.
struct CTilePnt
{
    std::array<std::int32_t, 3> anSteps{};  ///< from the origin of all tiles
    std::array<std::uint16_t, 3> anColor{}; ///< as the file has it: to 255, or to 65535
};

/// Of colours to 65535 what is left of them in bytes.
inline void KeepHighBytes(std::vector<CTilePnt>& vecPnts)
{
    for (CTilePnt& pnt : vecPnts)
        for (std::uint16_t& nColor : pnt.anColor)
            nColor = static_cast<std::uint16_t>(nColor >> 8U);
}

} // namespace zorcld

#endif
