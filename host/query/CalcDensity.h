#ifndef HOST_QUERY_CALCDENSITY_H
#define HOST_QUERY_CALCDENSITY_H

class CPntCld;

namespace zorcld
{

/// How densely a cloud covers the ground it covers, seen from above.
struct CDensity
{
    double dPntsPerArea = 0.0; ///< points a square unit; 0: the cloud covers no area
    double dSpacing = 0.0;     ///< edge of the square that belongs to one point, coordinate units
};

/// Divides the number of points by the area of the plan cells that hold any, the cells being of a size
/// that gives each some 16 points: holes and margins without points do not count.
CDensity CalcDensity(const CPntCld& cloud);

} // namespace zorcld

#endif
