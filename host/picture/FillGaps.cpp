#include <host/picture/FillGaps.h>

#include <host/picture/FindSurround.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr int c_nSidesNeeded = 6;
constexpr std::size_t c_nAxes = c_steps.size() / 2;

/// Looks for what lies in front of a pixel.
class CGapFinder
{
public:
    CGapFinder(const CPntRaster& raster, int x, int y, int nReach)
        : m_raster(raster), m_x(x), m_y(y), m_nReach(nReach), m_fDepth(raster.vecDepth[raster.GetIndex(x, y)])
    {
    }

    CSurround Find() const
    {
        CSurround surround;
        for (std::size_t k = 0; k < c_nAxes; ++k)
        {
            AddAxis(c_steps[k], surround);
            if (surround.GetNumSides() + 2 * static_cast<int>(c_nAxes - 1 - k) < c_nSidesNeeded)
                break; // can no longer be enough
        }
        return surround;
    }

private:
    float GetDepth(int n, const CStep& step) const
    {
        const int x = m_x + n * step.x;
        const int y = m_y + n * step.y;
        if (!m_raster.IsInside(x, y))
            return CPntRaster::c_fEmpty;
        return m_raster.vecDepth[m_raster.GetIndex(x, y)];
    }

    void Add(int n, const CStep& step, CSurround& surround) const
    {
        const std::size_t i = m_raster.GetIndex(m_x + n * step.x, m_y + n * step.y);
        surround.Add(m_raster.vecDepth[i], m_raster.vecColor[i], n);
    }

    /// Each side by itself must be nearer by more than a slope may be; both together only by more than noise,
    /// since what a slope adds to one side it takes from the other.
    void AddAxis(const CStep& step, CSurround& surround) const
    {
        const CStep back{-step.x, -step.y};
        const auto fReach = static_cast<float>(m_nReach);
        const float fFront = m_fDepth - 4.0F * fReach;
        int nAhead = 0;
        int nBack = 0;
        for (int n = 1; n <= m_nReach && (nAhead == 0 || nBack == 0); ++n)
        {
            const float f1 = GetDepth(n, step);
            const float f2 = GetDepth(n, back);
            const bool bSlope =
                std::max(f1, f2) < m_fDepth - 0.5F * fReach && 0.5F * (f1 + f2) < m_fDepth - 2.0F * fReach;
            if (nAhead == 0 && (bSlope || f1 < fFront))
                nAhead = n;
            if (nBack == 0 && (bSlope || f2 < fFront))
                nBack = n;
        }
        if (nAhead > 0)
            Add(nAhead, step, surround);
        if (nBack > 0)
            Add(nBack, back, surround);
    }

    const CPntRaster& m_raster;
    int m_x;
    int m_y;
    int m_nReach;
    float m_fDepth;
};

} // namespace

void FillGaps(CPntRaster& raster, const CSpacingMap& spacing, int nScale)
{
    const CPntRaster before = raster;
    for (int y = 0; y < raster.nHeight; ++y)
        for (int x = 0; x < raster.nWidth; ++x)
        {
            const std::size_t i = raster.GetIndex(x, y);
            if (before.vecDepth[i] == CPntRaster::c_fEmpty)
                continue;
            const float fReach = std::min(2.4F * spacing.Get(x, y), 6.0F * static_cast<float>(nScale));
            const int nReach = std::max(static_cast<int>(std::ceil(fReach)), 2 * nScale);
            const CSurround surround = CGapFinder(before, x, y, nReach).Find();
            if (surround.GetNumSides() < c_nSidesNeeded)
                continue;
            raster.vecDepth[i] = surround.GetDepth();
            raster.vecColor[i] = surround.GetColor();
        }
}

} // namespace zorcld
