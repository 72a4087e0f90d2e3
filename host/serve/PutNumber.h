#ifndef HOST_SERVE_PUTNUMBER_H
#define HOST_SERVE_PUTNUMBER_H

#include <formats/Compact.h>

#include <cstdint>
#include <cstring>

namespace zorcld
{

// Each writes a number little-endian. Byte by byte without a loop, which compilers make one store of.

inline void PutUint32(char* pTo, std::uint32_t n)
{
    pTo[0] = static_cast<char>(n & 255U);
    pTo[1] = static_cast<char>(n >> 8U & 255U);
    pTo[2] = static_cast<char>(n >> 16U & 255U);
    pTo[3] = static_cast<char>(n >> 24U & 255U);
}

inline void PutUint64(char* pTo, std::uint64_t n)
{
    PutUint32(pTo, static_cast<std::uint32_t>(n));
    PutUint32(pTo + 4, static_cast<std::uint32_t>(n >> 32U));
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
    PutUint64(pTo, n);
}

} // namespace zorcld

#endif
