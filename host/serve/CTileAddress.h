#ifndef HOST_SERVE_CTILEADDRESS_H
#define HOST_SERVE_CTILEADDRESS_H

#include <cstdint>

namespace zorcld
{

/// Which cube of the octree a tile is.
struct CTileAddress
{
    int nLevel = 0; ///< 0: the root cube
    std::int32_t nI = 0;
    std::int32_t nJ = 0;
    std::int32_t nK = 0;
};

} // namespace zorcld

#endif
