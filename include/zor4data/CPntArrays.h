#ifndef ZOR4DATA_CPNTARRAYS_H
#define ZOR4DATA_CPNTARRAYS_H

#include <zor4data/Export.h>

#include <memory>

class CPntCld;

/// The arrays of a cloud, read in place: points, selection and deletion marks as the cloud itself holds them,
/// without a copy. An index of the cloud is a position in them.
///
/// The arrays live as long as `pOwner` or a copy of it does, whatever becomes of the cloud:
///
/// - `Clear`, destruction, assignment, `DelSelPnts`, `Morph`, and the removal of duplicates at the end of
///   `OnReadEnd` leave them as they are; the cloud goes on with other arrays, which `GetPntArrays` gives
///   anew.
/// - A build of the octree (`ComputeTree`, the first step of `OnReadEnd`) reorders the points in place: the
///   same records, at other positions. The marks stay where they are. Positions kept from before a build mean
///   other points after it.
/// - `AddPnt`, the reading slots, `SelPnt` and `UnSelPnts` write in place, too: what they write is seen here.
///   The origin is a copy: the first point stored sets the cloud's, not this one.
///
/// Nothing here locks: REQUIRES that nothing changes the cloud or a copy of it while the arrays are read.
struct CPntArrays
{
    std::shared_ptr<const void> pOwner;      ///< keeps the arrays; null when there are none
    const unsigned char* pPnts = nullptr;    ///< `nNumPnts` records of `nStride` bytes: int32 x, y, z, each
                                             ///< an offset from the origin in units of 1/10000, aligned to
                                             ///< 4 bytes; with colour r, g, b and a byte without meaning
    int nStride = 0;                         ///< 12, with colour 16; 0 for a cloud without point type
    int nNumPnts = 0;                        ///< slots: points, deleted and not yet filled ones included
    float fOrgX = 0;                         ///< origin: coordinate = offset / 10000.0 + origin, in double
    float fOrgY = 0;                         ///< origin
    float fOrgZ = 0;                         ///< origin
    const unsigned char* pSelBits = nullptr; ///< selected: bit i % 8 of byte i / 8; nNumPnts / 8 + 1 bytes
    const unsigned char* pDelBits = nullptr; ///< marked deleted, likewise: points that no query delivers
    bool bColor = false;                     ///< the records have a colour
};

/// @return the arrays of a cloud as they are now. Without points announced (before `Init`, after `Clear`): no
///         arrays, 0 points. Without point type: all as in a new record.
///
/// Cost: a few pointers, whatever the number of points. Throws std::bad_alloc only.
ZOR4DATA_API CPntArrays GetPntArrays(const CPntCld& cld);

#endif
