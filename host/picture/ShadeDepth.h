#ifndef HOST_PICTURE_SHADEDEPTH_H
#define HOST_PICTURE_SHADEDEPTH_H

#include <host/picture/CPntRaster.h>
#include <host/picture/CSpacingMap.h>

namespace zorcld
{

/// Darkens what lies behind its surroundings (eye-dome lighting, measured against the plane of the
/// neighbours so that slopes stay even) and adds soft light from the upper left.
///
/// @param spacing    of the points: what lies nearer together than they do is not compared.
/// @param nScale     raster pixels a picture pixel.
/// @param fStrength  1 for colours that show no form of their own, less for photographed ones.
void ShadeDepth(CPntRaster& raster, const CSpacingMap& spacing, int nScale, float fStrength);

} // namespace zorcld

#endif
