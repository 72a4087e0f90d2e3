#include <host/picture/DrawPnts.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

/// Does the point lie so near that its distance can be counted in pixels? A place that is no number does not.
bool IsNearPicture(const CScreenPnt& pnt)
{
    constexpr float c_fFar = 1e6F;
    return std::fabs(pnt.x) < c_fFar && std::fabs(pnt.y) < c_fFar;
}

constexpr int c_nTile = 8; // pixels, edge of the finest tiles
constexpr float c_fMinPerTile = 8.0F;
constexpr float c_fRadius = 0.78F; // of the spacing: covers a square pattern with some overlap

/// How many points are seen in a tile and how much of it they take.
struct CTile
{
    float fCount = 0.0F;
    float fArea = 0.0F;
};

/// Tiles of twice the edge from level to level, so that every point finds one with enough neighbours.
class CTilePyramid
{
public:
    CTilePyramid(const std::vector<CScreenPnt>& vecPnts, const CPntRaster& raster)
    {
        CLevel level{(raster.nWidth + c_nTile - 1) / c_nTile, (raster.nHeight + c_nTile - 1) / c_nTile, {}};
        level.vecTiles.resize(static_cast<std::size_t>(level.nWidth) *
                              static_cast<std::size_t>(level.nHeight));
        std::vector<bool> vecHit(raster.vecDepth.size());
        for (const CScreenPnt& pnt : vecPnts)
        {
            if (!IsNearPicture(pnt))
                continue;
            const int x = static_cast<int>(std::floor(pnt.x));
            const int y = static_cast<int>(std::floor(pnt.y));
            if (!raster.IsInside(x, y) || vecHit[raster.GetIndex(x, y)])
                continue; // points behind one another count once
            vecHit[raster.GetIndex(x, y)] = true;
            CTile& tile = level.GetTile(x / c_nTile, y / c_nTile);
            tile.fCount += 1.0F;
            tile.fArea = static_cast<float>(c_nTile * c_nTile);
        }
        m_vecLevels.push_back(std::move(level));
        while (m_vecLevels.back().nWidth > 1 || m_vecLevels.back().nHeight > 1)
            m_vecLevels.push_back(MakeCoarser(m_vecLevels.back()));
    }

    /// Distance between neighbours around a place inside the picture, pixels.
    float CalcSpacing(int x, int y) const
    {
        int nEdge = c_nTile;
        for (const CLevel& level : m_vecLevels)
        {
            const CTile& tile = level.GetTile(x / nEdge, y / nEdge);
            if (tile.fCount >= c_fMinPerTile || &level == &m_vecLevels.back())
                return std::sqrt(tile.fArea / std::max(tile.fCount, 1.0F));
            nEdge *= 2;
        }
        return 1.0F;
    }

private:
    struct CLevel
    {
        int nWidth;
        int nHeight;
        std::vector<CTile> vecTiles;

        std::size_t GetIndex(int x, int y) const
        {
            return static_cast<std::size_t>(y) * static_cast<std::size_t>(nWidth) +
                   static_cast<std::size_t>(x);
        }
        const CTile& GetTile(int x, int y) const { return vecTiles[GetIndex(x, y)]; }
        CTile& GetTile(int x, int y) { return vecTiles[GetIndex(x, y)]; }
    };

    static CLevel MakeCoarser(const CLevel& fine)
    {
        CLevel level{(fine.nWidth + 1) / 2, (fine.nHeight + 1) / 2, {}};
        level.vecTiles.resize(static_cast<std::size_t>(level.nWidth) *
                              static_cast<std::size_t>(level.nHeight));
        for (int y = 0; y < fine.nHeight; ++y)
            for (int x = 0; x < fine.nWidth; ++x)
            {
                CTile& tile = level.GetTile(x / 2, y / 2);
                tile.fCount += fine.GetTile(x, y).fCount;
                tile.fArea += fine.GetTile(x, y).fArea;
            }
        return level;
    }

    std::vector<CLevel> m_vecLevels;
};

/// One disc. The depth that decides grows towards its rim: overlapping discs meet halfway.
void DrawDisc(const CScreenPnt& pnt, float fRadius, std::vector<float>& vecKey, CPntRaster& raster)
{
    const int xBegin = std::max(0, static_cast<int>(std::floor(pnt.x - fRadius)));
    const int yBegin = std::max(0, static_cast<int>(std::floor(pnt.y - fRadius)));
    const int xEnd = std::min(raster.nWidth - 1, static_cast<int>(std::floor(pnt.x + fRadius)));
    const int yEnd = std::min(raster.nHeight - 1, static_cast<int>(std::floor(pnt.y + fRadius)));
    const int xCentre = static_cast<int>(std::floor(pnt.x));
    const int yCentre = static_cast<int>(std::floor(pnt.y));
    const CRgb color{static_cast<float>(pnt.r), static_cast<float>(pnt.g), static_cast<float>(pnt.b)};
    for (int y = yBegin; y <= yEnd; ++y)
        for (int x = xBegin; x <= xEnd; ++x)
        {
            const float dx = static_cast<float>(x) + 0.5F - pnt.x;
            const float dy = static_cast<float>(y) + 0.5F - pnt.y;
            const float fSquare = dx * dx + dy * dy;
            const bool bCentre = x == xCentre && y == yCentre; // even the smallest disc shows
            const float fKey = pnt.fDepth + fSquare / fRadius;
            const std::size_t i = raster.GetIndex(x, y);
            if ((fSquare > fRadius * fRadius && !bCentre) || !(fKey < vecKey[i]))
                continue;
            vecKey[i] = fKey;
            raster.vecDepth[i] = pnt.fDepth;
            raster.vecColor[i] = color;
        }
}

} // namespace

float DrawPnts(const std::vector<CScreenPnt>& vecPnts, float fMaxRadius, CPntRaster& raster)
{
    const CTilePyramid tiles(vecPnts, raster);
    std::vector<float> vecKey(raster.vecDepth.size(), CPntRaster::c_fEmpty);
    double dSum = 0.0;
    double dNum = 0.0;
    for (const CScreenPnt& pnt : vecPnts)
    {
        if (!IsNearPicture(pnt))
            continue;
        const float x = std::clamp(pnt.x, 0.0F, static_cast<float>(raster.nWidth - 1));
        const float y = std::clamp(pnt.y, 0.0F, static_cast<float>(raster.nHeight - 1));
        const float fSpacing = tiles.CalcSpacing(static_cast<int>(x), static_cast<int>(y));
        DrawDisc(pnt, std::clamp(c_fRadius * fSpacing, 0.75F, fMaxRadius), vecKey, raster);
        dSum += std::min(fSpacing, 2.0F * fMaxRadius);
        dNum += 1.0;
    }
    return dNum > 0.0 ? static_cast<float>(dSum / dNum) : 0.0F;
}

} // namespace zorcld
