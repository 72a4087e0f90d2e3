#ifndef ZOR4DATA_CROOTCUBE_H
#define ZOR4DATA_CROOTCUBE_H

#include <zor4data/Export.h>

#include <cstdint>

class CPntCld;

/// The root cube of a cloud's octree as the build made it. It lies about the box of the points (`GetBdry`),
/// which may reach beyond it: centre and edge are whole units, and the edge ends with the int32 span.
struct CRootCube
{
    std::int32_t nX;    ///< centre, compact units: 1/10000 of the coordinate unit from the origin
    std::int32_t nY;    ///< centre
    std::int32_t nZ;    ///< centre
    std::int32_t nEdge; ///< compact units; 0 for an octree without points
    float fOrgX;        ///< the cloud's origin: coordinate = offset / 10000.0 + origin, in double
    float fOrgY;        ///< origin
    float fOrgZ;        ///< origin
};

/// @return false, and nothing is written, without an octree.
ZOR4DATA_API bool GetRootCube(const CPntCld& cld, CRootCube& cube);

/// One of the cubes into which the root cube falls at a level of the octree, compact units.
///
/// The nominal cube has its edge halved, and its centre moved by a quarter of the edge above, in whole units
/// with truncation, once a level. So nominal cubes leave gaps, and points may lie a few units outside theirs.
///
/// The limits are exact. A point belongs to the cube when, on each axis, min ≤ offset < end. The cubes of a
/// level share their limits with their neighbours, and the outermost ones reach to the ends of the int32
/// span: each point of the cloud, and each that could be, belongs to exactly one cube of every level. What
/// belongs to a node of the octree at that level is what belongs to its cube. A cube so small that its halves
/// have no unit left gives all of its points to the upper one; the lower one is empty (min = end). Where the
/// nominal centre lies beyond the limits, one half has all of the cube, and the other one is empty.
struct CLevelCube
{
    std::int64_t nX;    ///< centre of the nominal cube; may lie beyond int32
    std::int64_t nY;    ///< centre
    std::int64_t nZ;    ///< centre
    std::int64_t nEdge; ///< edge of the nominal cube
    std::int64_t nMinX; ///< lower limit, included
    std::int64_t nMinY; ///< lower limit, included
    std::int64_t nMinZ; ///< lower limit, included
    std::int64_t nEndX; ///< upper limit, not included
    std::int64_t nEndY; ///< upper limit, not included
    std::int64_t nEndZ; ///< upper limit, not included
};

/// Calculates the cube at position (nI, nJ, nK) of a level, counted along x, y and z from the lower end.
///
/// @param root    the root cube, as GetRootCube gives it.
/// @param nLevel  0 for the root cube itself, up to 31.
/// @param nI      position along x, 0 to 2^nLevel - 1.
/// @param nJ      along y.
/// @param nK      along z.
/// @param cube    receives the cube.
/// @return false, and nothing is written, for a level or a position that there is not.
ZOR4DATA_API bool GetLevelCube(const CRootCube& root, int nLevel, std::int32_t nI, std::int32_t nJ,
                               std::int32_t nK, CLevelCube& cube);

#endif
