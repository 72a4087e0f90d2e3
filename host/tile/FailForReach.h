#ifndef HOST_TILE_FAILFORREACH_H
#define HOST_TILE_FAILFORREACH_H

#include <formats/CloudLimits.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <cstddef>
#include <string>

namespace zorcld
{

/// @param dPlace   a coordinate that is too far from the origin of all tiles.
/// @param nAxis    of x, y and z.
/// @throws CFailure always.
[[noreturn]] inline void FailForReach(const std::string& sPath, double dPlace, std::size_t nAxis,
                                      float fOrigin)
{
    throw CFailure(sPath,
                   fmt::format("a point lies at {} {:.15g}, more than {} units from the first one's {:.15g}: "
                               "tiles share one origin, and their coordinates reach no farther",
                               "xyz"[nAxis], dPlace, c_nReach, static_cast<double>(fOrigin)));
}

} // namespace zorcld

#endif
