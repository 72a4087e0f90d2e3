#ifndef FORMATS_BYTEFROMCHANNEL_H
#define FORMATS_BYTEFROMCHANNEL_H

#include <cstdint>

/// A colour channel of 16 bits of a LAS file as one of 8.
/// KEPT: each channel by itself, so that files with 8-bit colours come out right; of 16-bit colours, values
/// up to 255 come out 256 times too bright (ByteFromChannel_EachChannelByItsOwnSize_Kept).
inline unsigned char ByteFromChannel(std::uint16_t n) noexcept
{
    return static_cast<unsigned char>(n > 255 ? n >> 8U : n);
}

#endif
