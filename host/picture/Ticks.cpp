#include <host/picture/Ticks.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr int c_nMaxTicks = 1000; // a step lost in the size of the numbers would never arrive
constexpr double c_dMaxDecimals = 4.0;

} // namespace

std::vector<CTick> MakeTicks(double dMin, double dMax, double dStep)
{
    if (!(dStep > 0.0) || !std::isfinite(dStep))
        return {};
    const auto nDecimals =
        static_cast<int>(std::clamp(-std::floor(std::log10(dStep) + 1e-9), 0.0, c_dMaxDecimals));
    const double dFirst = std::ceil(dMin / dStep - 1e-9);
    std::vector<CTick> vecTicks;
    for (int i = 0; i < c_nMaxTicks; ++i)
    {
        const double dValue = (dFirst + i) * dStep + 0.0; // no negative zero
        if (dValue > dMax + 1e-9 * dStep)
            break;
        vecTicks.push_back({dValue, FormatTick(dValue, nDecimals)});
    }
    return vecTicks;
}

std::string FormatTick(double dValue, int nDecimals)
{
    constexpr double c_dLong = 1e9;
    return std::fabs(dValue) < c_dLong ? fmt::format("{:.{}f}", dValue, nDecimals)
                                       : fmt::format("{:.6g}", dValue);
}

double RoundDown(double d)
{
    const double dPower = std::pow(10.0, std::floor(std::log10(d)));
    for (const double dStep : {5.0, 2.0})
        if (dStep * dPower <= d * (1.0 + 1e-9))
            return dStep * dPower;
    return dPower;
}

} // namespace zorcld
