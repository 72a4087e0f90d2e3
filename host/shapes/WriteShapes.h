#ifndef HOST_SHAPES_WRITESHAPES_H
#define HOST_SHAPES_WRITESHAPES_H

#include <host/shapes/TRing.h>

#include <string>
#include <utility>
#include <vector>

namespace zorcld
{

class COutFile;

/// A number that belongs to a shape, with its name.
using TProperty = std::pair<std::string, double>;

/// Writes one polygon without holes as GeoJSON, coordinates to 1/10000: closed and counter-clockwise, as the
/// format has it.
/// @throws CFailure
void WriteGeoJson(COutFile& out, const TRing& ring, const std::vector<TProperty>& vecProperties);

/// Writes one polygon without holes as well-known text, coordinates to 1/10000: closed, in the order given.
/// @throws CFailure
void WriteWkt(COutFile& out, const TRing& ring);

} // namespace zorcld

#endif
