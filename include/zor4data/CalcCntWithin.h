#ifndef ZOR4DATA_CALCCNTWITHIN_H
#define ZOR4DATA_CALCCNTWITHIN_H

#include <zor4data/Export.h>
#include <zor4data/enumOutline.h>

#include <cstdint>

class CPntCld;
class IDlgProgress;
class IPntCldListener;

/// Delivers what `CPntCld::CalcCnt` delivers, but leaves off where the walk takes too long: at some distances
/// it runs into dead ends in most of a cloud before it comes back to its beginning, or finds that it cannot.
///
/// @param cld        is not changed.
/// @param pProgress  called once a point while points are joined, not during the walk; may be null.
/// @param pListener  receives the outline point by point; not null.
/// @param d          coordinate units: points at most so far apart belong together.
/// @param nMaxLooks  looks at points, segments and boxes of these that the walk may make, some 20 to 50
///                   nanoseconds each; the same on every machine. A walk may take a few more.
///
/// @return Outline_None for a cloud without point type or octree, too. Nothing is delivered unless
///         the outline is closed. Throws std::bad_alloc only.
ZOR4DATA_API enumOutline CalcCntWithin(const CPntCld& cld, IDlgProgress* pProgress,
                                       IPntCldListener* pListener, double d, std::int64_t nMaxLooks);

#endif
