#ifndef HOST_PICTURE_FILLGAPS_H
#define HOST_PICTURE_FILLGAPS_H

#include <host/picture/CPntRaster.h>
#include <host/picture/CSpacingMap.h>

namespace zorcld
{

/// Closes what discs leave open of a surface, however steep: a pixel that shows something far behind and has
/// nearer pixels on six of its eight sides takes their depth and colour. Where nothing is seen stays as it
/// is, and with two sides open outlines do too.
///
/// The nearer pixels may be 2.4 times the distance between points away, within 2 and 6 picture pixels.
/// @param nScale  raster pixels a picture pixel.
void FillGaps(CPntRaster& raster, const CSpacingMap& spacing, int nScale);

} // namespace zorcld

#endif
