#include <host/picture/CPntRaster.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr float c_fDomeStrength = 0.85F;
constexpr float c_fDomeLimit = 1.6F;                            // steps steeper than this darken no further
constexpr float c_fLightShare = 0.42F;                          // the rest falls evenly from everywhere
constexpr std::array<float, 3> c_light = {-0.45F, 0.60F, 1.0F}; // right, up, towards the viewer

/// Mean depth of a pixel and its neighbours of about the same depth: one point's noise does not shade.
std::vector<float> SmoothDepth(const CPntRaster& raster, int nReach, float fNear)
{
    std::vector<float> vecSmooth(raster.vecDepth);
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const float fDepth = raster.vecDepth[raster.GetIndex(x, y)];
            if (fDepth == CPntRaster::c_fEmpty)
                continue;
            float fSum = 0.0F;
            float fNum = 0.0F;
            for (int ySide = std::max(0, y - nReach); ySide <= std::min(raster.nHeight - 1, y + nReach);
                 ++ySide)
                for (int xSide = std::max(0, x - nReach); xSide <= std::min(raster.nWidth - 1, x + nReach);
                     ++xSide)
                {
                    const float fSide = raster.vecDepth[raster.GetIndex(xSide, ySide)];
                    if (!(std::fabs(fSide - fDepth) < fNear))
                        continue;
                    fSum += fSide;
                    fNum += 1.0F;
                }
            vecSmooth[raster.GetIndex(x, y)] = fSum / fNum;
        }
    return vecSmooth;
}

class CShader
{
public:
    CShader(const CPntRaster& raster, int nScale)
        : m_raster(raster), m_nScale(nScale),
          m_vecDepth(SmoothDepth(raster, nScale, 6.0F * static_cast<float>(nScale)))
    {
    }

    float CalcFactor(int x, int y) const { return CalcDome(x, y) * CalcLight(x, y); }

private:
    /// Depth at a place, or `fElse` where nothing is seen.
    float GetDepth(int x, int y, float fElse) const
    {
        if (!m_raster.IsInside(x, y))
            return fElse;
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        return fDepth == CPntRaster::c_fEmpty ? fElse : fDepth;
    }

    float CalcDome(int x, int y) const
    {
        static constexpr std::array<std::array<int, 2>, 4> c_dirs = {{{1, 0}, {0, 1}, {1, 1}, {1, -1}}};
        static constexpr std::array<int, 3> c_radii = {1, 3, 8};
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        float fBehind = 0.0F;
        for (const int nRadius : c_radii)
        {
            const int n = nRadius * m_nScale;
            float fSum = 0.0F;
            for (const auto& dir : c_dirs)
            {
                const float f1 = GetDepth(x + n * dir[0], y + n * dir[1], fDepth);
                const float f2 = GetDepth(x - n * dir[0], y - n * dir[1], fDepth);
                const float fBelow = (fDepth - 0.5F * (f1 + f2)) / static_cast<float>(n);
                fSum += std::clamp(fBelow, 0.0F, c_fDomeLimit);
            }
            fBehind += fSum / static_cast<float>(c_dirs.size());
        }
        return std::exp(-c_fDomeStrength * fBehind);
    }

    float CalcLight(int x, int y) const
    {
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        const int n = m_nScale;
        const auto slope = [&](float f1, float f2)
        { return std::clamp((f2 - f1) / static_cast<float>(2 * n), -1.5F, 1.5F); };
        const float fRight = slope(GetDepth(x - n, y, fDepth), GetDepth(x + n, y, fDepth));
        const float fUp = slope(GetDepth(x, y + n, fDepth), GetDepth(x, y - n, fDepth));
        const float fLength = std::sqrt(fRight * fRight + fUp * fUp + 1.0F);
        const float fLit = (fRight * c_light[0] + fUp * c_light[1] + c_light[2]) / fLength;
        return 1.0F - c_fLightShare + c_fLightShare * std::clamp(fLit, 0.0F, 1.35F);
    }

    const CPntRaster& m_raster;
    int m_nScale;
    std::vector<float> m_vecDepth;
};

} // namespace

void ShadeDepth(CPntRaster& raster, int nScale)
{
    const CShader shader(raster, nScale);
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const std::size_t i = raster.GetIndex(x, y);
            if (raster.vecDepth[i] == CPntRaster::c_fEmpty)
                continue;
            const float fFactor = shader.CalcFactor(x, y);
            CRgb& color = raster.vecColor[i];
            color = {color.r * fFactor, color.g * fFactor, color.b * fFactor};
        }
}
