#ifndef HOST_OUTPUT_UNITSYMBOL_H
#define HOST_OUTPUT_UNITSYMBOL_H

#include <string>

struct CCoordUnit;

namespace zorcld
{

/// @return the unit in short, as it is put behind numbers: "m", "ft", "degrees"; the file's own word for one
///         that has no such; empty where none is stated.
std::string GetUnitSymbol(const CCoordUnit& unit);

/// Of latitude; about, on any ellipsoid.
constexpr double c_dMetresPerDegree = 111320.0;

/// Is it the degree, not merely some angle?
bool IsDegree(const CCoordUnit& unit);

} // namespace zorcld

#endif
