#ifndef ZOR3GEOM_CALCRECTPLANES_H
#define ZOR3GEOM_CALCRECTPLANES_H

#include <zor0lang/Export.h>
#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_3D.h>

#include <vector>

namespace zor::geom
{

/// The vertical planes through the edges of a rectangle, normals of length 1 pointing outwards: a point is
/// in front of none of them exactly when its plan position lies in the rectangle, edges included, as far as
/// rounding tells.
///
/// @param a          first corner. The corners come in order along the boundary, either way round; heights
///                   are not looked at. A rectangle may have no width, and then holds a stretch of a line.
/// @param b          second corner.
/// @param c          third corner.
/// @param d          fourth corner.
/// @param vecPlanes  receives the planes of the edges ab, bc, cd and da, each in the direction of its own
///                   edge; where an edge is so short that its corners tell no direction, all follow the
///                   longest. Where all corners are at one place,
///                   or the length of a side is not a finite number, everything is in front of each plane.
ZOR_API void CalcRectPlanes(const PNT_3D& a, const PNT_3D& b, const PNT_3D& c, const PNT_3D& d,
                            std::vector<PLANE_3D>& vecPlanes);

} // namespace zor::geom

#endif
