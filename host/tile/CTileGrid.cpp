#include <host/tile/CTileGrid.h>

#include <formats/CloudLimits.h>
#include <formats/Compact.h>
#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorcld
{

namespace
{

// Coordinates up to here are doubles finer than a fiftieth of a step, so that half steps are told apart.
constexpr double c_dMaxPlace = 1.0e10;

constexpr double c_dMostMargins = 16.0; // times the size: a point is then in some thousand tiles

/// Ten ends of windows are rounded on the way from a point to the farthest that decides about it, and the
/// coordinates of both: each by half of what floats lie apart there. How far that is in a unit that nobody
/// knows is known up to a factor of 2: it doubles at each power of 2, where that lies follows from the unit.
double CalcMargin(const TOrigin& origin, double dBuffer, double dMetres)
{
    constexpr double c_dRoundings = 12.0;
    const double dFarthest =
        std::max(std::fabs(static_cast<double>(origin[0])), std::fabs(static_cast<double>(origin[1]))) +
        c_dReach + dBuffer + 1.0;
    const auto apart = [](double d)
    {
        const auto f = static_cast<float>(d);
        return static_cast<double>(std::nextafter(f, std::numeric_limits<float>::infinity()) - f);
    };
    if (dMetres <= 0.0)
        return c_dRoundings * apart(dFarthest);
    // The filter has coordinates in metres, as long as that is the unit, or is told so.
    return c_dRoundings / 2.0 * std::max(apart(dFarthest), apart(dFarthest * dMetres) / dMetres);
}

} // namespace

CTileGrid::CTileGrid(double dSize, double dBuffer, const TOrigin& origin, double dPlanMetres)
    : m_dSize(dSize), m_origin(origin)
{
    for (std::size_t k = 0; k < 2; ++k)
    {
        const double dFarthest = std::fabs(static_cast<double>(origin[k])) + 2.0 * c_dReach;
        if (dFarthest > c_dMaxPlace)
            throw CUsageError(
                fmt::format("coordinates as large as {:.6g} are too coarse to be cut into tiles",
                            static_cast<double>(origin[k])));
        if (dFarthest / dSize > 0.5 * std::numeric_limits<std::int32_t>::max())
            throw CUsageError(fmt::format("--size: {:.6g} is too small for coordinates as large as {:.6g}",
                                          dSize, static_cast<double>(origin[k])));
    }
    if (dBuffer > 0.0)
        m_dMargin = CalcMargin(origin, dBuffer, dPlanMetres);
    if (m_dMargin > c_dMostMargins * dSize)
        throw CUsageError(fmt::format(
            "--size: coordinates as large as {:.6g} are so coarse that a tile needs {:.6g} "
            "units more around it than the buffer; {:g} is too small beside them",
            static_cast<double>(std::max(std::fabs(origin[0]), std::fabs(origin[1]))), m_dMargin, dSize));
    m_nReach = static_cast<std::int64_t>(std::ceil((dBuffer + m_dMargin) * c_dCompactScale));
}

std::int64_t CTileGrid::GetFirstStep(std::size_t nAxis, std::int64_t nCell) const
{
    constexpr double c_dFar = 4e18; // beyond every step, and an integer still
    const double dStep = std::ceil(CompactUnits(static_cast<double>(nCell) * m_dSize, m_origin[nAxis]));
    return static_cast<std::int64_t>(std::clamp(dStep, -c_dFar, c_dFar));
}

std::int64_t CTileGrid::FindCell(std::size_t nAxis, std::int64_t nStep) const
{
    const double dPlace = static_cast<double>(nStep) / c_dCompactScale + static_cast<double>(m_origin[nAxis]);
    auto nCell = static_cast<std::int64_t>(std::floor(dPlace / m_dSize));
    while (GetFirstStep(nAxis, nCell) > nStep)
        --nCell;
    while (GetFirstStep(nAxis, nCell + 1) <= nStep)
        ++nCell;
    return nCell;
}

zor::geom::RECT_2D CTileGrid::GetCore(const CCell& cell) const
{
    const auto border = [this](std::size_t nAxis, std::int64_t nCell)
    {
        return (static_cast<double>(GetFirstStep(nAxis, nCell)) - 0.5) / c_dCompactScale +
               static_cast<double>(m_origin[nAxis]);
    };
    return {border(0, cell.nColumn), border(1, cell.nRow), border(0, cell.nColumn + std::int64_t{1}),
            border(1, cell.nRow + std::int64_t{1})};
}

} // namespace zorcld
