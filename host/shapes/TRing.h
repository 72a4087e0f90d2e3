#ifndef HOST_SHAPES_TRING_H
#define HOST_SHAPES_TRING_H

#include <zor3geom/PNT_2D.h>

#include <vector>

namespace zorcld
{

/// The corners of a polygon or of a line in plan view, coordinate units.
using TRing = std::vector<zor::geom::PNT_2D>;

/// Does the ring end where it begins? A single corner does not.
bool IsClosed(const TRing& ring);

/// The ring with its first corner again at the end.
TRing MakeClosed(TRing ring);

/// @throws std::runtime_error when the ring has fewer than three corners, the first one again at the end not
/// counted.
void ExpectCorners(const TRing& ring);

/// The ring's length, its closing edge included, coordinate units.
double CalcLength(const TRing& ring);

/// The ring's area, square units: negative when it runs clockwise.
double CalcSignedArea(const TRing& ring);

} // namespace zorcld

#endif
