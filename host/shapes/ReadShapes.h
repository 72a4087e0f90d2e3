#ifndef HOST_SHAPES_READSHAPES_H
#define HOST_SHAPES_READSHAPES_H

#include <host/shapes/CShapes.h>

#include <string>

namespace zorcld
{

/// Reads GeoJSON, well-known text, or CSV (the corners of one polygon), told apart by the extension. Heights
/// and whatever else is in the file are left out.
///
/// @param sOption  the option that the file was given to, for the message.
/// @throws CUsageError for an unknown extension, CFailure when the file cannot be read or understood.
CShapes ReadShapes(const std::string& sPath, const std::string& sOption);

} // namespace zorcld

#endif
