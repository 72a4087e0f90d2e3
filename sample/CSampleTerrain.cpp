#include <sample/CSampleTerrain.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double c_dBlock = 120.0;   // grid of roads, metres
constexpr double c_dLot = 30.0;      // one building at most in each
constexpr double c_dRoadHalf = 3.2;  // half the width of a road
constexpr double c_dWallReach = 0.7; // points this near a building's edge are moved onto its wall

std::uint64_t Mix(std::uint64_t n)
{
    n = (n ^ (n >> 30U)) * 0xbf58476d1ce4e5b9U;
    n = (n ^ (n >> 27U)) * 0x94d049bb133111ebU;
    return n ^ (n >> 31U);
}

std::uint64_t Hash(std::int64_t i, std::int64_t k, std::uint64_t nSalt)
{
    return Mix(static_cast<std::uint64_t>(i) * 0x9e3779b97f4a7c15U +
               static_cast<std::uint64_t>(k) * 0xc2b2ae3d27d4eb4fU + nSalt * 0x165667b19e3779f9U);
}

/// Takes uniform numbers out of one hash, one after the other.
class CRandom
{
public:
    explicit CRandom(std::uint64_t nState) : m_nState(nState) {}

    double Next() // 0 to below 1
    {
        m_nState += 0x9e3779b97f4a7c15U;
        return static_cast<double>(Mix(m_nState) >> 11U) * (1.0 / 9007199254740992.0);
    }

    double Next(double dMin, double dMax) { return dMin + (dMax - dMin) * Next(); }

private:
    std::uint64_t m_nState;
};

/// Smooth noise from -1 to 1 with features of size 1.
double Noise(double x, double y, std::uint64_t nSalt)
{
    const double dX = std::floor(x);
    const double dY = std::floor(y);
    const auto i = static_cast<std::int64_t>(dX);
    const auto k = static_cast<std::int64_t>(dY);
    const auto corner = [&](std::int64_t di, std::int64_t dk)
    { return static_cast<double>(Hash(i + di, k + dk, nSalt) >> 11U) * (2.0 / 9007199254740992.0) - 1.0; };
    const auto smooth = [](double t) { return t * t * t * (t * (t * 6.0 - 15.0) + 10.0); };
    const double u = smooth(x - dX);
    const double v = smooth(y - dY);
    const double dLow = corner(0, 0) + u * (corner(1, 0) - corner(0, 0));
    const double dHigh = corner(0, 1) + u * (corner(1, 1) - corner(0, 1));
    return dLow + v * (dHigh - dLow);
}

struct CColor
{
    double r;
    double g;
    double b;
};

CColor Blend(const CColor& from, const CColor& to, double t)
{
    return {from.r + t * (to.r - from.r), from.g + t * (to.g - from.g), from.b + t * (to.b - from.b)};
}

CColor Scale(const CColor& color, double dFactor)
{
    return {color.r * dFactor, color.g * dFactor, color.b * dFactor};
}

/// Where a pulse ends, and its colour; later layers overwrite earlier ones.
struct CSurface
{
    double x;
    double y;
    double z;
    CColor color;
};

/// A plot of land with the numbers that make its building.
struct CLot
{
    double x; // middle of the building
    double y;
    CRandom random;
};

/// The landscape of one seed, in metres from the lower left corner.
class CLandscape
{
public:
    explicit CLandscape(std::uint64_t nSeed) : m_nSeed(nSeed) {}

    CSurface CalcSurface(double x, double y, CRandom& random) const
    {
        CSurface surface{x, y, CalcGround(x, y), CalcGroundColor(x, y)};
        const bool bRoad = AddRoad(x, y, surface);
        if (!bRoad && AddBuilding(x, y, random, surface))
            return surface;
        AddTree(x, y, 13.0, 0.0, 21, random, surface);
        AddTree(x, y, 11.0, 5.2, 22, random, surface);
        AddTree(x, y, 9.0, 2.9, 23, random, surface);
        surface.z += random.Next(-0.025, 0.025); // what the scanner adds
        return surface;
    }

private:
    double N(double x, double y, double dSize, std::uint64_t nLayer) const
    {
        // Turned against the axes, so that the lattice does not show: 3, 4, 5 make a right angle.
        return Noise((0.8 * x - 0.6 * y) / dSize, (0.6 * x + 0.8 * y) / dSize, m_nSeed * 64U + nLayer);
    }

