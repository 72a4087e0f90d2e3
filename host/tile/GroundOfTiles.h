#ifndef HOST_TILE_GROUNDOFTILES_H
#define HOST_TILE_GROUNDOFTILES_H

#include <string>

namespace zorcld
{

struct CManifest;
struct CTileOptions;
struct CTileUnits;

/// Why tiles that are cut so do not give the ground of the whole, cores together; empty: they do.
/// @param units  of coordinates; the filter's sizes are metres.
std::string FindGroundCause(const CTileOptions& options, const CTileUnits& units);

/// The same of tiles that are there, where `units` may be others than they were cut by.
std::string FindGroundCause(const CManifest& manifest, const CTileUnits& units);

} // namespace zorcld

#endif
