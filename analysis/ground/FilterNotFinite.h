#ifndef ANALYSIS_GROUND_FILTERNOTFINITE_H
#define ANALYSIS_GROUND_FILTERNOTFINITE_H

#include <analysis/ground/CMorphPnts.h>
#include <analysis/ground/CMorphWindowSeries.h>

#include <vector>

/// The part of `FilterWindow` for points that are not finite. They have no part in the surface, but are
/// measured against it all the same: one without a plan position has an empty window, one without a
/// height has that of its plan position.
///
/// Writes the entries of `vecStays` at their positions, and no others.
void FilterNotFinite(const CMorphPnts& pnts, const CMorphWindow& window,
                     std::vector<unsigned char>& vecStays);

#endif
