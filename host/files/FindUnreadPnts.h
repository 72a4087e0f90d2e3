#ifndef HOST_FILES_FINDUNREADPNTS_H
#define HOST_FILES_FINDUNREADPNTS_H

#include <host/files/CFinding.h>

#include <fmt/format.h>

#include <cstdint>

namespace zorcld
{

/// @return that fewer points could be read from a LAZ file than its header announces.
inline CFinding FindUnreadPnts(std::int64_t nAnnounced, std::int64_t nNumRead)
{
    return {"las-count",
            fmt::format("its header announces {} points, but {} could be read: it is damaged or cut off",
                        nAnnounced, nNumRead),
            false, ""};
}

} // namespace zorcld

#endif
