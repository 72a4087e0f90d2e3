#ifndef HOST_SHAPES_PARSEGEOJSON_H
#define HOST_SHAPES_PARSEGEOJSON_H

#include <host/shapes/CShapes.h>

#include <string>

namespace zorcld
{

/// The polygons and lines of GeoJSON, collections of them included. Points, which bound nothing, heights and
/// properties are left out.
/// @throws std::runtime_error with the cause.
CShapes ParseGeoJson(const std::string& sText);

} // namespace zorcld

#endif
