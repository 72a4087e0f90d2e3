#ifndef OCTREE_CTRUNCPNT_H
#define OCTREE_CTRUNCPNT_H

#include <cstdint>

/// Compact point without colour: offsets from the store's origin in units of 1/10000.
class CTruncPnt
{
public:
    CTruncPnt() = default;
    CTruncPnt(std::int32_t nX, std::int32_t nY, std::int32_t nZ) : m_nX(nX), m_nY(nY), m_nZ(nZ) {}

    std::int32_t m_nX = 0;
    std::int32_t m_nY = 0;
    std::int32_t m_nZ = 0;
};

static_assert(sizeof(CTruncPnt) == 12, "a point without colour takes 12 bytes");

#endif
