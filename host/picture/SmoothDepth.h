#ifndef HOST_PICTURE_SMOOTHDEPTH_H
#define HOST_PICTURE_SMOOTHDEPTH_H

#include <host/picture/CNoiseMap.h>
#include <host/picture/CPntRaster.h>
#include <host/picture/CSpacingMap.h>

#include <vector>

namespace zorcld
{

/// Smooths depths over the distance between points, so that one point's noise and its disc do not shade:
/// slopes of any steepness stay as they are, and so do edges. Where kinks are everywhere (the steps in which
/// depth cameras measure, surfaces seen at a low angle) they are noise, not form: there it smooths farther
/// and over as much as the kinks are high.
///
/// @param nScale  raster pixels a picture pixel.
/// @return depths, c_fEmpty where nothing is seen.
std::vector<float> SmoothDepth(const CPntRaster& raster, const CSpacingMap& spacing, const CNoiseMap& noise,
                               int nScale);

} // namespace zorcld

#endif
