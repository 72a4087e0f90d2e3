#ifndef ZOR4DATA_FINDGROUND_H
#define ZOR4DATA_FINDGROUND_H

#include <zor4data/CGroundScale.h>
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

/// Finds the ground points of a cloud whose coordinates are not in metres: a copy of it in metres goes
/// through the filter.
///
/// @param cld        asked for its points.
/// @param scale      metres of its units. One: as `FindGround`.
/// @param pListener  told of the progress; null: no calls.
/// @param vecGround  receives indices, ascending. Points that share a place in 1/10000 of a metre are ground
///                   all or none.
/// @return false where a point lies farther from the cloud's origin, in metres, than a cloud reaches
/// (214747);
///         `vecGround` then stays.
///
/// Points marked deleted are none of them. REQUIRES and exceptions as `FindGround`. Cost: that of `Morph` for
/// the copy, and a sort of its points.
ZOR4DATA_API bool FindGround_Scaled(const CPntCld& cld, const CGroundScale& scale,
                                    IPclProgressListener* pListener, std::vector<int>& vecGround);

#endif
