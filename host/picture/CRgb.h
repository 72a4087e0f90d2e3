#ifndef HOST_PICTURE_CRGB_H
#define HOST_PICTURE_CRGB_H

#include <algorithm>

namespace zorcld
{

/// A colour, 0 to 255 a channel, in floats so that calculating with it does not round.
struct CRgb
{
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
};

/// A colour as pictures keep it.
struct CRgbBytes
{
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
};

inline CRgb RgbFromBytes(const CRgbBytes& bytes)
{
    return {static_cast<float>(bytes.r), static_cast<float>(bytes.g), static_cast<float>(bytes.b)};
}

/// Rounds; channels beyond 0 to 255 are cut.
inline CRgbBytes BytesFromRgb(const CRgb& color)
{
    const auto byte = [](float f) { return static_cast<unsigned char>(std::clamp(f + 0.5F, 0.0F, 255.0F)); };
    return {byte(color.r), byte(color.g), byte(color.b)};
}

} // namespace zorcld

#endif
