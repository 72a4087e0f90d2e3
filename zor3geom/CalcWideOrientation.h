#ifndef ZOR3GEOM_CALCWIDEORIENTATION_H
#define ZOR3GEOM_CALCWIDEORIENTATION_H

#include <zor3geom/PNT_2D.h>

namespace zor::geom
{

/// `CalcOrientation` for any finite coordinates: also where products overflow or vanish. Slow: some thousand
/// bits are added up. REQUIRES: finite coordinates.
int CalcWideOrientation(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p) noexcept;

} // namespace zor::geom

#endif
