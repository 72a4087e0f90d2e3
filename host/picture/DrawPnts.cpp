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

constexpr int c_nTile = CSpacingMap::c_nTile; // edge of the finest tiles
constexpr float c_fMinPerTile = 8.0F;
constexpr float c_fMinRadius = 0.75F;
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

    /// Distances between neighbours, tile by tile.
    CSpacingMap MakeMap() const
    {
        CSpacingMap map;
        map.nWidth = m_vecLevels.front().nWidth;
        map.nHeight = m_vecLevels.front().nHeight;
        map.vecSpacing.reserve(m_vecLevels.front().vecTiles.size());
        for (int y = 0; y < map.nHeight; ++y)
            for (int x = 0; x < map.nWidth; ++x)
                map.vecSpacing.push_back(CalcSpacing(x, y));
        return map;
    }

private:
    /// Distance between neighbours in and around a tile of the finest level, raster pixels.
    float CalcSpacing(int x, int y) const
    {
        for (const CLevel& level : m_vecLevels)
        {
            const CTile& tile = level.GetTile(x, y);
            if (tile.fCount >= c_fMinPerTile || &level == &m_vecLevels.back())
                return std::sqrt(tile.fArea / std::max(tile.fCount, 1.0F));
            x /= 2;
            y /= 2;
        }
        return 1.0F;
    }

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
    const CRgbBytes color{pnt.r, pnt.g, pnt.b};
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

/// What compares places by the distance between points must not change from tile to tile.
void Blur(CSpacingMap& map)
{
    const std::vector<float> vecBefore = map.vecSpacing;
    const auto get = [&](int x, int y)
    {
        return vecBefore[static_cast<std::size_t>(std::clamp(y, 0, map.nHeight - 1)) *
                             static_cast<std::size_t>(map.nWidth) +
                         static_cast<std::size_t>(std::clamp(x, 0, map.nWidth - 1))];
    };
    std::size_t i = 0;
    for (int y = 0; y < map.nHeight; ++y)
        for (int x = 0; x < map.nWidth; ++x, ++i)
        {
            const float fRow = get(x - 1, y) + get(x, y) + get(x + 1, y);
            const float fOthers = get(x - 1, y - 1) + get(x, y - 1) + get(x + 1, y - 1) + get(x - 1, y + 1) +
                                  get(x, y + 1) + get(x + 1, y + 1);
            map.vecSpacing[i] = (fRow + fOthers) / 9.0F;
        }
}

/// Draws a disc for each point that lies near the picture, of the radius that `radius(spacing)` gives.
template <class TRadius>
CSpacingMap DrawAll(const std::vector<CScreenPnt>& vecPnts, CPntRaster& raster, TRadius radius)
{
    CSpacingMap map = CTilePyramid(vecPnts, raster).MakeMap();
    std::vector<float> vecKey(raster.vecDepth.size(), CPntRaster::c_fEmpty);
    double dSum = 0.0;
    double dNum = 0.0;
    for (const CScreenPnt& pnt : vecPnts)
    {
        if (!IsNearPicture(pnt))
            continue;
        const float x = std::clamp(pnt.x, 0.0F, static_cast<float>(raster.nWidth - 1));
        const float y = std::clamp(pnt.y, 0.0F, static_cast<float>(raster.nHeight - 1));
        const float fSpacing = map.Get(static_cast<int>(x), static_cast<int>(y));
        const float fRadius = radius(fSpacing);
        DrawDisc(pnt, fRadius, vecKey, raster);
        dSum += std::min(fSpacing, 2.0F * fRadius / c_fRadius);
        dNum += 1.0;
    }
    Blur(map);
    map.fTypical = dNum > 0.0 ? static_cast<float>(dSum / dNum) : 0.0F;
    return map;
}

} // namespace

CSpacingMap DrawPnts(const std::vector<CScreenPnt>& vecPnts, float fMaxRadius, CPntRaster& raster)
{
    return DrawAll(vecPnts, raster,
                   [fMaxRadius](float fSpacing)
                   { return std::clamp(c_fRadius * fSpacing, c_fMinRadius, fMaxRadius); });
}

CSpacingMap DrawDiscs(const std::vector<CScreenPnt>& vecPnts, float fRadius, CPntRaster& raster)
{
    return DrawAll(vecPnts, raster, [fRadius](float) { return std::max(fRadius, c_fMinRadius); });
}

} // namespace zorcld
