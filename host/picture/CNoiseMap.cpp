#include <host/picture/CNoiseMap.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr float c_fKink = 0.9F;       // bends of more than this slope, either way
constexpr float c_fShareLow = 0.16F;  // of kinked pixels: from here on there is noise,
constexpr float c_fShareHigh = 0.42F; // from here on nothing else

} // namespace

CNoiseMap::CNoiseMap(const CPntRaster& raster, const std::vector<float>& vecDepth, const CSpacingMap& spacing,
                     int nScale, float fEdge)
    : m_raster(raster), m_vecDepth(vecDepth), m_fEdge(fEdge),
      m_nEdge(std::clamp(static_cast<int>(8.0F * spacing.fTypical), 8 * nScale, 32 * nScale)),
      m_nWidth(raster.nWidth / m_nEdge + 1), m_nHeight(raster.nHeight / m_nEdge + 1),
      m_vecTiles(static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nHeight))
{
    for (int y = 0; y < raster.nHeight; y += nScale)
        for (int x = 0; x < raster.nWidth; x += nScale)
            if (raster.vecDepth[raster.GetIndex(x, y)] != CPntRaster::c_fEmpty)
                AddPixel(x, y, std::max(nScale, static_cast<int>(std::lround(spacing.Get(x, y)))));
    for (int yTile = 0; yTile < m_nHeight; ++yTile)
        for (int xTile = 0; xTile < m_nWidth; ++xTile)
        {
            const CTile sum = SumTiles(xTile, yTile);
            const float fKinked = sum.fKinked / std::max(sum.fSeen, 1.0F);
            m_vecShares.push_back(
                std::clamp((fKinked - c_fShareLow) / (c_fShareHigh - c_fShareLow), 0.0F, 1.0F));
            m_vecHeights.push_back(std::min(1.0F, 2.0F * m_vecShares.back()) *
                                   std::exp(sum.fLogSum / std::max(sum.fKinked, 1.0F)));
        }
}

void CNoiseMap::AddPixel(int x, int y, int nReach)
{
    static constexpr std::array<std::array<int, 2>, 4> c_dirs = {{{1, 0}, {0, 1}, {1, 1}, {1, -1}}};
    const float fDepth = m_vecDepth[m_raster.GetIndex(x, y)];
    float fSum = 0.0F;
    float fNum = 0.0F;
    for (const auto& dir : c_dirs)
    {
        const int dx = nReach * dir[0];
        const int dy = nReach * dir[1];
        if (!m_raster.IsInside(x + dx, y + dy) || !m_raster.IsInside(x - dx, y - dy))
            continue;
        const float fPair =
            m_vecDepth[m_raster.GetIndex(x + dx, y + dy)] + m_vecDepth[m_raster.GetIndex(x - dx, y - dy)];
        if (fPair == CPntRaster::c_fEmpty)
            continue;
        fSum += std::fabs(fDepth - 0.5F * fPair);
        fNum += 1.0F;
    }
    if (fNum == 0.0F)
        return;
    CTile& tile = m_vecTiles[static_cast<std::size_t>(y / m_nEdge) * static_cast<std::size_t>(m_nWidth) +
                             static_cast<std::size_t>(x / m_nEdge)];
    tile.fSeen += 1.0F;
    const float fBend = fSum / fNum;
    if (fBend < c_fKink * static_cast<float>(nReach) || fBend > m_fEdge * static_cast<float>(nReach))
        return;
    tile.fKinked += 1.0F;
    tile.fLogSum += std::log(fBend);
}

/// A tile and its neighbours.
CNoiseMap::CTile CNoiseMap::SumTiles(int xTile, int yTile) const
{
    CTile sum;
    for (int y = std::max(0, yTile - 1); y <= std::min(m_nHeight - 1, yTile + 1); ++y)
        for (int x = std::max(0, xTile - 1); x <= std::min(m_nWidth - 1, xTile + 1); ++x)
        {
            const CTile& tile = m_vecTiles[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_nWidth) +
                                           static_cast<std::size_t>(x)];
            sum.fSeen += tile.fSeen;
            sum.fKinked += tile.fKinked;
            sum.fLogSum += tile.fLogSum;
        }
    return sum;
}

float CNoiseMap::Interpolate(const std::vector<float>& vecValues, int x, int y) const
{
    const float xTile = std::max(0.0F, static_cast<float>(x) / static_cast<float>(m_nEdge) - 0.5F);
    const float yTile = std::max(0.0F, static_cast<float>(y) / static_cast<float>(m_nEdge) - 0.5F);
    const int x0 = static_cast<int>(xTile);
    const int y0 = static_cast<int>(yTile);
    const float fx = xTile - static_cast<float>(x0);
    const float fy = yTile - static_cast<float>(y0);
    const auto get = [&](int xAt, int yAt)
    {
        return vecValues[static_cast<std::size_t>(std::min(yAt, m_nHeight - 1)) *
                             static_cast<std::size_t>(m_nWidth) +
                         static_cast<std::size_t>(std::min(xAt, m_nWidth - 1))];
    };
    return (1.0F - fy) * ((1.0F - fx) * get(x0, y0) + fx * get(x0 + 1, y0)) +
           fy * ((1.0F - fx) * get(x0, y0 + 1) + fx * get(x0 + 1, y0 + 1));
}

} // namespace zorcld
