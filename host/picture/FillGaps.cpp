#include <host/picture/CPntRaster.h>

#include <array>
#include <cmath>

namespace
{

struct CStep
{
    int x;
    int y;
};

constexpr std::array<CStep, 8> c_steps = {
    {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}};

/// Sums up the nearer pixels found around one, by distance.
class CSurround
{
public:
    void Add(float fDepth, const CRgb& color, int nSteps)
    {
        const float fWeight = 1.0F / static_cast<float>(nSteps * nSteps);
        ++m_nSides;
        m_fWeight += fWeight;
        m_fDepth += fWeight * fDepth;
        m_color.r += fWeight * color.r;
        m_color.g += fWeight * color.g;
        m_color.b += fWeight * color.b;
    }

    int GetNumSides() const { return m_nSides; }
    float GetDepth() const { return m_fDepth / m_fWeight; }
    CRgb GetColor() const { return {m_color.r / m_fWeight, m_color.g / m_fWeight, m_color.b / m_fWeight}; }

private:
    int m_nSides = 0;
    float m_fWeight = 0.0F;
    float m_fDepth = 0.0F;
    CRgb m_color;
};

CSurround FindSurround(const CPntRaster& raster, int x, int y, int nReach, float fNearer, int nSidesNeeded)
{
    CSurround surround;
    for (std::size_t k = 0; k < c_steps.size(); ++k)
    {
        if (static_cast<int>(k) - surround.GetNumSides() > static_cast<int>(c_steps.size()) - nSidesNeeded)
            break; // can no longer be enough
        for (int n = 1; n <= nReach; ++n)
        {
            const int xSide = x + n * c_steps[k].x;
            const int ySide = y + n * c_steps[k].y;
            if (!raster.IsInside(xSide, ySide))
                break;
            const std::size_t i = raster.GetIndex(xSide, ySide);
            if (!(raster.vecDepth[i] < fNearer))
                continue;
            surround.Add(raster.vecDepth[i], raster.vecColor[i], n);
            break;
        }
    }
    return surround;
}

} // namespace

void FillGaps(CPntRaster& raster, int nReach, int nSidesNeeded, bool bEmptyOnly)
{
    const CPntRaster before = raster;
    const float fBehind = 4.0F * static_cast<float>(nReach); // a slope of more is not a gap's neighbour
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const std::size_t i = raster.GetIndex(x, y);
            const float fDepth = before.vecDepth[i]; // infinite where nothing is seen
            if (bEmptyOnly && fDepth != CPntRaster::c_fEmpty)
                continue;
            const CSurround surround = FindSurround(before, x, y, nReach, fDepth - fBehind, nSidesNeeded);
            if (surround.GetNumSides() < nSidesNeeded)
                continue;
            raster.vecDepth[i] = surround.GetDepth();
            raster.vecColor[i] = surround.GetColor();
        }
}
