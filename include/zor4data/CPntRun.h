#ifndef ZOR4DATA_CPNTRUN_H
#define ZOR4DATA_CPNTRUN_H

#include <cstdint>

/// A run of points of a cloud's array: nFirst .. nFirst + nCount - 1.
struct CPntRun
{
    std::int32_t nFirst = 0; ///< index of the first point
    std::int32_t nCount = 0; ///< how many points
};

#endif
