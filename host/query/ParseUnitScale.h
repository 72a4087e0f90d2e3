#ifndef HOST_QUERY_PARSEUNITSCALE_H
#define HOST_QUERY_PARSEUNITSCALE_H

#include <zor4data/CGroundScale.h>

#include <string>

namespace zorcld
{

/// What --unit-scale says: metres of a unit, one number for all coordinates, or one for x and y, one for
/// heights.
/// @throws CUsageError
CGroundScale ParseUnitScale(const std::string& sScale);

} // namespace zorcld

#endif
