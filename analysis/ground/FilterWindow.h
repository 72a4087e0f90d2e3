#ifndef ANALYSIS_GROUND_FILTERWINDOW_H
#define ANALYSIS_GROUND_FILTERWINDOW_H

#include <analysis/ground/CMorphBuffers.h>
#include <analysis/ground/CMorphPnts.h>
#include <analysis/ground/CMorphProgress.h>
#include <analysis/ground/CMorphWindowSeries.h>

#include <vector>

/// One step of the ground filter: which points are less than the window's `fMaxDiff` above the surface
/// that is opened with it?
///
/// The window of a point is the closed square of edge `fSize` around it, both ends rounded to float; it
/// holds finite points only. Eroded: the least height in the window. Opened: the greatest eroded height
/// in the window. A point whose window is empty keeps its height.
///
/// @param buffers  contents do not matter before, and mean nothing after.
/// @return one entry a position, 1 for points that stay.
///
/// Cost: for points spread evenly, in proportion to their number; most are decided cell by cell. Throws
/// std::bad_alloc, and what the listener throws.
std::vector<unsigned char> FilterWindow(const CMorphPnts& pnts, const CMorphWindow& window,
                                        CMorphBuffers& buffers, CMorphProgress& progress);

#endif
