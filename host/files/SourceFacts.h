#ifndef HOST_FILES_SOURCEFACTS_H
#define HOST_FILES_SOURCEFACTS_H

#include <formats/IPntSource.h>
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
    bool bInfinite = false;            ///< some of these are infinite, which are moved like far ones
    std::int64_t nNumFar = 0;          ///< points out of the first one's reach
    std::uint16_t nMaxColor = 0;       ///< of all channels, points that are no places included
    std::uint16_t nMaxColorTaken = 0;  ///< the same of the points that the library takes
    std::int64_t nNumLowColors = 0;    ///< of these, points with a channel from 1 to 255
    std::vector<CSourcePnt> vecSample; ///< up to 4096 points, evenly over the file

    /// Colours of 16 bits, as far as the values tell.
    bool HasDeepColor() const { return nMaxColor > 255; }

    /// @return the share of points that lie in a cell of 1/10000 with another by mere chance, seen from
    /// above.
    double CalcShareMerged() const;
};

/// @param sPath       named in failures and on the progress bar.
/// @param pDoing      what is being done, with a blank behind it.
/// @param onPntNear   gets the points within reach of the first one, itself included; may be empty.
/// @throws CFailure when the file turns out to be damaged on the way.
CSourceFacts CollectSourceFacts(IPntSource& source, const std::string& sPath, const CConsole& console,
                                const char* pDoing, const IPntSource::TOnPnt& onPntNear = {});

} // namespace zorcld

#endif
