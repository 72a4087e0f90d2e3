#ifndef FORMATS_COORDUNITS_H
#define FORMATS_COORDUNITS_H

#include <formats/CCoordSystem.h>

#include <string_view>

/// Numbers of units in the EPSG dataset.
constexpr int c_nMetre = 9001;
constexpr int c_nFoot = 9002;
constexpr int c_nSurveyFoot = 9003;
constexpr int c_nDegree = 9102;

/// @param nCode  number in the EPSG dataset.
/// @return the unit with its name there; not stated where the number is unknown.
CCoordUnit UnitFromCode(int nCode);

/// @param dSize  metres or radians.
/// @return the unit of that size with its name in the EPSG dataset; where none has it, "length" or "angle".
CCoordUnit UnitFromSize(double dSize, bool bAngle);

/// A unit that a file states by name and size. A length of size 1 that is called feet is feet all the same:
/// such files exist.
///
/// @param dSize  metres or radians; not above 0 or not a number: taken from the name, where that is known.
CCoordUnit UnitFromName(std::string_view sName, double dSize, bool bAngle);

#endif
