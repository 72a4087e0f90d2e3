#include <sample/CSampleTerrain.h>

#include <sample/CBuildings.h>
#include <sample/CHashRandom.h>
#include <sample/CLand.h>
#include <sample/CSurface.h>
#include <sample/CTrees.h>

#include <algorithm>
#include <cmath>

namespace
{

/// Where the pulse that is sent to a place ends.
sample::CSurface CalcSurface(const sample::CLand& land, double x, double y, sample::CHashRandom& random)
{
    sample::CSurface surface{x, y, land.CalcGround(x, y), land.CalcGroundColor(x, y)};
    const sample::CBuildings buildings(land);
    const bool bRoad = land.AddRoad(x, y, surface);
    if (!bRoad && buildings.AddBuilding(x, y, random, surface))
        return surface;
    sample::CTrees(land, buildings).AddTrees(x, y, random, surface);
    surface.z += random.Next(-0.025, 0.025); // what the scanner adds
    return surface;
}

double ToMillimetres(double d)
{
    return std::floor(d * 1000.0 + 0.5) / 1000.0;
}

unsigned char ToByte(double d)
{
    return static_cast<unsigned char>(std::clamp(d, 0.0, 255.0));
}

} // namespace

CSampleTerrain::CSampleTerrain(std::int64_t nNumPnts, std::uint64_t nSeed)
    : m_nNumPnts(std::max<std::int64_t>(nNumPnts, 0)), m_nSeed(nSeed)
{
    m_nRow = std::max<std::int64_t>(
        static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(m_nNumPnts)))), 1);
}

double CSampleTerrain::GetSide() const noexcept
{
    return static_cast<double>(m_nRow) / std::sqrt(c_dDensity);
}

CSamplePnt CSampleTerrain::CalcPnt(std::int64_t i) const
{
    const std::int64_t nLine = i / m_nRow;
    const std::int64_t nStep = i % m_nRow;
    const std::int64_t nColumn = nLine % 2 == 0 ? nStep : m_nRow - 1 - nStep;
    const double dSpacing = 1.0 / std::sqrt(c_dDensity);
    const sample::CLand land(m_nSeed);
    sample::CHashRandom random(land.HashCell(nColumn, nLine, 0));
    const double x = (static_cast<double>(nColumn) + random.Next(0.1, 0.9)) * dSpacing;
    const double y = (static_cast<double>(nLine) + random.Next(0.1, 0.9)) * dSpacing;
    const sample::CSurface surface = CalcSurface(land, x, y, random);
    return {ToMillimetres(c_dOrgX + surface.x),
            ToMillimetres(c_dOrgY + surface.y),
            ToMillimetres(surface.z),
            ToByte(surface.color.r),
            ToByte(surface.color.g),
            ToByte(surface.color.b)};
}

std::vector<CSamplePnt> CSampleTerrain::CalcPnts() const
{
    std::vector<CSamplePnt> vecPnts;
    vecPnts.reserve(static_cast<std::size_t>(m_nNumPnts));
    ForEachPnt([&](const CSamplePnt& pnt) { vecPnts.push_back(pnt); });
    return vecPnts;
}
