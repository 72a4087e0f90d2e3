#ifndef HOST_PICTURE_CPNTRASTER_H
#define HOST_PICTURE_CPNTRASTER_H

#include <cstddef>
#include <limits>
#include <vector>

namespace zorcld
{

/// A colour, 0 to 255 a channel, in floats so that shading does not round.
struct CRgb
{
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
};

/// A point on the picture: pixels from the upper left corner, depth in pixels too.
struct CScreenPnt
{
    float x;
    float y;
    float fDepth;
    unsigned char r;
    unsigned char g;
    unsigned char b;
};

/// A picture of points before it is shaded: what is seen at each pixel and how far away.
struct CPntRaster
{
    static constexpr float c_fEmpty = std::numeric_limits<float>::infinity();

    CPntRaster(int nW, int nH)
        : nWidth(nW), nHeight(nH),
          vecDepth(static_cast<std::size_t>(nW) * static_cast<std::size_t>(nH), c_fEmpty),
          vecColor(vecDepth.size())
    {
    }

    std::size_t GetIndex(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(nWidth) + static_cast<std::size_t>(x);
    }

    bool IsInside(int x, int y) const { return x >= 0 && y >= 0 && x < nWidth && y < nHeight; }

    int nWidth;
    int nHeight;
    std::vector<float> vecDepth; ///< c_fEmpty: nothing is seen
    std::vector<CRgb> vecColor;
};

/// Draws every point as a disc as large as the gaps between its neighbours on the picture, so that a
/// surface has no holes; where discs overlap the one in front is seen, at equal depth the nearer centre.
///
/// @param fMaxRadius  no disc is larger, pixels.
/// @return a typical distance between neighbours, pixels; 0 without points.
float DrawPnts(const std::vector<CScreenPnt>& vecPnts, float fMaxRadius, CPntRaster& raster);

/// Closes what discs leave open of a surface: a pixel that shows something far behind and has nearer pixels
/// around it takes their depth and colour. Where nothing is seen stays as it is.
///
/// @param nReach        how far away the nearer pixels may be.
/// @param nSidesNeeded  of the eight sides around it, on how many there must be one: with 6 or more
///                      outlines stay as they are.
void FillGaps(CPntRaster& raster, int nReach, int nSidesNeeded);

/// Fills where nothing is seen and no empty disc of this radius fits.
void CloseHoles(CPntRaster& raster, int nRadius);

/// Darkens what lies behind its surroundings (eye-dome lighting, measured against the plane of the
/// neighbours so that slopes stay even) and adds soft light from the upper left.
///
/// @param nScale     raster pixels a picture pixel.
/// @param fSpacing   distance between neighbouring points, raster pixels.
/// @param fStrength  1 for colours that show no form of their own, less for photographed ones.
void ShadeDepth(CPntRaster& raster, int nScale, float fSpacing, float fStrength);

} // namespace zorcld

#endif
