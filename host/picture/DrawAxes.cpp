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

constexpr CRgb c_axis = {170.0F, 178.0F, 190.0F};
constexpr CRgb c_grid = {200.0F, 208.0F, 220.0F};

/// Ticks that leave about `dPixels` between them.
std::vector<CTick> MakeAxisTicks(double dMin, double dMax, double dLength, double dPixels)
{
    const double dMarks = std::max(1.0, dLength / dPixels);
    return MakeTicks(dMin, dMax, RoundDown((dMax - dMin) / dMarks * 1.9));
}

void DrawScaleX(CPen& pen, const CAxes& axes)
{
    const double m = pen.GetZoom();
    const double yEnd = axes.y + axes.dHeight;
    for (const CTick& tick : MakeAxisTicks(axes.dMinX, axes.dMaxX, axes.dWidth, 110.0 * m))
    {
        const double x =
            std::round(axes.x + (tick.dValue - axes.dMinX) / (axes.dMaxX - axes.dMinX) * axes.dWidth);
        pen.Rect(x - m / 2.0, axes.y, m, axes.dHeight, c_grid, 0.10);
        pen.Rect(x - m / 2.0, yEnd, std::max(1.0, m), 6.0 * m, c_axis);
        pen.Text(x, yEnd + 24.0 * m, 0.5, tick.sLabel);
    }
}

void DrawScaleY(CPen& pen, const CAxes& axes)
{
    const double m = pen.GetZoom();
    for (const CTick& tick : MakeAxisTicks(axes.dMinY, axes.dMaxY, axes.dHeight, 64.0 * m))
    {
        const double y =
            std::round(axes.y + (axes.dMaxY - tick.dValue) / (axes.dMaxY - axes.dMinY) * axes.dHeight);
        pen.Rect(axes.x, y - m / 2.0, axes.dWidth, m, c_grid, 0.10);
        pen.Rect(axes.x - 6.0 * m, y - m / 2.0, 6.0 * m, std::max(1.0, m), c_axis);
        pen.Text(axes.x - 12.0 * m, y + 5.0 * m, 1.0, tick.sLabel);
    }
}

} // namespace

void DrawAxes(CPicture& picture, const CAxes& axes)
{
    CPen pen = picture.MakePen();
    const double m = pen.GetZoom();
    pen.SetFont(18.0, true);
    pen.Text(axes.x, 34.0 * m, 0.0, axes.sTitle);
    pen.SetFont(14.0, false);
    pen.Text(axes.x, 56.0 * m, 0.0, axes.sSubtitle, 0.72);

    DrawScaleX(pen, axes);
    DrawScaleY(pen, axes);
    const double dLine = std::max(1.0, std::round(1.4 * m));
    pen.Rect(axes.x - dLine, axes.y, dLine, axes.dHeight + dLine, c_axis);
    pen.Rect(axes.x, axes.y + axes.dHeight, axes.dWidth, dLine, c_axis);
    pen.Text(axes.x + axes.dWidth / 2.0, axes.y + axes.dHeight + 58.0 * m, 0.5, axes.sLabelX, 0.8);
    pen.TextUpwards(28.0 * m, axes.y + axes.dHeight / 2.0, axes.sLabelY, 0.8);
}

} // namespace zorcld
