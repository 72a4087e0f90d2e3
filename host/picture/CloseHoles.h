#ifndef HOST_PICTURE_CLOSEHOLES_H
#define HOST_PICTURE_CLOSEHOLES_H

#include <host/picture/CPntRaster.h>

namespace zorcld
{

/// Fills the places where nothing is seen and no empty disc of this radius fits.
/// @param nRadius  raster pixels.
void CloseHoles(CPntRaster& raster, int nRadius);

} // namespace zorcld

#endif
