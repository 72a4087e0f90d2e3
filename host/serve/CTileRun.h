#ifndef HOST_SERVE_CTILERUN_H
#define HOST_SERVE_CTILERUN_H

#include <zor4data/CRootCube.h>

#include <cstdint>

struct CPntArrays;

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

/// A run of a cloud's array.
struct CTileRun
{
    std::int32_t nFirst = 0;
    std::int32_t nEnd = 0;

    std::int32_t GetNumPnts() const { return nEnd - nFirst; }
    bool Holds(std::int32_t nIndex) const { return nIndex >= nFirst && nIndex < nEnd; }
};

/// Does an offset belong to the cube?
inline bool IsInCube(const CLevelCube& cube, std::int32_t nX, std::int32_t nY, std::int32_t nZ)
{
    return nX >= cube.nMinX && nX < cube.nEndX && nY >= cube.nMinY && nY < cube.nEndY && nZ >= cube.nMinZ &&
           nZ < cube.nEndZ;
}

/// Finds the points of a cube in the array of a cloud, which a build of the octree puts into the order of its
/// octants, by halving: some thirty looks.
///
/// REQUIRES: there is such a cube. For an array in another order, that of a damaged file, the run means
/// nothing, but lies within the array.
CTileRun FindTileRun(const CPntArrays& arrays, const CRootCube& root, const CTileAddress& address);

} // namespace zorcld

#endif
