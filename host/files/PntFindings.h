#ifndef HOST_FILES_PNTFINDINGS_H
#define HOST_FILES_PNTFINDINGS_H

#include <formats/CFinding.h>
#include <host/output/FormatCount.h>

#include <fmt/format.h>

namespace zorcld
{

/// @return that so many points are no places: their coordinates become those of the first point, or lie at
/// the
///         end of its reach.
inline CFinding FindNotFinitePnts(std::int64_t nNumPnts)
{
    return {"not-finite",
            fmt::format("{} {} coordinates that are not numbers, or infinite", FormatCount(nNumPnts, "point"),
                        OneOrMany(nNumPnts, "has", "have")),
            true, ""};
}

} // namespace zorcld

#endif
