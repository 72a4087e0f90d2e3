#ifndef FORMATS_MAXDEPTH_H
#define FORMATS_MAXDEPTH_H

#include <cstdint>

/// Depth of the deepest inner node: the root lies at depth 0, a leaf at depth 21 at most. Every walk of a
/// tree is a recursion no deeper than that.
constexpr std::int32_t c_nMaxDepth = 20;

#endif
