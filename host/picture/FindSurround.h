#ifndef HOST_PICTURE_FINDSURROUND_H
#define HOST_PICTURE_FINDSURROUND_H

#include <host/picture/CPntRaster.h>

#include <array>

namespace zorcld
{

/// Sums up pixels found around one, by distance.
class CSurround
{
public:
    void Add(float fDepth, const CRgbBytes& color, int nSteps)
    {
        const float fWeight = 1.0F / static_cast<float>(nSteps * nSteps);
        ++m_nSides;
        m_fWeight += fWeight;
        m_fDepth += fWeight * fDepth;
        m_color.r += fWeight * static_cast<float>(color.r);
        m_color.g += fWeight * static_cast<float>(color.g);
        m_color.b += fWeight * static_cast<float>(color.b);
    }

    int GetNumSides() const { return m_nSides; }
    float GetDepth() const { return m_fDepth / m_fWeight; }
    CRgbBytes GetColor() const
    {
        return BytesFromRgb({m_color.r / m_fWeight, m_color.g / m_fWeight, m_color.b / m_fWeight});
    }

private:
    int m_nSides = 0;
    float m_fWeight = 0.0F;
    float m_fDepth = 0.0F;
    CRgb m_color;
};

/// The steps to the eight sides of a pixel, opposite ones four apart.
struct CStep
{
    int x;
    int y;
};
constexpr std::array<CStep, 8> c_steps = {
    {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}};

/// Looks for pixels that `isTaken(x, y)` takes, the first one on each of eight sides.
/// @param nReach  how far to look.
template <class TIsTaken>
CSurround FindSurround(const CPntRaster& raster, int x, int y, int nReach, TIsTaken isTaken)
{
    CSurround surround;
    for (const CStep& step : c_steps)
        for (int n = 1; n <= nReach; ++n)
        {
            const int xSide = x + n * step.x;
            const int ySide = y + n * step.y;
            if (!raster.IsInside(xSide, ySide))
                break;
            if (!isTaken(xSide, ySide))
                continue;
            const std::size_t i = raster.GetIndex(xSide, ySide);
            surround.Add(raster.vecDepth[i], raster.vecColor[i], n);
            break;
        }
    return surround;
}

} // namespace zorcld

#endif
