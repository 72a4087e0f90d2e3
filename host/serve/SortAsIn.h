#ifndef HOST_SERVE_SORTASIN_H
#define HOST_SERVE_SORTASIN_H

#include <cstdint>
#include <vector>

struct CPntArrays;

namespace zorcld
{

/// Brings the indices of some points of a cloud into the order in which a smaller cloud, made of these points
/// alone, has them.
///
/// @param part        the smaller cloud.
/// @param whole       where the points come from, with the same origin.
/// @param vecIndices  of `whole`, each once, as many as `part` has points, in any order. After that the one
///                    at position i is that of point i of `part`.
///
/// Points are told apart by place: of several at one place each may get the index of another. Cost: both are
/// sorted, with 8 bytes a point of `part`.
void SortAsIn(const CPntArrays& part, const CPntArrays& whole, std::vector<std::int32_t>& vecIndices);

} // namespace zorcld

#endif
