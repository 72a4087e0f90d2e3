#ifndef SAMPLE_CCOLOR_H
#define SAMPLE_CCOLOR_H

namespace sample
{

/// Red, green and blue, 0 to 255 each; what lies beyond is cut off at the end.
struct CColor
{
    double r;
    double g;
    double b;
};

/// @param t  share of `to`, 0 to 1.
inline CColor Blend(const CColor& from, const CColor& to, double t)
{
    return {from.r + t * (to.r - from.r), from.g + t * (to.g - from.g), from.b + t * (to.b - from.b)};
}

inline CColor Scale(const CColor& color, double dFactor)
{
    return {color.r * dFactor, color.g * dFactor, color.b * dFactor};
}

} // namespace sample

#endif
