#ifndef HOST_PICTURE_CNOISEMAP_H
#define HOST_PICTURE_CNOISEMAP_H

#include <host/picture/CPntRaster.h>
#include <host/picture/CSpacingMap.h>

#include <vector>

namespace zorcld
{

/// Tells noise of depths from form, place by place, by how much of the surroundings is kinked: edges of
/// things are lines with even places between them, noise is all over.
class CNoiseMap
{
public:
    /// @param vecDepth  depths of the raster, or what was made of them.
    /// @param fEdge     bends of more than so many times the distance between points are edges, not noise.
    CNoiseMap(const CPntRaster& raster, const std::vector<float>& vecDepth, const CSpacingMap& spacing,
              int nScale, float fEdge);

    /// How much of what bends there is noise: 0 nothing, 1 all.
    float GetShare(int x, int y) const { return Interpolate(m_vecShares, x, y); }

    /// How high kinks are in the mean, times the share of noise; raster pixels.
    float GetHeight(int x, int y) const { return Interpolate(m_vecHeights, x, y); }

private:
    struct CTile
    {
        float fSeen = 0.0F;   ///< pixels looked at
        float fKinked = 0.0F; ///< those where depth bends as sharply as no surface does
        float fLogSum = 0.0F; ///< logarithms of how much it bends there, raster pixels
    };

    void AddPixel(int x, int y, int nReach);
    CTile SumTiles(int xTile, int yTile) const;
    float Interpolate(const std::vector<float>& vecValues, int x, int y) const;

    const CPntRaster& m_raster;
    const std::vector<float>& m_vecDepth;
    float m_fEdge;
    int m_nEdge; // of a tile, raster pixels
    int m_nWidth;
    int m_nHeight;
    std::vector<CTile> m_vecTiles;
    std::vector<float> m_vecShares;
    std::vector<float> m_vecHeights;
};

} // namespace zorcld

#endif
