#ifndef HOST_PICTURE_DRAWPNTS_H
#define HOST_PICTURE_DRAWPNTS_H

#include <host/picture/CPntRaster.h>
#include <host/picture/CScreenPnt.h>

#include <vector>

namespace zorcld
{

/// Draws every point as a disc as large as the gaps between its neighbours on the picture, so that a
/// surface has no holes; where discs overlap the one in front is seen, at equal depth the nearer centre.
///
/// @param fMaxRadius  no disc is larger, pixels.
/// @return a typical distance between neighbours, pixels; 0 without points.
float DrawPnts(const std::vector<CScreenPnt>& vecPnts, float fMaxRadius, CPntRaster& raster);

} // namespace zorcld

#endif
