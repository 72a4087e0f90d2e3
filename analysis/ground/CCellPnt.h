#ifndef ANALYSIS_GROUND_CCELLPNT_H
#define ANALYSIS_GROUND_CCELLPNT_H

#include <cstdint>

/// A finite point sorted into a cell.
struct CCellPnt
{
    float x;
    float y;
    float z;
    std::uint32_t nPos; ///< its position in `CMorphPnts`
};

#endif
