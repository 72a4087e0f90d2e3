#ifndef HOST_PICTURE_CRGB_H
#define HOST_PICTURE_CRGB_H

namespace zorcld
{

/// A colour, 0 to 255 a channel, in floats so that shading does not round.
struct CRgb
{
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
};

} // namespace zorcld

#endif
