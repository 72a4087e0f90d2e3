#include <host/picture/ShadeDepth.h>

#include <host/picture/SmoothDepth.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr float c_fDomeStrength = 0.9F;
constexpr float c_fNoise = 4.5F;  // noise bends by no more, times the distance between points
constexpr float c_fNoDome = 0.7F; // what lies behind by no more, times the height of noise, is not darkened
constexpr float c_fDomeLimit = 1.2F;                            // steps steeper than this darken no further
constexpr float c_fLightShare = 0.42F;                          // the rest falls evenly from everywhere
constexpr std::array<float, 3> c_light = {-0.45F, 0.60F, 1.0F}; // right, up, towards the viewer

class CShader
{
public:
    CShader(const CPntRaster& raster, const CSpacingMap& spacing, int nScale, float fStrength)
        : m_raster(raster), m_spacing(spacing), m_nScale(nScale), m_fStrength(fStrength),
          m_noise(raster, raster.vecDepth, spacing, nScale, c_fNoise),
          m_vecDepth(SmoothDepth(raster, spacing, m_noise, nScale))
    {
    }

    float CalcFactor(int x, int y) const
    {
        const int n = std::max(m_nScale, static_cast<int>(std::lround(0.7F * m_spacing.Get(x, y))));
        return CalcDome(x, y, n) * CalcLight(x, y, n);
    }

private:
    /// Depth at a place, or `fElse` where nothing is seen.
    float GetDepth(int x, int y, float fElse) const
    {
        if (!m_raster.IsInside(x, y))
            return fElse;
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        return fDepth == CPntRaster::c_fEmpty ? fElse : fDepth;
    }

    /// @param nReach  raster pixels between a place and the nearest it is compared with.
    float CalcDome(int x, int y, int nReach) const
    {
        static constexpr std::array<std::array<int, 2>, 4> c_dirs = {{{1, 0}, {0, 1}, {1, 1}, {1, -1}}};
        static constexpr std::array<int, 3> c_radii = {1, 2, 5};
        static constexpr std::array<float, 3> c_weights = {0.5F, 0.5F, 0.35F}; // wide halos stay faint
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        const float fNoise = c_fNoDome * m_noise.GetHeight(x, y);
        float fBehind = 0.0F;
        for (std::size_t k = 0; k < c_radii.size(); ++k)
        {
            const int n = c_radii[k] * nReach;
            float fSum = 0.0F;
            for (const auto& dir : c_dirs)
            {
                const float f1 = GetDepth(x + n * dir[0], y + n * dir[1], fDepth);
                const float f2 = GetDepth(x - n * dir[0], y - n * dir[1], fDepth);
                const float fBelow = (fDepth - 0.5F * (f1 + f2) - fNoise) / static_cast<float>(n);
                fSum += std::clamp(fBelow, 0.0F, c_fDomeLimit);
            }
            fBehind += c_weights[k] * fSum / static_cast<float>(c_dirs.size());
        }
        return std::exp(-m_fStrength * c_fDomeStrength * (1.0F - c_fNoDome * m_noise.GetShare(x, y)) *
                        fBehind);
    }

    float CalcLight(int x, int y, int n) const
    {
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        const auto slope = [&](float f1, float f2)
        { return std::clamp((f2 - f1) / static_cast<float>(2 * n), -1.5F, 1.5F); };
        const float fRight = slope(GetDepth(x - n, y, fDepth), GetDepth(x + n, y, fDepth));
        const float fUp = slope(GetDepth(x, y + n, fDepth), GetDepth(x, y - n, fDepth));
        const float fLength = std::sqrt(fRight * fRight + fUp * fUp + 1.0F);
        const float fLit = (fRight * c_light[0] + fUp * c_light[1] + c_light[2]) / fLength;
        const float fShare = m_fStrength * c_fLightShare;
        return 1.0F - fShare + fShare * std::clamp(fLit, 0.0F, 1.35F);
    }

    const CPntRaster& m_raster;
    const CSpacingMap& m_spacing;
    int m_nScale;
    float m_fStrength;
    CNoiseMap m_noise;
    std::vector<float> m_vecDepth;
};

} // namespace

void ShadeDepth(CPntRaster& raster, const CSpacingMap& spacing, int nScale, float fStrength)
{
    const CShader shader(raster, spacing, nScale, fStrength);
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const std::size_t i = raster.GetIndex(x, y);
            if (raster.vecDepth[i] == CPntRaster::c_fEmpty)
                continue;
            const float fFactor = shader.CalcFactor(x, y);
            const CRgb color = RgbFromBytes(raster.vecColor[i]);
            raster.vecColor[i] = BytesFromRgb({color.r * fFactor, color.g * fFactor, color.b * fFactor});
        }
}

} // namespace zorcld
