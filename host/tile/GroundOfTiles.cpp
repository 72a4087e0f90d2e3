#include <host/tile/GroundOfTiles.h>

#include <host/tile/CManifest.h>

#include <fmt/format.h>

#include <string>

namespace zorcld
{

namespace
{

constexpr double c_dRounded = 1e-12; // of a buffer that was computed from the unit

double GetPlanMetres(const CTileUnits& units)
{
    return units.dPlan > 0.0 ? units.dPlan : 1.0;
}

/// What the windows reach, without what floats round.
double CalcBuffer(const CTileUnits& units)
{
    return CTileOptions().dBuffer / GetPlanMetres(units);
}

/// Six digits, rounded up where they tell of less, so that what is read there is enough.
std::string FormatEnough(double d)
{
    std::string sDigits = fmt::format("{:.6g}", d);
    return std::stod(sDigits) < d ? fmt::format("{:.6g}", d * (1.0 + 1e-5)) : sDigits;
}

} // namespace

std::string FindGroundCause(const CTileOptions& options, const CTileUnits& units)
{
    if (units.bAngles)
        return "x and y are angles, and so are size and buffer; the ground filter takes lengths: "
               "the files must be projected first";
    const double dNeeded = CalcBuffer(units);
    if (options.dBuffer >= dNeeded * (1.0 - c_dRounded))
        return {};
    return fmt::format("the ground filter needs a buffer of {} units, these tiles have {}",
                       FormatEnough(dNeeded), options.dBuffer);
}

std::string FindGroundCause(const CManifest& manifest, const CTileUnits& units)
{
    std::string sCause = FindGroundCause(manifest.options, units);
    if (!sCause.empty())
        return sCause;
    const CTileOptions& options = manifest.options;
    const CTileGrid grid(options.dSize, options.dBuffer, manifest.origin, GetPlanMetres(units));
    const double dNeeded = CalcBuffer(units) + grid.GetMargin(); // a buffer above its least one serves, too
    if (options.dBuffer + manifest.dMargin < dNeeded * (1.0 - c_dRounded))
        return fmt::format(
            "these tiles have a buffer of {} units and a margin of {:g}, in that unit the ground "
            "filter needs {} together",
            options.dBuffer, manifest.dMargin, FormatEnough(dNeeded));
    return {};
}

} // namespace zorcld
