#include <host/picture/DrawOverlay.h>

#include <host/picture/CPen.h>
#include <host/picture/CPicture.h>
#include <host/picture/Ticks.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr double c_dFont = 14.0; // of numbers and units, pixels at common size

void DrawTitle(CPen& pen, const COverlay& overlay, int nWidth)
{
    const double m = pen.GetZoom();
    const double dMaxWidth = nWidth - 44.0 * m;
    pen.SetFont(18.0, true);
    pen.Text(22.0 * m, 34.0 * m, 0.0, pen.Fit(overlay.sTitle, dMaxWidth, Cut_Middle));
    pen.SetFont(c_dFont, false);
    pen.Text(22.0 * m, 56.0 * m, 0.0, pen.Fit(overlay.sSubtitle, dMaxWidth), 0.72);
}

/// Labels of the bar; of two that would touch only the last is written, which tells most.
void DrawScaleLabels(CPen& pen, const COverlay& overlay, const CPixel& start, double dLength, double dUnits,
                     double dMaxRight)
{
    const double m = pen.GetZoom();
    const std::string& sUnit = overlay.sScaleUnit;
    const std::string sNumber = fmt::format("{:g}", dUnits);
    const double dNumber = pen.CalcTextWidth(sNumber);
    const double xEnd = std::max(start.x, std::min(start.x + dLength - 0.5 * dNumber, dMaxRight - dNumber));
    pen.Text(xEnd, start.y, 0.0, sNumber);
    const double xUnit = xEnd + dNumber + pen.CalcTextWidth(" ");
    pen.Text(xUnit, start.y, 0.0, pen.Fit(sUnit.empty() ? "units" : sUnit, dMaxRight - xUnit));
    const double dGap = 8.0 * m;
    const double dZero = 0.5 * pen.CalcTextWidth("0");
    if (start.x + dZero + dGap < xEnd)
        pen.Text(start.x, start.y, 0.5, "0");
    const std::string sHalf = fmt::format("{:g}", dUnits / 2.0);
    const double xHalf = start.x + dLength / 2.0;
    const double dHalf = 0.5 * pen.CalcTextWidth(sHalf);
    if (xHalf + dHalf + dGap < xEnd && xHalf - dHalf - dGap > start.x + dZero)
        pen.Text(xHalf, start.y, 0.5, sHalf);
}

void DrawScaleBar(CPen& pen, const COverlay& overlay, int nWidth, int nHeight)
{
    const double m = pen.GetZoom();
    const double dUnits = RoundDown(0.22 * nWidth * overlay.dUnitsPerPixel);
    const double dLength = dUnits / overlay.dUnitsPerPixel;
    const double x = 34.0 * m;
    const double y = nHeight - 30.0 * m;
    const double dBar = 7.0 * m;
    pen.SetFont(c_dFont, false);
    pen.Rect(x - m, y - m, dLength + 2.0 * m, dBar + 2.0 * m, {10, 12, 15}, 0.9);
    for (int k = 0; k < 4; ++k)
        pen.Rect(x + k * dLength / 4.0, y, dLength / 4.0, dBar,
                 k % 2 == 0 ? CRgb{240, 243, 247} : CRgb{92, 100, 112});
    DrawScaleLabels(pen, overlay, {x, y - 8.0 * m}, dLength, dUnits, nWidth - 64.0 * m);
}

/// An arrow at the lower right, in the height that the scale bar takes.
void DrawNorth(CPen& pen, int nWidth, int nHeight)
{
    const double m = pen.GetZoom();
    const double x = nWidth - 36.0 * m;
    const double y = nHeight - 16.0 * m;
    const CRgb color = pen.GetBackground().GetTextColor();
    pen.Fill({{x, y - 26.0 * m}, {x - 9.0 * m, y}, {x, y - 6.0 * m}}, color, 0.95);
    pen.Fill({{x, y - 26.0 * m}, {x + 9.0 * m, y}, {x, y - 6.0 * m}}, color, 0.55);
    pen.SetFont(13.0, true);
    pen.Text(x, y - 29.0 * m, 0.5, "N");
}

std::string MakeLegendTitle(const COverlay& overlay)
{
    return overlay.sUnit.empty() ? overlay.sRamp : overlay.sRamp + ", " + overlay.sUnit;
}

/// What stands in the legend, and how large it is; pixels.
struct CLegend
{
    double dPanel = 0.0;  ///< width
    double dHeight = 0.0; ///< of the ramp
    double dFont = c_dFont;
    std::vector<CTick> vecTicks; ///< one in the middle when there is no range
};

