#include <sample/CBuildings.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace sample
{

/// A plot of land with the numbers that make its building.
struct CBuildings::CLot
{
    double x; // middle of the building
    double y;
    CHashRandom random;
};

namespace
{

constexpr double c_dLot = 30.0;      // edge of a lot, metres
constexpr double c_dWallReach = 0.7; // points this near a building's edge are moved onto its wall

/// Where a pulse meets a building: along it and across it, from its middle.
struct CHit
{
    double u;
    double v;
    double dHalfLength;
    double dHalfWidth;
    bool bWall;

    double CalcInside() const { return std::min(dHalfLength - std::fabs(u), dHalfWidth - std::fabs(v)); }

    /// Presses what is near the edge against the wall and stretches the roof over the strip left
    /// empty. No two points come to lie at one place in plan: scan steps are 7 cm apart at least, a
    /// tenth of that on walls.
    void Settle()
    {
        constexpr double c_dPress = 0.1;
        constexpr double c_dStrip = c_dPress * c_dWallReach;
        const double dEnd = dHalfLength - std::fabs(u);
        const double dSide = dHalfWidth - std::fabs(v);
        bWall = CalcInside() < c_dWallReach;
        if (!bWall)
        {
            u *= (dHalfLength - c_dStrip) / (dHalfLength - c_dWallReach);
            v *= (dHalfWidth - c_dStrip) / (dHalfWidth - c_dWallReach);
        }
        else if (dEnd < dSide)
            u = std::copysign(dHalfLength - c_dPress * dEnd, u);
        else
            v = std::copysign(dHalfWidth - c_dPress * dSide, v);
    }
};

void AddRoof(double dGround, const CHit& hit, CHashRandom& lot, CHashRandom& random, CSurface& surface)
{
    static constexpr std::array<CColor, 4> c_tiles = {
        {{172, 88, 62}, {150, 74, 58}, {104, 106, 114}, {186, 112, 78}}};
    const bool bGabled = lot.Next() < 0.72;
    const double dEaves = dGround + (bGabled ? lot.Next(3.2, 5.8) : lot.Next(3.6, 8.5));
    const double dPitch = lot.Next(0.45, 0.9);
    const CColor tile = c_tiles[static_cast<std::size_t>(lot.Next() * 4.0)];
    const double dWall = lot.Next(0.85, 1.0);
    const double dGable = bGabled ? dPitch * (hit.dHalfWidth - std::fabs(hit.v)) : 0.0;
    if (hit.bWall)
    {
        surface.z += random.Next() * std::max(0.0, dEaves + dGable - surface.z);
        surface.color = Scale({224, 214, 194}, dWall);
        return;
    }
    const bool bParapet = !bGabled && hit.CalcInside() < 0.5;
    surface.z = dEaves + dGable + (bParapet ? 0.6 : 0.0) + random.Next(-0.02, 0.02);
    if (bGabled)
        surface.color = Scale(tile, hit.v > 0.0 ? 1.06 : 0.86);
    else
        surface.color = bParapet ? CColor{196, 194, 190} : Scale({158, 158, 160}, dWall);
    surface.color = Scale(surface.color, random.Next(0.95, 1.05));
}

} // namespace

CBuildings::CLot CBuildings::GetLot(double x, double y) const
{
    const auto i = static_cast<std::int64_t>(std::floor(x / c_dLot));
    const auto k = static_cast<std::int64_t>(std::floor(y / c_dLot));
    CHashRandom random(m_land.HashCell(i, k, 15));
    const double dPlay = 3.5;
    const double dX = (static_cast<double>(i) + 0.5) * c_dLot + random.Next(-dPlay, dPlay);
    const double dY = (static_cast<double>(k) + 0.5) * c_dLot + random.Next(-dPlay, dPlay);
    return {dX, dY, random};
}

bool CBuildings::HasBuilding(CLot& lot) const
{
    return lot.random.Next() > 0.2 && m_land.CalcVillage(lot.x, lot.y) > 0.0 &&
           m_land.CalcRoadDistance(lot.x, lot.y) > 13.0;
}

bool CBuildings::IsNearBuilding(double x, double y, double dMargin) const
{
    CLot lot = GetLot(x, y);
    const double dReach = 9.5 + dMargin;
    return (x - lot.x) * (x - lot.x) + (y - lot.y) * (y - lot.y) < dReach * dReach && HasBuilding(lot);
}

bool CBuildings::AddBuilding(double x, double y, CHashRandom& random, CSurface& surface) const
{
    CLot lot = GetLot(x, y);
    const double dFromX = x - lot.x;
    const double dFromY = y - lot.y;
    constexpr double c_dReach = 12.5; // no building is larger
    if (dFromX * dFromX + dFromY * dFromY > c_dReach * c_dReach || !HasBuilding(lot))
        return false;

    // Directions with rational sine and cosine: no trigonometry, the same on every machine.
    static constexpr std::array<std::array<double, 2>, 6> c_dirs = {
        {{1.0, 0.0}, {0.96, 0.28}, {0.96, -0.28}, {0.0, 1.0}, {0.28, 0.96}, {0.8, 0.6}}};
    const auto& dir = c_dirs[static_cast<std::size_t>(lot.random.Next() * 6.0)];
    const double dHalfLength = lot.random.Next(5.5, 8.6);
    const double dHalfWidth = lot.random.Next(4.0, 5.6);
    CHit hit{dFromX * dir[0] + dFromY * dir[1], dFromY * dir[0] - dFromX * dir[1], dHalfLength, dHalfWidth,
             false};
    if (hit.CalcInside() < -1.2)
        return false;
    if (hit.CalcInside() < 0.0) // paved all around
    {
        surface.color = {166, 160, 150};
        return true;
    }
    hit.Settle();
    surface.x = lot.x + hit.u * dir[0] - hit.v * dir[1];
    surface.y = lot.y + hit.u * dir[1] + hit.v * dir[0];
    AddRoof(m_land.CalcGround(lot.x, lot.y), hit, lot.random, random, surface);
    return true;
}

} // namespace sample
