#ifndef ZOR4DATA_PICKPNT_H
#define ZOR4DATA_PICKPNT_H

#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_2D.h>
#include <zor3geom/PNT_3D.h>
#include <zor4data/Export.h>

#include <vector>

class CPntCld;

/// Finds the point under a cursor: of the live points in front of none of the planes that lie ahead along a
/// ray and within a cone about it, the one of smallest distance along the ray; of several, the lowest index.
///
/// @param cld        asked for its points.
/// @param from       where the ray begins, coordinate units.
/// @param direction  where it goes; of any length above 0.
/// @param dTan       the cone's opening: tangent of the angle between the ray and the cone's side, the
///                   size of so many pixels at distance 1. 0: only what lies on the ray as computed below.
/// @param planes     coordinate units, normals pointing out of the kept volume, as for `GetPnts_Clip`, but
///                   asked of every point by its own coordinates. Empty: every point.
/// @return the point's index; -1: none.
///
/// What is computed, in double: p, the coordinates that `GetPnt` gives; v = p - from; u, the direction
/// divided by its largest component's size and then by its length; t = v·u, summed in the order x, y, z; s,
/// the cross product v × u. A point is wanted when t > 0 and s·s ≤ (dTan·t)², and `IsInFrontOf(p)` holds for
/// no plane.
///
/// A direction of length 0, a negative `dTan`, a number that is not one or, but for `dTan`, not finite, a
/// coordinate of `from` beyond 1e150: -1. A cloud without octree is searched point by point; points stored
/// since the octree was built are searched where it believes them to be.
///
/// Cost: the octree from front to back, cubes that lie beside the cone or behind what was found left out.
/// Throws std::bad_alloc only.
ZOR4DATA_API int PickPnt(const CPntCld& cld, const zor::geom::PNT_3D& from,
                         const zor::geom::PNT_3D& direction, double dTan,
                         const std::vector<zor::geom::PLANE_3D>& planes);

/// Finds the live point nearest to a place in space; of several at the same distance the lowest index.
///
/// @param cld   asked for its points.
/// @param pnt   the place, coordinate units.
/// @param dMax  coordinate units, included; infinite: no limit.
/// @return the point's index; -1: none within `dMax`.
///
/// What is computed, in double: v = p - pnt with p the coordinates that `GetPnt` gives; d = v·v, summed in
/// the order x, y, z; wanted is the smallest d ≤ dMax·dMax. A negative `dMax`, a number that is not one, a
/// coordinate of `pnt` that is not finite or beyond 1e150: -1. Without an octree as `PickPnt`.
ZOR4DATA_API int FindNearestPnt(const CPntCld& cld, const zor::geom::PNT_3D& pnt, double dMax);

/// The same in plan view: heights are not looked at.
ZOR4DATA_API int FindNearestPnt2D(const CPntCld& cld, const zor::geom::PNT_2D& pnt, double dMax);

#endif
