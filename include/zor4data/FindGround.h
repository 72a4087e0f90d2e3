#ifndef ZOR4DATA_FINDGROUND_H
#define ZOR4DATA_FINDGROUND_H

#include <zor4data/Export.h>

#include <vector>

class CPntCld;
class IPclProgressListener;

/// Finds the ground points of a cloud, those that `CPntCld::Morph` would keep, and leaves it as it is.
///
/// @param cld        asked for its points.
/// @param pListener  told of the progress; null: no calls.
/// @return indices, ascending; none for a cloud without point type.
///
/// The progressive morphological filter of `Morph`, which names its sizes. REQUIRES: no point is marked
/// deleted. Throws std::bad_alloc; what the listener throws passes through. Cost: that of Morph less its
/// octree.
ZOR4DATA_API std::vector<int> FindGround(const CPntCld& cld, IPclProgressListener* pListener);

#endif
