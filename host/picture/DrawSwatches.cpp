#include <host/picture/DrawSwatches.h>

#include <host/picture/CPen.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr double c_dFont = 14.0;    // pixels at common size, as the following
constexpr double c_dRow = 24.0;     // from line to line
constexpr double c_dMinRow = 13.0;  // where there are many
constexpr double c_dAbove = 40.0;   // to the top of the first line
constexpr double c_dBelow = 12.0;   // under the last
constexpr double c_dText = 41.0;    // from the panel's edge to the texts
constexpr double c_dAround = 55.0;  // of a line of text, both sides together
constexpr double c_dOutside = 14.0; // from the picture's edge

/// The swatches that there is room for, the last line being kept for what is left out.
std::vector<CSwatch> ChooseSwatches(const CSwatchLegend& legend, std::size_t nMaxRows)
{
    std::vector<CSwatch> vecChosen = legend.vecSwatches;
    if (vecChosen.size() <= nMaxRows)
        return vecChosen;
    const std::size_t nKept = std::max<std::size_t>(nMaxRows, 2) - 1;
    std::vector<std::int64_t> vecCounts;
    vecCounts.reserve(vecChosen.size());
    for (const CSwatch& swatch : vecChosen)
        vecCounts.push_back(swatch.nNumPnts);
    std::nth_element(vecCounts.begin(), vecCounts.begin() + static_cast<std::ptrdiff_t>(nKept),
                     vecCounts.end(), std::greater<>());
    const std::int64_t nLeast = vecCounts[nKept];
    vecChosen.erase(std::remove_if(vecChosen.begin(), vecChosen.end(),
                                   [&](const CSwatch& swatch) { return swatch.nNumPnts <= nLeast; }),
                    vecChosen.end());
    for (const CSwatch& swatch : legend.vecSwatches) // of equals, the first ones
        if (swatch.nNumPnts == nLeast && vecChosen.size() < nKept)
            vecChosen.push_back(swatch);
    return vecChosen;
}

} // namespace

double CalcSwatchPanel(const CSwatchLegend& legend, int nWidth, int nHeight)
{
    const double m = CalcZoom(nWidth, nHeight);
    double dWidest = 1.1 * CalcTextWidth(legend.sTitle, c_dFont * m) - 20.0 * m;
    for (const CSwatch& swatch : legend.vecSwatches)
        dWidest = std::max(dWidest, CalcTextWidth(swatch.sText, c_dFont * m));
    return std::min(std::max(114.0 * m, dWidest + c_dAround * m), 0.4 * nWidth);
}

void DrawSwatches(CPen& pen, const CSwatchLegend& legend, int nWidth, int nHeight, double dTop,
                  double dBottom)
{
    const double m = pen.GetZoom();
    const double dAround = (c_dAbove + c_dBelow) * m;
    const double dRoom = std::max(dBottom - dTop - dAround, 2.0 * c_dMinRow * m);
    const std::vector<CSwatch> vecSwatches =
        ChooseSwatches(legend, static_cast<std::size_t>(dRoom / (c_dMinRow * m)));
    const std::size_t nLeftOut = legend.vecSwatches.size() - vecSwatches.size();
    const auto dRows = static_cast<double>(vecSwatches.size() + (nLeftOut > 0 ? 1 : 0));
    const double dRow = std::min(c_dRow * m, dRoom / dRows);
    const double dPanel = CalcSwatchPanel(legend, nWidth, nHeight);
    const double dHeight = dRows * dRow + dAround;
    const double x = nWidth - dPanel - c_dOutside * m;
    double y = std::max(dTop, 0.5 * (dTop + dBottom - dHeight));
    pen.Panel(x, y, dPanel, dHeight);
    pen.SetFont(c_dFont, true);
    pen.Text(x + 16.0 * m, y + 26.0 * m, 0.0, pen.Fit(legend.sTitle, dPanel - 24.0 * m));
    y += c_dAbove * m;
    const double dBox = std::min(15.0 * m, 0.8 * dRow);
    pen.SetFont(std::min(c_dFont, dRow / m - 1.0), false);
    const double dMaxText = dPanel - (c_dText + 8.0) * m;
    for (const CSwatch& swatch : vecSwatches)
    {
        pen.Rect(x + 16.0 * m, y + 0.5 * (dRow - dBox), dBox, dBox, swatch.color);
        pen.Text(x + c_dText * m, y + 0.5 * dRow + 5.0 * m, 0.0, pen.Fit(swatch.sText, dMaxText));
        y += dRow;
    }
    if (nLeftOut > 0)
        pen.Text(x + 16.0 * m, y + 0.5 * dRow + 5.0 * m, 0.0,
                 pen.Fit(fmt::format("and {} more", nLeftOut), dPanel - 24.0 * m));
}

} // namespace zorcld
