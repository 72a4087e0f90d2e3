#ifndef FORMATS_MAXDEPTH_H
#define FORMATS_MAXDEPTH_H

#include <cstdint>

/// L8: depth of the deepest inner node. The root lies at depth 0, a leaf at depth 21 at most, and every walk
/// of a tree is a recursion no deeper than that.
constexpr std::int32_t c_nMaxDepth = 20;

#endif
