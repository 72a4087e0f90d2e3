#ifndef HOST_FILES_SOURCEFACTS_H
#define HOST_FILES_SOURCEFACTS_H

#include <host/files/IPntSource.h>
#include <host/output/CPntSummary.h>

#include <vector>

namespace zorcld
{

class CConsole;

/// What one pass over a source tells.
struct CSourceFacts
{
    CPntSummary summary; ///< of the points whose coordinates are numbers
    CSourcePnt first;    ///< of those
    std::int64_t nNumNotFinite = 0;
    std::int64_t nNumFar = 0;          ///< points out of the first one's reach
    std::uint16_t nMaxColor = 0;       ///< of all channels
    std::int64_t nNumLowColors = 0;    ///< points with a channel from 1 to 255
    std::vector<CSourcePnt> vecSample; ///< up to 4096 points, evenly over the file

    /// Colours of 16 bits, as far as the values tell.
    bool HasDeepColor() const { return nMaxColor > 255; }

    /// @return the share of points that lie in a cell of 1/10000 with another by mere chance, seen from
    /// above.
    double CalcShareMerged() const;
};

/// @param sLabel      of the progress bar.
/// @param onPntNear   gets the points within reach of the first one, itself included; may be empty.
CSourceFacts CollectSourceFacts(IPntSource& source, const CConsole& console, const std::string& sLabel,
                                const IPntSource::TOnPnt& onPntNear = {});

} // namespace zorcld

#endif
