#ifndef HOST_TILE_CTILEPNT_H
#define HOST_TILE_CTILEPNT_H

#include <array>
#include <cstdint>

namespace zorcld
{

/// Where all tiles count their steps of 1/10000 from, coordinate units.
using TOrigin = std::array<float, 3>;

/// Units of coordinates, in metres; 0: not known.
struct CTileUnits
{
    double dPlan = 0.0;   ///< of x and y
    double dHeight = 0.0; ///< of z
    bool bAngles = false; ///< x and y are no lengths, but degrees for instance

    bool operator==(const CTileUnits& other) const
    {
        return dPlan == other.dPlan && dHeight == other.dHeight && bAngles == other.bAngles;
    }

    /// Is it anything that the ground filter, which goes by metres, has to be told?
    bool IsOther() const { return dPlan > 0.0 && (dPlan != 1.0 || dHeight != 1.0); }
};

/// A point as a tile stores it.
struct CTilePnt
{
    std::array<std::int32_t, 3> anSteps{};  ///< from the origin of all tiles
    std::array<std::uint16_t, 3> anColor{}; ///< as the file has it: to 255, or to 65535
};

} // namespace zorcld

#endif
