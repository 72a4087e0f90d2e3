#ifndef HOST_SERVE_CATTRIBUTE_H
#define HOST_SERVE_CATTRIBUTE_H

#include <host/picture/CRgb.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zorcld
{

/// What a file says of each point beside its place and colour, and how that is shown.
struct CAttribute
{
    std::string sName;                   ///< "class"
    std::vector<std::uint8_t> vecShades; ///< by index of the point: its place in the palette
    std::array<CRgbBytes, 256> palette{};
};

} // namespace zorcld

#endif
