#ifndef FORMATS_COORDSYSTEMFROMWKT_H
#define FORMATS_COORDSYSTEMFROMWKT_H

#include <formats/CCoordSystem.h>

#include <string_view>

/// The coordinate system that a well-known text states, of either version of that language; of one that is
/// cut off or damaged as far as it can be read.
///
/// @return none where the text begins with no coordinate system.
CCoordSystem CoordSystemFromWkt(std::string_view sText);

#endif
