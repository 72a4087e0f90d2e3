#ifndef HOST_OUTPUT_FORMATCOORD_H
#define HOST_OUTPUT_FORMATCOORD_H

#include <fmt/format.h>

#include <cmath>
#include <string>

namespace zorcld
{

/// A coordinate to 1/10000, at least `nWidth` wide. Numbers that stand for none, and those of damaged
/// headers, have up to hundreds of digits: they get an exponent.
inline std::string FormatCoord(double d, int nWidth = 0)
{
    return std::fabs(d) < 1e15 ? fmt::format("{:{}.4f}", d, nWidth) : fmt::format("{:{}.6g}", d, nWidth);
}

} // namespace zorcld

#endif
