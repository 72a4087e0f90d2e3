#include <host/picture/SmoothDepth.h>

#include <host/picture/CNoiseMap.h>
#include <host/picture/FindSurround.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace zorcld
{

namespace
{

constexpr float c_fOverNoise = 3.0F;  // noise reaches so many times as high as its kinks are in the mean
constexpr float c_fAnyEdge = 1e9F;    // however high: of speckle
constexpr float c_fSpeckled = 0.5F;   // from this share on, neighbours of neighbours count too
constexpr float c_fSpike = 0.9F;      // a slope by which single places stick out
constexpr float c_fNoiseReach = 6.0F; // times the distance between points
constexpr int c_nMaxStep = 64;

/// Rounds of smoothing, each over twice the step: they reach far with few looks. What decides how is the
/// same all over a tile.
class CSmoother
{
public:
    CSmoother(const CPntRaster& raster, const CSpacingMap& spacing, int nScale)
        : m_raster(raster), m_spacing(spacing), m_nScale(nScale), m_vecFrom(raster.vecDepth),
          m_vecTo(raster.vecDepth)
    {
        for (int y = 0; y < raster.nHeight; y += CSpacingMap::c_nTile)
            for (int x = 0; x < raster.nWidth; x += CSpacingMap::c_nTile)
                if (IsSeen(x, y))
                    m_vecTiles.push_back({x, y});
    }

    std::vector<float> Smooth(const CNoiseMap& noise)
    {
        RunMedians();
        int nStep = 1;
        for (; nStep <= c_nMaxStep; nStep *= 2)
            RunMeans(nStep, true, noise);
        for (nStep = c_nMaxStep / 2; nStep > 0; nStep /= 2) // evens out what wide steps leave between them
            RunMeans(nStep, false, noise);
        return std::move(m_vecFrom);
    }

private:
    struct CTile
    {
        int x; // its first pixel
        int y;
    };

    /// Is anything seen in the tile?
    bool IsSeen(int xTile, int yTile) const
    {
        for (int y = yTile; y < std::min(yTile + CSpacingMap::c_nTile, m_raster.nHeight); ++y)
            for (int x = xTile; x < std::min(xTile + CSpacingMap::c_nTile, m_raster.nWidth); ++x)
                if (m_raster.vecDepth[m_raster.GetIndex(x, y)] != CPntRaster::c_fEmpty)
                    return true;
        return false;
    }

    float GetDepth(int x, int y) const
    {
        if (!m_raster.IsInside(x, y))
            return CPntRaster::c_fEmpty;
        return m_vecFrom[m_raster.GetIndex(x, y)];
    }

    /// Replaces each depth by what `fn(x, y, choice)` makes of it; `choose(x, y)` tells once a tile what is
    /// to be done, 0 for nothing.
    template <class TChoose, class TFn>
    void Run(TChoose choose, TFn fn)
    {
        constexpr int c_nTile = CSpacingMap::c_nTile;
        bool bAny = false;
        for (const CTile& tile : m_vecTiles)
        {
            const int xEnd = std::min(tile.x + c_nTile, m_raster.nWidth);
            const int yEnd = std::min(tile.y + c_nTile, m_raster.nHeight);
            const auto choice =
                choose(std::min(tile.x + c_nTile / 2, xEnd - 1), std::min(tile.y + c_nTile / 2, yEnd - 1));
            const bool bChosen = choice != 0;
            bAny = bAny || bChosen;
            for (int y = tile.y; y < yEnd; ++y)
                for (int x = tile.x; x < xEnd; ++x)
                {
                    const std::size_t i = m_raster.GetIndex(x, y);
                    const bool bDo = bChosen && m_vecFrom[i] != CPntRaster::c_fEmpty;
                    m_vecTo[i] = bDo ? fn(x, y, choice) : m_vecFrom[i];
                }
        }
        if (bAny)
            m_vecFrom.swap(m_vecTo);
    }

    void RunMedians()
    {
        const CNoiseMap speckle(m_raster, m_raster.vecDepth, m_spacing, m_nScale, c_fAnyEdge);
        for (const int nTimes : {1, 2})
            Run(
                [&](int x, int y)
                {
                    const bool bAll = speckle.GetShare(x, y) > (nTimes == 1 ? 0.0F : c_fSpeckled);
                    const int nStep =
                        nTimes * std::max(m_nScale, static_cast<int>(std::lround(m_spacing.Get(x, y))));
                    return bAll ? -nStep : nStep;
                },
                [&](int x, int y, int nStep) { return CalcMedian(x, y, std::abs(nStep), nStep < 0); });
    }

    /// The middle one of a place and its eight neighbours `nStep` away: single points go, slopes and edges
    /// stay. If not `bAll`, only where the place alone sticks out of its neighbours.
    float CalcMedian(int x, int y, int nStep, bool bAll) const
    {
        const float fDepth = m_vecFrom[m_raster.GetIndex(x, y)];
        std::array<float, 8> sides{};
        int nFar = 0;  // neighbours much farther away, or not seen
        int nNear = 0; // much nearer
        const float fSpike = c_fSpike * static_cast<float>(nStep);
        for (std::size_t k = 0; k < c_steps.size(); ++k)
        {
            const float fSide = GetDepth(x + nStep * c_steps[k].x, y + nStep * c_steps[k].y);
            sides[k] = fSide == CPntRaster::c_fEmpty ? fDepth : fSide;
            nFar += sides[k] > fDepth + fSpike ? 1 : 0;
            nNear += sides[k] < fDepth - fSpike ? 1 : 0;
        }
        if (!bAll && nFar < 7 && nNear < 7)
            return fDepth;
        std::nth_element(sides.begin(), sides.begin() + 4, sides.end());
        const float fFourth = *std::max_element(sides.begin(), sides.begin() + 4);
        return std::clamp(fDepth, fFourth, sides[4]); // the fifth of the nine
    }

    /// By how much a depth may differ from the mean of two opposite ones to be smoothed; 0: not with this
    /// step.
    /// @param bForm  over the distance between points too, not in noise only.
    float CalcNear(int x, int y, int nStep, bool bForm, const CNoiseMap& noise) const
    {
        const float fSpacing = m_spacing.Get(x, y);
        const auto fStep = static_cast<float>(nStep);
        const float fForm = bForm && (nStep <= 2 || fStep < fSpacing)
                                ? 6.0F * static_cast<float>(m_nScale) + 2.5F * fSpacing
                                : 0.0F;
        if (fStep > c_fNoiseReach * fSpacing)
            return fForm;
        return std::max(fForm, c_fOverNoise * noise.GetHeight(x, y));
    }

    void RunMeans(int nStep, bool bForm, const CNoiseMap& noise)
    {
        Run([&](int x, int y) { return CalcNear(x, y, nStep, bForm, noise); },
            [&](int x, int y, float fNear) { return CalcMean(x, y, nStep, fNear); });
    }

    float CalcMean(int x, int y, int nStep, float fNear) const
    {
        const float fDepth = m_vecFrom[m_raster.GetIndex(x, y)];
        const float fPerNear = 1.0F / fNear;
        float fSum = fDepth;
        float fNum = 1.0F;
        const auto add = [&](float f, float fTimes)
        {
            const float fOff = (f - fDepth) * fPerNear;
            const float fWeight = fTimes * (1.0F - fOff * fOff);
            if (!(fWeight > 0.0F))
                return false;
            fSum += fWeight * f;
            fNum += fWeight;
            return true;
        };
        for (std::size_t k = 0; k < c_steps.size() / 2; ++k)
        {
            const float f1 = GetDepth(x + nStep * c_steps[k].x, y + nStep * c_steps[k].y);
            const float f2 = GetDepth(x - nStep * c_steps[k].x, y - nStep * c_steps[k].y);
            if (add(0.5F * (f1 + f2), 2.0F)) // a slope gives as much as it takes
                continue;
            add(f1, 1.0F);
            add(f2, 1.0F);
        }
        return fSum / fNum;
    }

    const CPntRaster& m_raster;
    const CSpacingMap& m_spacing;
    int m_nScale;
    std::vector<CTile> m_vecTiles; // where anything is seen: of large pictures often little
    std::vector<float> m_vecFrom;
    std::vector<float> m_vecTo;
};

} // namespace

std::vector<float> SmoothDepth(const CPntRaster& raster, const CSpacingMap& spacing, const CNoiseMap& noise,
                               int nScale)
{
    return CSmoother(raster, spacing, nScale).Smooth(noise);
}

} // namespace zorcld
