#include <host/query/GroundFindings.h>

#include <host/query/FilterGround.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

constexpr double c_dHardlyAny = 0.02; // of the points
constexpr double c_dNearlyAll = 0.99;
constexpr double c_dFewInWindow = 3.0;    // points along the largest window
constexpr double c_dManyInWindow = 100.0; // points along the smallest one

} // namespace

std::string FindOddGround(const CGroundResult& result)
{
    if (result.nNumAll == 0)
        return {};
    const double dShare = static_cast<double>(result.nNumGround) / static_cast<double>(result.nNumAll);
    if (result.dSpacing > c_dLargestWindow / c_dFewInWindow)
        return fmt::format(
            "points lie {:.3g} apart, and the filter's largest window is {:g} wide: too sparse for it, or in "
            "a unit smaller than metres (--unit-scale)",
            result.dSpacing, c_dLargestWindow);
    if (result.dSpacing > 0.0 && result.dSpacing < c_dSmallestWindow / c_dManyInWindow)
        return fmt::format(
            "points lie {:.3g} apart, and the filter's smallest window is {:g} wide: a scan of something "
            "small, or in degrees or another unit larger than metres (--unit-scale)",
            result.dSpacing, c_dSmallestWindow);
    if (dShare < c_dHardlyAny)
        return "hardly any point is ground: heights may not be in z, or in a smaller unit than x and y, or "
               "there are "
               "stray points far below the ground";
    if (dShare > c_dNearlyAll)
        return "nearly every point is ground: it may be filtered already or without buildings and trees, or "
               "its unit is "
               "smaller than metres, so that houses are wider than its windows (--unit-scale)";
    return {};
}

} // namespace zorcld
