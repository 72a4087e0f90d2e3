#ifndef HOST_PICTURE_FINDATTRIBUTES_H
#define HOST_PICTURE_FINDATTRIBUTES_H

#include <host/query/Query.h>

#include <cstdint>
#include <vector>

class CPntCld;

namespace zorcld
{

/// @param cloud  with an attribute in the place of colours.
/// @return how many points of the query, thinned or not, have which attribute: 65536 numbers.
std::vector<std::uint32_t> CountAttributes(const CPntCld& cloud, CQuery query);

/// A range of intensities.
struct CIntensityRange
{
    double dMin = 0.0;
    double dMax = 0.0;
};

/// The range that leaves out the highest and the lowest, so that a few glints do not take the greys away: the
/// 2nd to the 98th percentile, as with heights.
CIntensityRange FindIntensities(const std::vector<std::uint32_t>& vecCounts);

} // namespace zorcld

#endif
