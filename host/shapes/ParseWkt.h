#ifndef HOST_SHAPES_PARSEWKT_H
#define HOST_SHAPES_PARSEWKT_H

#include <host/shapes/CShapes.h>

#include <string_view>

namespace zorcld
{

/// The polygons and lines of well-known text: one geometry or several, with or without semicolons between
/// them. Heights, measures and the number of a coordinate system are left out.
/// @throws std::runtime_error with the cause.
CShapes ParseWkt(std::string_view sText);

} // namespace zorcld

#endif
