#ifndef FORMATS_LASFINDINGS_H
#define FORMATS_LASFINDINGS_H

#include <formats/CFinding.h>

#include <cstdint>
#include <vector>

class CLasGuard;
struct CLasHeader;

/// What the header of a LAS or LAZ file that the library takes tells of what will be lost or put in its
/// place.
/// @param bAsMeant  can this build read the points as they are meant?
/// @param guard     of that file, which it has let through.
std::vector<CFinding> FindLasFindings(const CLasGuard& guard, bool bAsMeant);

/// @return that more points are there than the header of a file announces.
/// @param bExact  is that known to be all of them?
CFinding FindUntakenPnts(std::int64_t nAnnounced, std::int64_t nNumThere, bool bExact, bool bAsMeant);

/// @return that bytes follow the announced points of a file that does not tell how many points there are.
CFinding FindBytesBehind(std::int64_t nAnnounced, std::int64_t nNumBytes);

/// @return that the library takes the file without its colours, for a format whose colours it does not take.
CFinding FindUntakenColors(const CLasHeader& header, bool bAsMeant);

/// @return that all of more points than the header of a file announces have been taken.
CFinding FindTakenPnts(std::int64_t nAnnounced, std::int64_t nNumThere);

/// @return that fewer points could be read from a LAZ file than its header announces. Converting takes those.
CFinding FindUnreadPnts(std::int64_t nAnnounced, std::int64_t nNumRead, bool bAsMeant);

#endif
