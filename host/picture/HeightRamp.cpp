#include <host/picture/HeightRamp.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace zorcld
{

CRgb CalcHeightColor(double dShare)
{
    static constexpr std::array<CRgb, 9> c_stops = {{{46, 50, 128},
                                                     {38, 86, 160},
                                                     {30, 126, 166},
                                                     {42, 156, 140},
                                                     {92, 178, 98},
                                                     {160, 196, 76},
                                                     {226, 204, 82},
                                                     {244, 184, 108},
                                                     {252, 232, 206}}};
    const double dPos = std::clamp(dShare, 0.0, 1.0) * static_cast<double>(c_stops.size() - 1);
    const auto n = std::min(static_cast<std::size_t>(dPos), c_stops.size() - 2);
    const auto t = static_cast<float>(dPos - static_cast<double>(n));
    const CRgb& from = c_stops[n];
    const CRgb& to = c_stops[n + 1];
    return {from.r + t * (to.r - from.r), from.g + t * (to.g - from.g), from.b + t * (to.b - from.b)};
}

void CHeightColors::SetRange(double zMin, double zMax)
{
    m_zMin = zMin;
    m_zMax = zMax;
}

void CHeightColors::GetColor(double z, float& r, float& g, float& b)
{
    const CRgb color = CalcHeightColor(m_zMax > m_zMin ? (z - m_zMin) / (m_zMax - m_zMin) : 0.5);
    r = color.r / 255.0F;
    g = color.g / 255.0F;
    b = color.b / 255.0F;
}

} // namespace zorcld
