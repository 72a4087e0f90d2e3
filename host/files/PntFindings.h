#ifndef HOST_FILES_PNTFINDINGS_H
#define HOST_FILES_PNTFINDINGS_H

#include <formats/CFinding.h>
#include <formats/CloudLimits.h>
#include <host/output/FormatCount.h>

#include <fmt/format.h>

#include <string>

namespace zorcld
{

/// @return that so many points are no places: their coordinates become those of the first point, or
///         lie at the end of its reach.
inline CFinding FindNotFinitePnts(std::int64_t nNumPnts)
{
    return {"not-finite",
            fmt::format("{} {} coordinates that are not numbers, or infinite", FormatCount(nNumPnts, "point"),
                        OneOrMany(nNumPnts, "has", "have")),
            true, ""};
}

/// @return that points are moved, where nobody has counted them.
inline CFinding FindMovedPnts()
{
    return {"span",
            fmt::format("points lie more than {} units from the first one and are moved to that distance",
                        c_nReach),
            true, ""};
}

/// @return that the library loads a file of which its header says that nobody can.
inline CFinding FindUnreadablePnts(const std::string& sCause)
{
    return {"misread", "by its header it cannot be read: " + sCause, false, ""};
}

} // namespace zorcld

#endif
