#ifndef HOST_FILES_NATIVELAYOUT_H
#define HOST_FILES_NATIVELAYOUT_H

#include <cstdint>

namespace zorcld
{

class CByteReader;

/// What a native cloud file holds, by walking over it without loading it.
struct CNativeLayout
{
    std::int64_t nFileSize = 0;
    bool bMarks = false;          ///< the five bytes of its start are as they are written
    int nType = -1;               ///< of the points: 0 without colour, 1 with; another is refused
    bool bOrigin = true;          ///< the place that its coordinates count from is a number
    std::int64_t nNumPnts = 0;    ///< that it announces, also below 0
    std::int64_t nNumHeld = 0;    ///< of those, the ones that it has room for
    std::int64_t nNumInTree = 0;  ///< points in leaves that are usable
    bool bTreeWhole = false;      ///< the octree ends within the file and is nowhere too deep
    std::int64_t nNumBehind = -1; ///< bytes behind the octree; -1: it is not whole

    /// @return every byte of a saved cloud is there, and none beside.
    bool IsWhole() const
    {
        return bMarks && bOrigin && nNumPnts > 0 && nNumHeld == nNumPnts && bTreeWhole &&
               nNumInTree == nNumPnts && nNumBehind == 0;
    }
};

/// Time and memory: those of reading the octree, bounded by the size of the file.
CNativeLayout ReadNativeLayout(CByteReader& reader);

} // namespace zorcld

#endif
