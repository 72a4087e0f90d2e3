#ifndef HOST_FILES_CLOSTPNTS_H
#define HOST_FILES_CLOSTPNTS_H

#include <cstdint>

class CPntCld;

namespace zorcld
{

class CInputFile;
struct CLoadFacts;

/// Why a cloud holds fewer points than its file announces, each reason by itself. -1: not known.
struct CLostPnts
{
    std::int64_t nDuplicates = -1; ///< removed for another point at their x and y
    std::int64_t nNotNumbers =
        -1; ///< with coordinates that are not numbers: such a coordinate becomes the origin's
    std::int64_t nNeverThere = -1; ///< announced only
};

/// @param cloud  loaded from `file`, with these facts.
///
/// Reads the file once more where points were no numbers, or never there: such a point may have been kept.
CLostPnts CountLostPnts(const CPntCld& cloud, CInputFile& file, const CLoadFacts& facts);

} // namespace zorcld

#endif
