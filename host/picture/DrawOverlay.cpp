#include <host/picture/DrawOverlay.h>

#include <host/picture/CPen.h>
#include <host/picture/CPicture.h>
#include <host/picture/HeightRamp.h>
#include <host/picture/Ticks.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

void DrawTitle(CPen& pen, const COverlay& overlay)
{
    const double m = pen.GetZoom();
    pen.SetFont(18.0, true);
    pen.Text(22.0 * m, 34.0 * m, 0.0, overlay.sTitle);
    pen.SetFont(14.0, false);
    pen.Text(22.0 * m, 56.0 * m, 0.0, overlay.sSubtitle, 0.72);
}

void DrawScaleBar(CPen& pen, const COverlay& overlay, int nWidth, int nHeight)
{
    const double m = pen.GetZoom();
    const double dUnits = RoundDown(0.22 * nWidth * overlay.dUnitsPerPixel);
    const double dLength = dUnits / overlay.dUnitsPerPixel;
    const double x = 34.0 * m;
    const double y = nHeight - 30.0 * m;
    const double dBar = 7.0 * m;
    pen.SetFont(14.0, false);
    const std::string sLabel =
        WithUnit(fmt::format("{:g}", dUnits), overlay.sUnit.empty() ? "units" : overlay.sUnit);
    pen.Rect(x - m, y - m, dLength + 2.0 * m, dBar + 2.0 * m, {10, 12, 15}, 0.9);
    for (int k = 0; k < 4; ++k)
        pen.Rect(x + k * dLength / 4.0, y, dLength / 4.0, dBar,
                 k % 2 == 0 ? CRgb{240, 243, 247} : CRgb{92, 100, 112});
    pen.Text(x, y - 8.0 * m, 0.5, "0");
    pen.Text(x + dLength / 2.0, y - 8.0 * m, 0.5, fmt::format("{:g}", dUnits / 2.0));
    pen.Text(x + dLength, y - 8.0 * m, 0.3, sLabel);
}

void DrawLegend(CPen& pen, const COverlay& overlay, int nWidth, int nHeight)
{
    const double m = pen.GetZoom();
    const double dPanel = CalcLegendWidth(nWidth, nHeight) - 12.0 * m;
    const double dHeight = std::min(420.0 * m, nHeight * 0.62);
    const double xPanel = nWidth - dPanel - 14.0 * m;
    const double yPanel = (nHeight - dHeight) / 2.0 - 24.0 * m;
    pen.Panel(xPanel, yPanel, dPanel, dHeight + 66.0 * m);

    const double x = xPanel + 16.0 * m;
    const double y = yPanel + 46.0 * m;
    const double dBar = 20.0 * m;
    pen.SetFont(14.0, true);
    pen.Text(x, yPanel + 26.0 * m, 0.0, overlay.sUnit.empty() ? "Height" : "Height, " + overlay.sUnit);
    const int nRows = static_cast<int>(std::ceil(dHeight));
    for (int k = 0; k < nRows; ++k) // rows of whole pixels: no seams between them
        pen.Rect(x, std::round(y) + k, dBar, 1.0, CalcHeightColor(1.0 - (k + 0.5) / nRows));

    pen.SetFont(14.0, false);
    const double dRange = overlay.zMax - overlay.zMin;
    if (!(dRange > 0.0))
    {
        pen.Text(x + dBar + 9.0 * m, y + dHeight / 2.0 + 5.0 * m, 0.0, fmt::format("{:.3f}", overlay.zMin));
        return;
    }
    for (const CTick& tick : MakeTicks(overlay.zMin, overlay.zMax, RoundDown(dRange / 4.0)))
    {
        const double yTick = std::round(y + dHeight * (overlay.zMax - tick.dValue) / dRange);
        pen.Rect(x + dBar, yTick - m / 2.0, 5.0 * m, std::max(1.0, m), {235, 238, 242}, 0.9);
        pen.Text(x + dBar + 9.0 * m, yTick + 5.0 * m, 0.0, tick.sLabel);
    }
}

} // namespace

int CalcLegendWidth(int nWidth, int nHeight)
{
    return static_cast<int>(std::ceil(126.0 * CalcZoom(nWidth, nHeight)));
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
    DrawTitle(pen, overlay);
    pen.SetFont(15.0, true);
    for (const CCaption& caption : overlay.vecCaptions)
        pen.Text(caption.x, caption.y, 0.0, caption.sText);
    if (overlay.bLegend)
        DrawLegend(pen, overlay, picture.GetWidth(), picture.GetHeight());
    if (overlay.dUnitsPerPixel > 0.0)
        DrawScaleBar(pen, overlay, picture.GetWidth(), picture.GetHeight());
}

} // namespace zorcld