    double CalcGround(double x, double y) const
    {
        return 320.0 + 34.0 * N(x, y, 640.0, 1) + 15.0 * N(x, y, 230.0, 2) + 3.6 * N(x, y, 74.0, 3) +
               0.7 * N(x, y, 21.0, 4) + 0.08 * N(x, y, 4.0, 5);
    }

    /// Above 0 in villages.
    double CalcVillage(double x, double y) const { return N(x, y, 260.0, 6) - 0.13; }

    /// Above 0 in woods.
    double CalcWood(double x, double y) const
    {
        return N(x, y, 190.0, 7) + 0.3 * N(x, y, 35.0, 8) + 0.06 -
               30.0 * std::max(0.0, CalcVillage(x, y) + 0.03);
    }

    CColor CalcGroundColor(double x, double y) const
    {
        static constexpr std::array<CColor, 5> c_fields = {{{126, 146, 78},   // meadow
                                                            {150, 158, 92},   // pasture
                                                            {188, 174, 112},  // ripe corn
                                                            {142, 112, 82},   // ploughed
                                                            {108, 138, 66}}}; // clover
        const auto i = static_cast<std::int64_t>(std::floor(x / (c_dBlock / 2.0) + 0.3 * N(x, y, 90.0, 9)));
        const auto k = static_cast<std::int64_t>(std::floor(y / c_dBlock));
        CColor color = c_fields[Hash(i, k, m_nSeed * 64U + 10U) % c_fields.size()];
        const double dVillage = std::clamp(CalcVillage(x, y) * 8.0 + 0.5, 0.0, 1.0);
        color = Blend(color, {118, 146, 76}, 0.75 * dVillage); // lawns
        const double dWood = std::clamp(CalcWood(x, y) * 6.0 + 0.5, 0.0, 1.0);
        color = Blend(color, {94, 92, 58}, dWood); // forest floor
        return Scale(color, 1.0 + 0.07 * N(x, y, 9.0, 11) + 0.05 * N(x, y, 1.7, 12));
    }

    /// From the middle of the nearest road.
    double CalcRoadDistance(double x, double y) const
    {
        const auto distance = [](double d)
        { return std::fabs(d - c_dBlock * std::floor(d / c_dBlock + 0.5)); };
        const double dBend = 13.0 * N(x, y, 150.0, 13);
        return std::min(distance(x + dBend), distance(y - dBend));
    }

    /// Roads bend with the land and keep its height, less its roughness.
    bool AddRoad(double x, double y, CSurface& surface) const
    {
        const double d = CalcRoadDistance(x, y);
        if (d >= c_dRoadHalf + 1.4)
            return false;
        if (d >= c_dRoadHalf) // gravel shoulder
        {
            surface.color = {164, 154, 134};
            return true;
        }
        surface.z -= 0.25 + 0.08 * N(x, y, 4.0, 5);
        surface.color = Scale({118, 118, 122}, 1.0 + 0.04 * N(x, y, 2.0, 14));
        if (d < 0.12)
            surface.color = {214, 212, 204}; // centre line
        return true;
    }

    CLot GetLot(double x, double y) const
    {
        const auto i = static_cast<std::int64_t>(std::floor(x / c_dLot));
        const auto k = static_cast<std::int64_t>(std::floor(y / c_dLot));
        CRandom random(Hash(i, k, m_nSeed * 64U + 15U));
        const double dPlay = 3.5;
        const double dX = (static_cast<double>(i) + 0.5) * c_dLot + random.Next(-dPlay, dPlay);
        const double dY = (static_cast<double>(k) + 0.5) * c_dLot + random.Next(-dPlay, dPlay);
        return {dX, dY, random};
    }

