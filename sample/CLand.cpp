#include <sample/CLand.h>

#include <sample/Noise.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace sample
{

namespace
{

constexpr double c_dBlock = 120.0; // grid of roads, metres

} // namespace

double CLand::N(double x, double y, double dSize, std::uint64_t nLayer) const
{
    // Turned against the axes, so that the lattice does not show: 3, 4, 5 make a right angle.
    return Noise((0.8 * x - 0.6 * y) / dSize, (0.6 * x + 0.8 * y) / dSize, m_nSeed * 64U + nLayer);
}

double CLand::CalcGround(double x, double y) const
{
    return 320.0 + 34.0 * N(x, y, 640.0, 1) + 15.0 * N(x, y, 230.0, 2) + 3.6 * N(x, y, 74.0, 3) +
           0.7 * N(x, y, 21.0, 4) + 0.08 * N(x, y, 4.0, 5);
}

double CLand::CalcVillage(double x, double y) const
{
    return N(x, y, 260.0, 6) - 0.13;
}

double CLand::CalcWood(double x, double y) const
{
    return N(x, y, 190.0, 7) + 0.3 * N(x, y, 35.0, 8) + 0.06 - 30.0 * std::max(0.0, CalcVillage(x, y) + 0.03);
}

CColor CLand::CalcGroundColor(double x, double y) const
{
    static constexpr std::array<CColor, 5> c_fields = {{{126, 146, 78},   // meadow
                                                        {150, 158, 92},   // pasture
                                                        {188, 174, 112},  // ripe corn
                                                        {142, 112, 82},   // ploughed
                                                        {108, 138, 66}}}; // clover
    const auto i = static_cast<std::int64_t>(std::floor(x / (c_dBlock / 2.0) + 0.3 * N(x, y, 90.0, 9)));
    const auto k = static_cast<std::int64_t>(std::floor(y / c_dBlock));
    CColor color = c_fields[HashCell(i, k, 10) % c_fields.size()];
    const double dVillage = std::clamp(CalcVillage(x, y) * 8.0 + 0.5, 0.0, 1.0);
    color = Blend(color, {118, 146, 76}, 0.75 * dVillage); // lawns
    const double dWood = std::clamp(CalcWood(x, y) * 6.0 + 0.5, 0.0, 1.0);
    color = Blend(color, {94, 92, 58}, dWood); // forest floor
    return Scale(color, 1.0 + 0.07 * N(x, y, 9.0, 11) + 0.05 * N(x, y, 1.7, 12));
}

double CLand::CalcRoadDistance(double x, double y) const
{
    const auto distance = [](double d) { return std::fabs(d - c_dBlock * std::floor(d / c_dBlock + 0.5)); };
    const double dBend = 13.0 * N(x, y, 150.0, 13);
    return std::min(distance(x + dBend), distance(y - dBend));
}

bool CLand::AddRoad(double x, double y, CSurface& surface) const
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

} // namespace sample
