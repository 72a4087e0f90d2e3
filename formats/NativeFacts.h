#ifndef FORMATS_NATIVEFACTS_H
#define FORMATS_NATIVEFACTS_H

#include <formats/CNativeHeader.h>
#include <formats/CNativeTreeHeader.h>

#include <cstdint>

class CByteReader;

/// What a native cloud file holds, by walking over it without loading it.
struct CNativeFacts
{
    CNativeHeader header;
    std::int64_t nFileSize = 0;
    std::int64_t nNumHeld = 0;    ///< announced points that the file has room for
    std::int64_t nNumInTree = 0;  ///< points in leaves that are usable
    bool bTreeHeader = false;     ///< all announced points are there, and the header of the octree
    CNativeTreeHeader treeHeader; ///< where it is
    bool bTreeWhole = false;      ///< the octree ends within the file and is nowhere too deep
    std::int64_t nNumBehind = -1; ///< bytes behind the octree; -1: it is not whole

    /// @return whether every byte of a saved cloud is there, and none beside, and the numbers agree.
    bool IsWhole() const noexcept
    {
        return header.bPrologue && header.IsOriginFinite() && header.nNumPnts > 0 &&
               nNumHeld == header.nNumPnts && treeHeader.IsPossible() && bTreeWhole &&
               nNumInTree == nNumHeld && nNumBehind == 0;
    }
};

/// What stands before the points and before the octree: all but what the octree's nodes tell.
/// @param reader  at the start of the file.
CNativeFacts FindNativeHead(CByteReader& reader);

/// Time: that of reading the octree, bounded by the size of the file. Memory: a block, and a bit a point
/// where the runs of the leaves do not follow each other.
/// @param reader  at the start of the file.
CNativeFacts FindNativeFacts(CByteReader& reader);

/// A count that is too high makes points of the first bytes of the octree.
///
/// @param facts  of the same file, whose octree is not as it should be behind the announced points.
/// @return how many points stand before an octree that fits them, and ends with the file; -1: none is found.
///         Reads the points.
std::int64_t FindNumBeforeTree(CByteReader& reader, const CNativeFacts& facts);

/// @return whether the octree of a file says of its points' box what a build would say: reads all points.
/// @param facts  of the same file, which has the header of an octree and a point: REQUIRES.
bool HasBoxOfItsPnts(CByteReader& reader, const CNativeFacts& facts);

#endif
