#ifndef HOST_QUERY_PICKSTRETCHED_H
#define HOST_QUERY_PICKSTRETCHED_H

#include <host/query/Query.h>
#include <zor3geom/PNT_3D.h>

namespace zorcld
{

/// A cone about a ray, in coordinates multiplied by those of a stretch.
struct CStretchedCone
{
    zor::geom::PNT_3D from;
    zor::geom::PNT_3D direction; ///< of any length above 0
    double dTan = 0.0;           ///< of the angle between the ray and the cone's side
    zor::geom::PNT_3D stretch;   ///< what x, y and z are multiplied by; each above 0
};

/// The same as `PickPnt`, but what is ahead, first and within the cone is judged in stretched coordinates:
/// for clouds in degrees with heights in metres, whose cones are none in coordinate units.
///
/// @param query  no level of detail; the points that may be found.
/// @return the point's index; -1: none, as for a direction of length 0, a negative or unusable number.
///
/// Cost: the points of a pyramid around the cone are looked at one by one.
int PickStretched(const CPntCld& cloud, const CStretchedCone& cone, const CQuery& query);

} // namespace zorcld

#endif