CLegend MakeLegend(const COverlay& overlay, int nWidth, int nHeight)
{
    const double m = CalcZoom(nWidth, nHeight);
    CLegend legend;
    const double dRoom = nHeight - CalcTitleHeight(nWidth, nHeight) - CalcScaleBarHeight(nWidth, nHeight);
    legend.dHeight = std::min({420.0 * m, nHeight * 0.62, dRoom - 66.0 * m});
    const double dRange = overlay.zMax - overlay.zMin;
    if (dRange > 0.0)
    {
        double dStep = RoundDown(dRange / 4.0);
        while (dRange / dStep * 24.0 * m > legend.dHeight) // labels, one above the other
            dStep = RoundDown(2.51 * dStep);
        legend.vecTicks = MakeTicks(overlay.zMin, overlay.zMax, dStep);
    }
    if (legend.vecTicks.empty())
        legend.vecTicks = {{0.5 * (overlay.zMin + overlay.zMax), FormatTick(overlay.zMin, 3)}};
    double dWidest = 0.0;
    for (const CTick& tick : legend.vecTicks)
        dWidest = std::max(dWidest, CalcTextWidth(tick.sLabel, c_dFont * m));
    const double dAround = 16.0 * m + 29.0 * m + 14.0 * m; // edge, ramp and mark, edge
    const double dMaxLabel = 0.4 * nWidth - dAround;       // longer ones are written smaller
    legend.dFont = c_dFont * std::min(1.0, dMaxLabel / std::max(dWidest, 1.0));
    const double dTitle = std::min(1.1 * CalcTextWidth(MakeLegendTitle(overlay), c_dFont * m), 150.0 * m);
    legend.dPanel = std::max({114.0 * m, dAround + std::min(dWidest, dMaxLabel), dTitle + 32.0 * m});
    return legend;
}

void DrawLegend(CPen& pen, const COverlay& overlay, int nWidth, int nHeight)
{
    const double m = pen.GetZoom();
    const CLegend legend = MakeLegend(overlay, nWidth, nHeight);
    const int nTop = CalcTitleHeight(nWidth, nHeight);
    const double dPanelHeight = legend.dHeight + 66.0 * m;
    const double xPanel = nWidth - legend.dPanel - 14.0 * m;
    const double yPanel = std::max<double>(nTop, (nHeight - legend.dHeight) / 2.0 - 24.0 * m);
    pen.Panel(xPanel, yPanel, legend.dPanel, dPanelHeight);

    const double x = xPanel + 16.0 * m;
    const double y = yPanel + 46.0 * m;
    const double dBar = 20.0 * m;
    pen.SetFont(c_dFont, true);
    pen.Text(x, yPanel + 26.0 * m, 0.0, pen.Fit(MakeLegendTitle(overlay), legend.dPanel - 24.0 * m));
    const int nRows = static_cast<int>(std::ceil(legend.dHeight));
    for (int k = 0; k < nRows; ++k) // rows of whole pixels: no seams between them
        pen.Rect(x, std::round(y) + k, dBar, 1.0, overlay.pRampColor(1.0 - (k + 0.5) / nRows));

    pen.SetFont(legend.dFont, false);
    const double dRange = overlay.zMax - overlay.zMin;
    for (const CTick& tick : legend.vecTicks)
    {
        const double dShare = dRange > 0.0 ? (overlay.zMax - tick.dValue) / dRange : 0.5;
        const double yTick = std::round(y + legend.dHeight * dShare);
        pen.Rect(x + dBar, yTick - m / 2.0, 5.0 * m, std::max(1.0, m), pen.GetBackground().GetTextColor(),
                 0.9);
        pen.Text(x + dBar + 9.0 * m, yTick + 5.0 * m, 0.0, tick.sLabel);
    }
}

} // namespace

int CalcLegendWidth(const COverlay& overlay, int nWidth, int nHeight)
{
    const double dPanel = overlay.swatches.vecSwatches.empty()
                              ? MakeLegend(overlay, nWidth, nHeight).dPanel
                              : CalcSwatchPanel(overlay.swatches, nWidth, nHeight);
    return static_cast<int>(std::ceil(dPanel + 12.0 * CalcZoom(nWidth, nHeight)));
}

int CalcTitleHeight(int nWidth, int nHeight)
{
    return static_cast<int>(std::ceil(72.0 * CalcZoom(nWidth, nHeight)));
}

int CalcScaleBarHeight(int nWidth, int nHeight)
{
    return static_cast<int>(std::ceil(62.0 * CalcZoom(nWidth, nHeight)));
}

void DrawOverlay(CPicture& picture, const COverlay& overlay)
{
    CPen pen = picture.MakePen();
    const int w = picture.GetWidth();
    const int h = picture.GetHeight();
    DrawTitle(pen, overlay, w);
    pen.SetFont(15.0, true);
    for (const CCaption& caption : overlay.vecCaptions)
        pen.Text(caption.x, caption.y, 0.0, pen.Fit(caption.sText, caption.dMaxWidth));
    if (!overlay.swatches.vecSwatches.empty())
        DrawSwatches(pen, overlay.swatches, w, h, CalcTitleHeight(w, h), h - CalcScaleBarHeight(w, h));
    else if (overlay.bLegend)
        DrawLegend(pen, overlay, w, h);
    if (overlay.dUnitsPerPixel > 0.0)
        DrawScaleBar(pen, overlay, w, h);
    if (overlay.bNorth)
        DrawNorth(pen, w, h);
}

} // namespace zorcld
