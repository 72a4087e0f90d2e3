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

/// Does the extension, with its dot and in lower case, name a file of shapes that can be written?
bool IsShapeExtension(const std::string& sExtension);

/// Writes one polygon as the file's extension asks for: GeoJSON with its properties, or well-known text.
/// REQUIRES: an extension for which `IsShapeExtension` holds.
/// @throws CFailure
void WriteShape(COutFile& out, const TRing& ring, const std::vector<TProperty>& vecProperties);

} // namespace zorcld

#endif
