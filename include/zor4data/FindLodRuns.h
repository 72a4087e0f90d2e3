#ifndef ZOR4DATA_FINDLODRUNS_H
#define ZOR4DATA_FINDLODRUNS_H

#include <zor4data/CPntRun.h>
#include <zor4data/Export.h>

#include <cstdint>
#include <vector>

class CPntCld;

/// The points of a level of detail that belong to one cube.
struct CLodRuns
{
    std::vector<CPntRun> vecRuns; ///< in the order of the walk, no two that could be one; no run is empty
    /// Points of the cube, thinned or not, those marked deleted with them; -1: not known, of a file whose
    /// octree names the points in an order of its own.
    std::int64_t nNumInCube = -1;
};

/// Finds the points that `GetPnts_Lod` delivers and that belong to the cube at position (nI, nJ, nK) of a
/// level (`GetLevelCube`), as indices: so the cubes of a level together have each point of the level of
/// detail once. No record is made and no listener called: the points themselves are read from the arrays
/// (`GetPntArrays`).
///
/// @param cld     asked for its points.
/// @param dLod    as for GetPnts_Lod; of the whole cloud, not of the cube.
/// @param nLevel  0 for the root cube, up to 31.
/// @param nI      position along x, 0 to 2^nLevel - 1.
/// @param nJ      along y.
/// @param nK      along z.
/// @param runs    its vector keeps what it has reserved.
/// @return false, and nothing is written, without an octree, and for a level or a position that there is not.
///
/// A point that a damaged file has filed in a cube it does not lie in may be found in that one, or not at
/// all. Throws std::bad_alloc only; the runs are then any. Cost: the way down to the cube, and then the
/// points found; nothing beside the cube is looked at. Without thinning: the way down alone, but for marks of
/// deleted points, eight at a time.
ZOR4DATA_API bool FindLodRuns(const CPntCld& cld, double dLod, int nLevel, std::int32_t nI, std::int32_t nJ,
                              std::int32_t nK, CLodRuns& runs);

#endif
