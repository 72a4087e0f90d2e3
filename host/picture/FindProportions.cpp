#include <host/picture/FindProportions.h>

#include <host/output/UnitSymbol.h>
#include <host/picture/Ticks.h>
#include <host/picture/ViewRaster.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr double c_dSteepest = 300.0; // heights by width: of a cloud in one unit hardly ever
constexpr double c_dReadable = 0.15;  // heights by width as a picture shows them well
constexpr double c_dMaxExaggeration = 100.0;
constexpr double c_dLeastHeight = 1e-9; // of a cloud that is not flat

} // namespace

CProportions FindProportions(const COverview& overview, bool bPlan, std::optional<bool> bDegrees)
{
    CProportions proportions;
    const zor::geom::RECT_3D& box = overview.box;
    const double dHeight = overview.zMax - overview.zMin;
    const double dWidth = std::max(box.xmax - box.xmin, box.ymax - box.ymin);
    const bool bPlaces = box.xmin >= -360.0 && box.xmax <= 360.0 && box.ymin >= -90.0 && box.ymax <= 90.0;
    if (overview.bEmpty || !bPlaces || !(dWidth > 0.0) || !bDegrees.value_or(dHeight >= c_dSteepest * dWidth))
        return proportions;
    constexpr double c_dRadian = 3.14159265358979323846 / 180.0;
    const double dCos = std::cos(0.5 * (box.ymin + box.ymax) * c_dRadian);
    proportions.bDegrees = true;
    proportions.stretch.x = c_dMetresPerDegree * std::max(dCos, 0.01);
    proportions.stretch.y = c_dMetresPerDegree;
    if (bPlan)
        return proportions;
    const double dMetres = std::max(proportions.stretch.x * (box.xmax - box.xmin),
                                    proportions.stretch.y * (box.ymax - box.ymin));
    const double dWanted =
        std::clamp(c_dReadable * dMetres / std::max(dHeight, c_dLeastHeight), 1.0, c_dMaxExaggeration);
    proportions.dExaggeration = RoundDown(dWanted);
    proportions.stretch.z = proportions.dExaggeration;
    return proportions;
}

std::string CProportions::Format() const
{
    if (!bDegrees)
        return {};
    return dExaggeration == 1.0
               ? c_sDegrees
               : fmt::format("{}, heights drawn {:g} times as large", c_sDegrees, dExaggeration);
}

std::string FormatExaggeration(double dExaggeration)
{
    return dExaggeration == 1.0 ? std::string() : fmt::format("heights \u00d7 {:g}, ", dExaggeration);
}

} // namespace zorcld
