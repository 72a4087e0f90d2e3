#ifndef HOST_QUERY_CUTTOCORE_H
#define HOST_QUERY_CUTTOCORE_H

#include <zor3geom/RECT_2D.h>

#include <string>
#include <vector>

class CPntCld;

namespace zorcld
{

/// The rectangle that --core gives, coordinate units.
/// @throws CUsageError
zor::geom::RECT_2D ParseCore(const std::string& sCore);

/// By index, which points lie in the rectangle, its left and lower borders included, the others not. Decided
/// in the whole steps that a cloud stores, so that of rectangles with a border in common, and clouds of one
/// origin, each point is in one.
std::vector<bool> ChooseInCore(const CPntCld& cloud, const zor::geom::RECT_2D& core);

/// Removes the points that lie elsewhere; an octree is built if there are any.
void CutToCore(CPntCld& cloud, const zor::geom::RECT_2D& core);

} // namespace zorcld

#endif
