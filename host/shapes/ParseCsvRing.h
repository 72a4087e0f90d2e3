#ifndef HOST_SHAPES_PARSECSVRING_H
#define HOST_SHAPES_PARSECSVRING_H

#include <host/shapes/CShapes.h>

#include <string_view>

namespace zorcld
{

/// One polygon, its corners line by line: x and y are the first two fields, or those that a header names.
/// Semicolons, commas or blanks separate the fields; lines without text do not count.
/// @throws std::runtime_error with the cause.
CShapes ParseCsvRing(std::string_view sText);

} // namespace zorcld

#endif
