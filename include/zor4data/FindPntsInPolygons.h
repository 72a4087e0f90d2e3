#ifndef ZOR4DATA_FINDPNTSINPOLYGONS_H
#define ZOR4DATA_FINDPNTSINPOLYGONS_H

#include <zor3geom/TMultiPartPolygon.h>
#include <zor4data/Export.h>

#include <vector>

class CPntCld;
class IPntCldListener;

/// Delivers exactly the points of a cloud that are inside any of the polygons, or those that are outside all
/// of them, as seen from above. Points marked deleted are left out, and every other one comes once at most,
/// however many polygons hold it.
///
/// A point is inside when it lies on an edge of any ring, of a hole too, or in the outer ring of a polygon
/// and not inside one of this polygon's holes. Where a ring crosses itself, a place is in it when a ray from
/// it leaves through an odd number of edges. The decision is exact for the coordinates that the library
/// delivers and those of the rings: a point is on an edge when it lies on the segment between the two
/// corners, and nowhere beside it.
///
/// @param cld        asked for its points.
/// @param pListener  receives the points; the array it is given is reused after each call. Null: nobody does.
/// @param polygons   coordinate units. Closing edges are implied, rings may be given closed and run
///                   either way round; polygons may overlap, and holes each other and the outer ring. A
///                   polygon whose outer ring has fewer than three points, or a coordinate that is not
///                   finite, counts as not there; so does such a hole. A ring without area holds what lies on
///                   it. No polygons: every point is outside. Above 1e150, and nearer to 0 than 1e-140
///                   without being 0, rounding may decide.
/// @param bOutside   deliver the points outside instead.
/// @param nBatch     records per OnPnts call, the last may be shorter; below 1 counts as 1.
///
/// Calls SetZRange of the colour listener once, then OnPnts; nothing after the last batch. Order: leaf by
/// leaf, octants 0 to 7, as `CPntCld::GetPnts_Clip`; without an octree every point is looked at, in index
/// order. A cloud without point type: no call at all. Points that the octree does not know (stored after it
/// was built, or of a damaged file filed in a cube they do not lie in) may be delivered or left out.
/// REQUIRES: the polygons do not change while the query runs. Throws std::bad_alloc only.
/// Cost: whole subtrees are taken or left out untested; near an edge a point is tested against the edges
/// of its own leaf. Memory grows with the corners, not with the points.
ZOR4DATA_API void FindPntsInPolygons(const CPntCld& cld, IPntCldListener* pListener,
                                     const std::vector<zor::geom::TMultiPartPolygon>& polygons, bool bOutside,
                                     int nBatch);

#endif
