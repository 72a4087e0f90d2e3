#include <host/picture/DrawAxes.h>

#include <host/picture/CPen.h>
#include <host/picture/CPicture.h>
#include <host/picture/Ticks.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr CRgb c_grid = {200.0F, 208.0F, 220.0F};
constexpr double c_dFont = 15.0;
constexpr double c_dTitleY = 40.0; // space for the title of the upright scale, pixels at common size
constexpr double c_dTickY = 14.0;  // and for its marks

/// Ticks that leave about `dPixels` between them.
std::vector<CTick> MakeAxisTicks(double dMin, double dMax, double dLength, double dPixels)
{
    const double dMarks = std::max(1.0, dLength / dPixels);
    return MakeTicks(dMin, dMax, RoundDown((dMax - dMin) / dMarks * 1.9));
}

/// The widest label, pixels, where labels have about the precision that ticks will have.
double CalcWidest(double dMin, double dMax, double dSize)
{
    const double dRange = dMax - dMin;
    const double dStep = RoundDown(dRange > 0.0 ? dRange / 10.0 : 0.1);
    double dWidest = 0.0;
    for (const CTick& tick : MakeTicks(dMin - dStep, dMin + dStep, dStep))
        dWidest = std::max(dWidest, CalcTextWidth(tick.sLabel, dSize));
    for (const CTick& tick : MakeTicks(dMax - dStep, dMax + dStep, dStep))
        dWidest = std::max(dWidest, CalcTextWidth(tick.sLabel, dSize));
    return dWidest;
}

void DrawScaleX(CPen& pen, const CAxes& axes, int nWidth)
{
    const double m = pen.GetZoom();
    const double yEnd = axes.y + axes.dHeight;
    const double dGap = 10.0 * m;
    double dWidest = 0.0;
    for (const CTick& tick : MakeAxisTicks(axes.dMinX, axes.dMaxX, axes.dWidth, 110.0 * m))
        dWidest = std::max(dWidest, pen.CalcTextWidth(tick.sLabel));
    double dFree = 0.0; // where the next label may begin
    for (const CTick& tick :
         MakeAxisTicks(axes.dMinX, axes.dMaxX, axes.dWidth, std::max(110.0 * m, 1.3 * (dWidest + dGap))))
    {
        const double x =
            std::round(axes.x + (tick.dValue - axes.dMinX) / (axes.dMaxX - axes.dMinX) * axes.dWidth);
        pen.Rect(x - m / 2.0, axes.y, m, axes.dHeight, c_grid, 0.10);
        pen.Rect(x - m / 2.0, yEnd, std::max(1.0, m), 6.0 * m, pen.GetBackground().GetLineColor());
        const double dLabel = pen.CalcTextWidth(tick.sLabel);
        const double xLabel = std::min(x - 0.5 * dLabel, nWidth - dLabel - 4.0 * m);
        if (xLabel < dFree)
            continue;
        pen.Text(xLabel, yEnd + 24.0 * m, 0.0, tick.sLabel);
        dFree = xLabel + dLabel + dGap;
    }
}

void DrawScaleY(CPen& pen, const CAxes& axes)
{
    const double m = pen.GetZoom();
    pen.SetFont(axes.dFont, false);
    for (const CTick& tick : MakeAxisTicks(axes.dMinY, axes.dMaxY, axes.dHeight, 64.0 * m))
    {
        const double y =
            std::round(axes.y + (axes.dMaxY - tick.dValue) / (axes.dMaxY - axes.dMinY) * axes.dHeight);
        pen.Rect(axes.x, y - m / 2.0, axes.dWidth, m, c_grid, 0.10);
        pen.Rect(axes.x - 6.0 * m, y - m / 2.0, 6.0 * m, std::max(1.0, m),
                 pen.GetBackground().GetLineColor());
        pen.Text(axes.x - 12.0 * m, y + 5.0 * m, 1.0, tick.sLabel);
    }
}

} // namespace

double CalcAxisFont(double dMin, double dMax, int nWidth, int nHeight)
{
    const double m = CalcZoom(nWidth, nHeight);
    const double dRoom = 0.4 * nWidth - (c_dTitleY + c_dTickY) * m;
    return c_dFont * std::min(1.0, dRoom / CalcWidest(dMin, dMax, c_dFont * m));
}

double CalcAxisRoom(double dMin, double dMax, double dFont, int nWidth, int nHeight)
{
    const double m = CalcZoom(nWidth, nHeight);
    return std::max(104.0 * m, CalcWidest(dMin, dMax, dFont * m) + (c_dTitleY + c_dTickY) * m);
}

void DrawAxes(CPicture& picture, const CAxes& axes)
{
    CPen pen = picture.MakePen();
    const double m = pen.GetZoom();
    const int w = picture.GetWidth();
    const double xTitle = std::min(axes.x, 104.0 * m);
    pen.SetFont(18.0, true);
    pen.Text(xTitle, 34.0 * m, 0.0, pen.Fit(axes.sTitle, w - xTitle - 22.0 * m, Cut_Middle));
    pen.SetFont(14.0, false);
    pen.Text(xTitle, 56.0 * m, 0.0, pen.Fit(axes.sSubtitle, w - xTitle - 22.0 * m), 0.72);

    DrawScaleX(pen, axes, w);
    DrawScaleY(pen, axes);
    const CRgb color = pen.GetBackground().GetLineColor();
    const double dLine = std::max(1.0, std::round(1.4 * m));
    pen.Rect(axes.x - dLine, axes.y, dLine, axes.dHeight + dLine, color);
    pen.Rect(axes.x, axes.y + axes.dHeight, axes.dWidth, dLine, color);
    pen.SetFont(14.0, false);
    pen.Text(axes.x + axes.dWidth / 2.0, axes.y + axes.dHeight + 58.0 * m, 0.5,
             pen.Fit(axes.sLabelX, axes.dWidth), 0.8);
    pen.TextUpwards(28.0 * m, axes.y + axes.dHeight / 2.0, pen.Fit(axes.sLabelY, axes.dHeight), 0.8);
}

} // namespace zorcld
