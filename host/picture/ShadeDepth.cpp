#include <host/picture/ShadeDepth.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr float c_fDomeStrength = 0.9F;
constexpr float c_fDomeLimit = 1.2F;                            // steps steeper than this darken no further
constexpr float c_fLightShare = 0.42F;                          // the rest falls evenly from everywhere
constexpr std::array<float, 3> c_light = {-0.45F, 0.60F, 1.0F}; // right, up, towards the viewer

/// One round of smoothing: the mean of a pixel and of those `nStep` away that are about as deep.
void SmoothOnce(const CPntRaster& raster, int nStep, float fNear, const std::vector<float>& vecFrom,
                std::vector<float>& vecTo)
{
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const float fDepth = vecFrom[raster.GetIndex(x, y)];
            if (fDepth == CPntRaster::c_fEmpty)
                continue;
            float fSum = 0.0F;
            float fNum = 0.0F;
            for (int ySide = y - nStep; ySide <= y + nStep; ySide += nStep)
                for (int xSide = x - nStep; xSide <= x + nStep; xSide += nStep)
                {
                    if (!raster.IsInside(xSide, ySide))
                        continue;
                    const float fSide = vecFrom[raster.GetIndex(xSide, ySide)];
                    if (!(std::fabs(fSide - fDepth) < fNear))
                        continue;
                    fSum += fSide;
                    fNum += 1.0F;
                }
            vecTo[raster.GetIndex(x, y)] = fSum / fNum;
        }
}

/// Smooths over a few points' distance, edges kept, so that one point's noise and its disc do not shade:
/// rounds of doubled steps reach far with few looks.
std::vector<float> SmoothDepth(const CPntRaster& raster, int nScale, float fSpacing)
{
    const float fNear = 6.0F * static_cast<float>(nScale) + 2.5F * fSpacing;
    std::vector<float> vecSmooth(raster.vecDepth);
    std::vector<float> vecNext(raster.vecDepth);
    for (int nStep = 1; nStep <= 2 || static_cast<float>(nStep) < fSpacing; nStep *= 2)
    {
        SmoothOnce(raster, nStep, fNear, vecSmooth, vecNext);
        vecSmooth.swap(vecNext);
    }
    return vecSmooth;
}

class CShader
{
public:
    CShader(const CPntRaster& raster, int nScale, float fSpacing, float fStrength)
        : m_raster(raster), m_nReach(std::max(nScale, static_cast<int>(std::lround(0.7F * fSpacing)))),
          m_fStrength(fStrength), m_vecDepth(SmoothDepth(raster, nScale, fSpacing))
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
        static constexpr std::array<int, 3> c_radii = {1, 2, 5};
        static constexpr std::array<float, 3> c_weights = {0.5F, 0.5F, 0.35F}; // wide halos stay faint
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        float fBehind = 0.0F;
        for (std::size_t k = 0; k < c_radii.size(); ++k)
        {
            const int n = c_radii[k] * m_nReach;
            float fSum = 0.0F;
            for (const auto& dir : c_dirs)
            {
                const float f1 = GetDepth(x + n * dir[0], y + n * dir[1], fDepth);
                const float f2 = GetDepth(x - n * dir[0], y - n * dir[1], fDepth);
                const float fBelow = (fDepth - 0.5F * (f1 + f2)) / static_cast<float>(n);
                fSum += std::clamp(fBelow, 0.0F, c_fDomeLimit);
            }
            fBehind += c_weights[k] * fSum / static_cast<float>(c_dirs.size());
        }
        return std::exp(-m_fStrength * c_fDomeStrength * fBehind);
    }

    float CalcLight(int x, int y) const
    {
        const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
        const int n = m_nReach;
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
    int m_nReach; // raster pixels between a place and the nearest it is compared with
    float m_fStrength;
    std::vector<float> m_vecDepth;
};

} // namespace

void ShadeDepth(CPntRaster& raster, int nScale, float fSpacing, float fStrength)
{
    const CShader shader(raster, nScale, fSpacing, fStrength);
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

} // namespace zorcld
