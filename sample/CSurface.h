#ifndef SAMPLE_CSURFACE_H
#define SAMPLE_CSURFACE_H

#include <sample/CColor.h>

namespace sample
{

/// Where a pulse ends, and its colour; later layers overwrite earlier ones.
struct CSurface
{
    double x;
    double y;
    double z;
    CColor color;
};

} // namespace sample

#endif
