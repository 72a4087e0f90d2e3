#ifndef HOST_PICTURE_FINDSURROUND_H
#define HOST_PICTURE_FINDSURROUND_H

#include <host/picture/CPntRaster.h>

namespace zorcld
{

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

/// Looks for pixels nearer to the viewer than `fNearer`, the first one on each of eight sides.
/// @param nReach        how far to look.
/// @param nSidesNeeded  the search ends as soon as it cannot find them on so many sides.
CSurround FindSurround(const CPntRaster& raster, int x, int y, int nReach, float fNearer, int nSidesNeeded);

} // namespace zorcld

#endif
