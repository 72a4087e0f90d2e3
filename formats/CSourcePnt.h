#ifndef FORMATS_CSOURCEPNT_H
#define FORMATS_CSOURCEPNT_H

#include <formats/CLasAttributes.h>
#include <formats/CloudLimits.h>

#include <cmath>
#include <cstdint>

/// A point as its file has it, coordinates in double precision.
struct CSourcePnt
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    std::uint16_t r = 0; ///< 0 to 255, or of a file with colours of 16 bits to 65535
    std::uint16_t g = 0;
    std::uint16_t b = 0;
    CLasAttributes attributes = {}; ///< of LAS and LAZ only

    bool IsFinite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }

    /// Would the point keep its place in a cloud that begins with `first`?
    bool IsInReachOf(const CSourcePnt& first) const
    {
        const auto isNear = [](double d, double dFirst)
        { return std::fabs(d - static_cast<double>(SaturateToFloat(dFirst))) <= c_dReach; };
        return isNear(x, first.x) && isNear(y, first.y) && isNear(z, first.z);
    }
};

#endif