    bool HasBuilding(CLot& lot) const
    {
        return lot.random.Next() > 0.2 && CalcVillage(lot.x, lot.y) > 0.0 &&
               CalcRoadDistance(lot.x, lot.y) > 13.0;
    }

    bool IsNearBuilding(double x, double y, double dMargin) const
    {
        CLot lot = GetLot(x, y);
        const double dReach = 9.5 + dMargin;
        return (x - lot.x) * (x - lot.x) + (y - lot.y) * (y - lot.y) < dReach * dReach && HasBuilding(lot);
    }

    bool AddBuilding(double x, double y, CRandom& random, CSurface& surface) const
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
        CHit hit{dFromX * dir[0] + dFromY * dir[1], dFromY * dir[0] - dFromX * dir[1], dHalfLength,
                 dHalfWidth, false};
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
        AddRoof(CalcGround(lot.x, lot.y), hit, lot.random, random, surface);
        return true;
    }

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

    static void AddRoof(double dGround, const CHit& hit, CRandom& lot, CRandom& random, CSurface& surface)
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

    /// One tree at most a cell; its crown stays inside the cell.
    void AddTree(double x, double y, double dCell, double dShift, std::uint64_t nLayer, CRandom& random,
                 CSurface& surface) const
    {
        const auto i = static_cast<std::int64_t>(std::floor((x + dShift) / dCell));
        const auto k = static_cast<std::int64_t>(std::floor((y + dShift) / dCell));
        CRandom tree(Hash(i, k, m_nSeed * 64U + nLayer));
        const double dChance = tree.Next();
        const double dRadius = dCell * tree.Next(0.2, 0.38);
        const double dPlay = dCell * 0.5 - dRadius;
        const double dX = (static_cast<double>(i) + 0.5) * dCell - dShift + tree.Next(-dPlay, dPlay);
        const double dY = (static_cast<double>(k) + 0.5) * dCell - dShift + tree.Next(-dPlay, dPlay);
        const double dSquare = ((x - dX) * (x - dX) + (y - dY) * (y - dY)) / (dRadius * dRadius);
        if (dSquare >= 1.0 || dChance > (CalcWood(dX, dY) > 0.0 ? 0.85 : 0.05))
            return;
        if (CalcRoadDistance(dX, dY) < c_dRoadHalf + 0.6 * dRadius || IsNearBuilding(dX, dY, dRadius))
            return;

        const bool bConifer = tree.Next() < 0.4;
        const double dHeight = dRadius * (bConifer ? tree.Next(3.6, 5.2) : tree.Next(2.4, 3.6));
        const double dShade = tree.Next(0.82, 1.15);
        if (random.Next() < 0.08)
            return;                                   // the pulse reached the ground
        const double dCrown = bConifer ? 0.86 : 0.62; // share of the height that the crown takes
        const double dTop = bConifer ? 1.0 - std::sqrt(dSquare) : std::sqrt(1.0 - dSquare);
        const double dShare =
            1.0 - dCrown + dCrown * dTop * (random.Next() < 0.8 ? 1.0 : random.Next(0.3, 1.0));
        const double z = CalcGround(dX, dY) + dHeight * dShare + random.Next(-0.25, 0.25);
        if (z <= surface.z)
            return;
        surface.z = z;
        const CColor leaf = bConifer ? CColor{62, 92, 58} : CColor{92, 122, 54};
        surface.color = Scale(leaf, dShade * (0.55 + 0.5 * dShare) * random.Next(0.9, 1.1));
    }

    std::uint64_t m_nSeed;
};

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
    CRandom random(Hash(nColumn, nLine, m_nSeed * 64U));
    const double x = (static_cast<double>(nColumn) + random.Next(0.1, 0.9)) * dSpacing;
    const double y = (static_cast<double>(nLine) + random.Next(0.1, 0.9)) * dSpacing;
    const CSurface surface = CLandscape(m_nSeed).CalcSurface(x, y, random);
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
