#ifndef HOST_QUERY_FINDQUERYBOUNDS_H
#define HOST_QUERY_FINDQUERYBOUNDS_H

#include <zor3geom/RECT_2D.h>

#include <optional>

namespace zorcld
{

struct CQueryOptions;

/// A rectangle that all points lie in that --rect, --line, --contour and --box leave; none: they may lie
/// anywhere.
/// @throws CUsageError, CFailure when a file of a contour cannot be read
std::optional<zor::geom::RECT_2D> FindQueryBounds(const CQueryOptions& options);

} // namespace zorcld

#endif
