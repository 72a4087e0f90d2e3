#ifndef HOST_PICTURE_FILLGAPS_H
#define HOST_PICTURE_FILLGAPS_H

#include <host/picture/CPntRaster.h>

namespace zorcld
{

/// Closes what discs leave open of a surface: a pixel that shows something far behind and has nearer pixels
/// around it takes their depth and colour. Where nothing is seen stays as it is.
///
/// @param nReach        how far away the nearer pixels may be.
/// @param nSidesNeeded  of the eight sides around it, on how many there must be one: with 6 or more
///                      outlines stay as they are.
void FillGaps(CPntRaster& raster, int nReach, int nSidesNeeded);

} // namespace zorcld

#endif
