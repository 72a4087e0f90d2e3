#ifndef HOST_PICTURE_CSPACINGMAP_H
#define HOST_PICTURE_CSPACINGMAP_H

#include <cstddef>
#include <vector>

namespace zorcld
{

/// How far apart neighbouring points lie on a picture, place by place, in raster pixels.
struct CSpacingMap
{
    static constexpr int c_nTile = 8; ///< raster pixels, edge of a tile

    /// At a place inside the picture.
    float Get(int x, int y) const
    {
        return vecSpacing[static_cast<std::size_t>(y / c_nTile) * static_cast<std::size_t>(nWidth) +
                          static_cast<std::size_t>(x / c_nTile)];
    }

    int nWidth = 0; ///< tiles
    int nHeight = 0;
    std::vector<float> vecSpacing; ///< tile by tile, row by row
    float fTypical = 0.0F;         ///< mean over the points; 0 without points
};

} // namespace zorcld

#endif
