#ifndef ZOR3GEOM_DOBOOLOPERATION_H
#define ZOR3GEOM_DOBOOLOPERATION_H

#include <zor0lang/Export.h>
#include <zor3geom/BOOL_OP.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <vector>

namespace zor::geom
{

/// Combines two regions of the plane.
///
/// @param a       region; rings that touch or cross themselves or each other are repaired first: where a
///                ring crosses itself a place is inside by the odd-even rule, and holes are taken out of
///                the outer ring. A ring without area, of fewer than three points, or with a coordinate
///                that is not finite counts as empty.
/// @param b       the other region, of the same kind.
/// @param op      BOOL_OP_SUB; anything else gives nothing.
/// @param result  receives the parts of the result, rings without their closing point.
/// Throws std::bad_alloc only.
ZOR_API void DoBoolOperation(const TMultiPartPolygon& a, const TMultiPartPolygon& b, BOOL_OP op,
                             std::vector<TMultiPartPolygon>& result);

} // namespace zor::geom

#endif
