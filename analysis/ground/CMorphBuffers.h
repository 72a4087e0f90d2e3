#ifndef ANALYSIS_GROUND_CMORPHBUFFERS_H
#define ANALYSIS_GROUND_CMORPHBUFFERS_H

#include <analysis/ground/CCellPnt.h>
#include <analysis/ground/TReusedArray.h>

/// The large arrays of the ground filter, one entry a point: fresh memory for each window would cost as much
/// as a pass over the points. One window at a time uses them.
struct CMorphBuffers
{
    TReusedArray<CCellPnt> pnts; ///< for CWindowCells
    TReusedArray<float> heights; ///< for CErodedHeights
};

#endif
