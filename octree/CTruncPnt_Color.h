#ifndef OCTREE_CTRUNCPNT_COLOR_H
#define OCTREE_CTRUNCPNT_COLOR_H

#include <cstdint>

/// Compact point with colour: offsets from the store's origin in units of 1/10000, and three colour
/// bytes. The sixteenth byte has no meaning.
class CTruncPnt_Color
{
public:
    CTruncPnt_Color() = default;
    CTruncPnt_Color(std::int32_t nX, std::int32_t nY, std::int32_t nZ, std::uint8_t ucR, std::uint8_t ucG,
                    std::uint8_t ucB)
        : m_nX(nX), m_nY(nY), m_nZ(nZ), m_ucR(ucR), m_ucG(ucG), m_ucB(ucB)
    {
    }

    std::int32_t m_nX = 0;
    std::int32_t m_nY = 0;
    std::int32_t m_nZ = 0;
    std::uint8_t m_ucR = 255;
    std::uint8_t m_ucG = 255;
    std::uint8_t m_ucB = 255;
};

static_assert(sizeof(CTruncPnt_Color) == 16, "a point with colour takes 16 bytes");

#endif
