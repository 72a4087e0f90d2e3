#ifndef HOST_SERVE_PUTNUMBER_H
#define HOST_SERVE_PUTNUMBER_H

#include <formats/Compact.h>

#include <cstdint>
#include <cstring>

namespace zorcld
{

/// Writes a number little-endian.
inline void PutUint32(char* pTo, std::uint32_t n)
{
    for (unsigned k = 0; k < 4; ++k)
        pTo[k] = static_cast<char>((n >> (8U * k)) & 255U);
}

inline void PutFloat32(char* pTo, double d)
{
    const float f = SaturateToFloat(d);
    std::uint32_t n = 0;
    std::memcpy(&n, &f, sizeof(n));
    PutUint32(pTo, n);
}

inline void PutFloat64(char* pTo, double d)
{
    std::uint64_t n = 0;
    std::memcpy(&n, &d, sizeof(n));
    for (unsigned k = 0; k < 8; ++k)
        pTo[k] = static_cast<char>((n >> (8U * k)) & 255U);
}

} // namespace zorcld

#endif
