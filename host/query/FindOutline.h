#ifndef HOST_QUERY_FINDOUTLINE_H
#define HOST_QUERY_FINDOUTLINE_H

#include <host/shapes/TRing.h>
#include <zor4data/CCldCadPnt.h>

#include <cstdint>
#include <string>
#include <vector>

class CPntCld;

namespace zorcld
{

class CConsole;

/// Of a walk at a distance that was not asked for: seconds. Walks along ragged outlines of millions of points
/// take a tenth of that.
constexpr std::int64_t c_nMaxAutoLooks = 60000000;

/// The outline of a cloud's largest part, seen from above.
struct COutline
{
    double dDistance = 0.0;             ///< up to which points belong together, coordinate units
    std::string sHow;                   ///< what the distance was taken from; empty: it was given
    std::vector<CCldCadPnt> vecCorners; ///< the first one again at the end
    std::int64_t nNumInside = 0;        ///< points within it or close by

    TRing GetRing() const;
};

/// Does it hold as good as all points of the cloud?
bool IsWhole(const COutline& outline, const CPntCld& cloud);

/// @param dGiven     the distance; 0: the smallest of some multiples of the mean spacing at which the cloud
///                   is one part, else the one at which its largest part is largest.
/// @param sPath      the file of the cloud, for the message.
/// @param nMaxLooks  what the walk at one distance may take (`CalcCntWithin`), when none is given. Where it
///                   is left off, a note says so.
/// @throws CFailure where there is no closed outline.
COutline FindOutline(const CPntCld& cloud, double dGiven, const std::string& sPath, const CConsole& console,
                     std::int64_t nMaxLooks = c_nMaxAutoLooks);

} // namespace zorcld

#endif
