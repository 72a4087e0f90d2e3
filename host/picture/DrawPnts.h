#ifndef HOST_PICTURE_DRAWPNTS_H
#define HOST_PICTURE_DRAWPNTS_H

#include <host/picture/CPntRaster.h>
#include <host/picture/CScreenPnt.h>
#include <host/picture/CSpacingMap.h>

#include <vector>

namespace zorcld
{

/// Draws every point as a disc as large as the gaps between its neighbours on the picture, so that a
/// surface has no holes; where discs overlap the one in front is seen, at equal depth the nearer centre.
///
/// @param fMaxRadius  no disc is larger, raster pixels.
/// @return how far apart neighbours lie.
CSpacingMap DrawPnts(const std::vector<CScreenPnt>& vecPnts, float fMaxRadius, CPntRaster& raster);

/// Draws every point as a disc of the same radius, raster pixels.
CSpacingMap DrawDiscs(const std::vector<CScreenPnt>& vecPnts, float fRadius, CPntRaster& raster);

} // namespace zorcld

#endif
