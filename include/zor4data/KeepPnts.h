#ifndef ZOR4DATA_KEEPPNTS_H
#define ZOR4DATA_KEEPPNTS_H

#include <zor4data/Export.h>

#include <vector>

class CPntCld;

/// Reduces a cloud to the listed points, whose coordinates and colours stay as they are: array and octree are
/// new, no point is selected or marked deleted, the cloud is modified and takes no further points. Copies of
/// it keep what they have.
///
/// @param cld         reduced.
/// @param vecIndices  indices of the cloud, each once. In this order the points go into the octree, which
///                    has an order of its own. None: a cloud without points.
///
/// `Morph` is `KeepPnts` with what `FindGround` found, byte for byte. A cloud without point type: nothing.
/// REQUIRES: indices of the cloud. Throws std::bad_alloc; the cloud is then as it was.
/// Cost: that of ComputeTree for the points that stay.
ZOR4DATA_API void KeepPnts(CPntCld& cld, const std::vector<int>& vecIndices);

#endif
