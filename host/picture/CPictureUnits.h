#ifndef HOST_PICTURE_CPICTUREUNITS_H
#define HOST_PICTURE_CPICTUREUNITS_H

#include <optional>
#include <string>

namespace zorcld
{

/// What the units of a picture's coordinates are called; empty: not known.
struct CPictureUnits
{
    std::string sPlan;   ///< behind lengths
    std::string sHeight; ///< behind heights

    std::optional<bool> bDegrees; ///< are x and y degrees? Not known: judged by the coordinates
};

} // namespace zorcld

#endif
