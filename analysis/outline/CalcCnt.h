#ifndef ANALYSIS_OUTLINE_CALCCNT_H
#define ANALYSIS_OUTLINE_CALCCNT_H

#include <octree/COcTreeData.h>

#include <zor4data/enumOutline.h>

#include <cstdint>

class IDlgProgress;
class IPntCldListener;

/// Delivers the outline in plan view of the largest cluster of a store, one point a call.
///
/// @param pProgress  called once a point of the store; may be null.
/// @param d          coordinate units: points at most so far apart belong together.
///
/// @return false, and nothing is delivered, without a tree (no call at all is made), with a tree
///         without a root, and when no closed outline is found.
///
/// Tells the colour listener the height range once. Cost: about one look at each point's
/// neighbourhood, and one at every corner's; memory: at most 5 bytes a point and 6 bytes a corner,
/// and where the walk takes long (`COutlineWalk`) 22 bytes a point and 40 a corner.
/// Throws std::bad_alloc, before anything is delivered.
template <class T>
bool CalcCnt(const COcTreeData<T>& store, IDlgProgress* pProgress, IPntCldListener* pListener, double d);

/// The same, but leaves off a walk that makes more than so many looks (`COutlineWalk::GetNumLooks`).
template <class T>
enumOutline CalcCntWithin(const COcTreeData<T>& store, IDlgProgress* pProgress, IPntCldListener* pListener,
                          double d, std::int64_t nMaxLooks);

class CTruncPnt;
class CTruncPnt_Color;
extern template bool CalcCnt(const COcTreeData<CTruncPnt>&, IDlgProgress*, IPntCldListener*, double);
extern template bool CalcCnt(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*, IPntCldListener*, double);
extern template enumOutline CalcCntWithin(const COcTreeData<CTruncPnt>&, IDlgProgress*, IPntCldListener*,
                                          double, std::int64_t);
extern template enumOutline CalcCntWithin(const COcTreeData<CTruncPnt_Color>&, IDlgProgress*,
                                          IPntCldListener*, double, std::int64_t);

#endif
