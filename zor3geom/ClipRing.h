#ifndef ZOR3GEOM_CLIPRING_H
#define ZOR3GEOM_CLIPRING_H

#include <zor3geom/PNT_2D.h>
#include <zor3geom/RECT_2D.h>

#include <vector>

namespace zor::geom
{

/// Cuts a ring down to a box (I. E. Sutherland and G. W. Hodgman, "Reentrant Polygon Clipping", 1974).
///
/// Inside the box the ring is what it was, by the odd-even rule too. What lies outside is led along the
/// box's sides, where the new ring may run over itself.
///
/// @param ring  closing edge implied, finite coordinates; replaced by the new ring, which is empty where all
///              of it lies beyond one side.
/// @param box   not inside out.
void ClipRing(std::vector<PNT_2D>& ring, const RECT_2D& box);

} // namespace zor::geom

#endif
