#ifndef HOST_OUTPUT_ATTRIBUTEBYTES_H
#define HOST_OUTPUT_ATTRIBUTEBYTES_H

#include <array>
#include <cstdint>

namespace zorcld
{

/// An attribute of a point in the place of its colour, which a cloud takes along when it puts its points
/// into another order and leaves some out.
inline std::array<unsigned char, 3> BytesFromAttribute(std::uint16_t n)
{
    return {static_cast<unsigned char>(n & 255U), static_cast<unsigned char>(n >> 8U), 0};
}

/// The attribute that was put there.
inline std::uint16_t AttributeFromBytes(unsigned char r, unsigned char g)
{
    return static_cast<std::uint16_t>(r | g << 8U);
}

} // namespace zorcld

#endif
