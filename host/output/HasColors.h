#ifndef HOST_OUTPUT_HASCOLORS_H
#define HOST_OUTPUT_HASCOLORS_H

#include <zor4data/CPntCld.h>

namespace zorcld
{

/// Looks at the cloud's points up to the first one that is not black: fields of colours are often never
/// filled.
/// @return false when there is none, or no colour at all.
inline bool HasColors(const CPntCld& cloud)
{
    if (!cloud.IsWithColor())
        return false;
    for (int i = 0; i < cloud.GetNumPnts(); ++i)
    {
        unsigned char r = 0;
        unsigned char g = 0;
        unsigned char b = 0;
        if (cloud.GetPntColor(i, r, g, b) && (r | g | b) != 0)
            return true;
    }
    return false;
}

} // namespace zorcld

#endif
