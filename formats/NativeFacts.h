#ifndef FORMATS_NATIVEFACTS_H
#define FORMATS_NATIVEFACTS_H

#include <formats/CNativeHeader.h>

#include <cstdint>

class CByteReader;

/// What a native cloud file holds, by walking over it without loading it.
struct CNativeFacts
{
    CNativeHeader header;
    std::int64_t nFileSize = 0;
    std::int64_t nNumHeld = 0;    ///< announced points that the file has room for
    std::int64_t nNumInTree = 0;  ///< points in leaves that are usable
    bool bTreeWhole = false;      ///< the octree ends within the file and is nowhere too deep
    std::int64_t nNumBehind = -1; ///< bytes behind the octree; -1: it is not whole

    /// @return whether every byte of a saved cloud is there, and none beside.
    bool IsWhole() const noexcept
    {
        return header.bPrologue && header.IsOriginFinite() && header.nNumPnts > 0 &&
               nNumHeld == header.nNumPnts && bTreeWhole && nNumInTree == nNumHeld && nNumBehind == 0;
    }
};

/// Time: that of reading the octree, bounded by the size of the file. Memory: a block, and a bit a point
/// where the runs of the leaves do not follow each other.
/// @param reader  at the start of the file.
CNativeFacts FindNativeFacts(CByteReader& reader);

#endif
