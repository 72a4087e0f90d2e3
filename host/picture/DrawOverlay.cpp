#include <host/picture/CPicture.h>
#include <host/picture/HeightRamp.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double c_dRadians = 3.14159265358979323846 / 180.0;

/// Sizes of the labels follow the picture's.
double CalcZoom(int nWidth, int nHeight)
{
    return std::clamp(std::min(nHeight / 1000.0, nWidth / 1300.0), 0.55, 4.0);
}

/// The largest of 1, 2, 5, 10, 20, 50... that is at most `d`.
double RoundDown(double d)
{
    const double dPower = std::pow(10.0, std::floor(std::log10(d)));
    for (const double dStep : {5.0, 2.0})
        if (dStep * dPower <= d * (1.0 + 1e-9))
            return dStep * dPower;
    return dPower;
}

/// Draws in pixels of a picture whose labels are `dZoom` times their common size.
class CPen
{
public:
    CPen(cairo_surface_t* pSurface, double dZoom) : m_pCairo(cairo_create(pSurface)), m_dZoom(dZoom)
    {
        SetFont(15.0, false);
    }
    ~CPen() { cairo_destroy(m_pCairo); }
    CPen(const CPen&) = delete;
    CPen& operator=(const CPen&) = delete;

    double GetZoom() const { return m_dZoom; }

    void SetFont(double dSize, bool bBold)
    {
        cairo_select_font_face(m_pCairo, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               bBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(m_pCairo, dSize * m_dZoom);
    }

    double CalcTextWidth(const std::string& sText) const
    {
        cairo_text_extents_t extents;
        cairo_text_extents(m_pCairo, sText.c_str(), &extents);
        return extents.x_advance;
    }

    /// @param dAlign  0: the text begins at x, 0.5: its middle lies there, 1: it ends there.
    void Text(double x, double y, double dAlign, const std::string& sText, double dAlpha = 0.95)
    {
        cairo_move_to(m_pCairo, std::round(x - dAlign * CalcTextWidth(sText)), std::round(y));
        cairo_set_source_rgba(m_pCairo, 0.93, 0.95, 0.97, dAlpha);
        cairo_show_text(m_pCairo, sText.c_str());
        cairo_new_path(m_pCairo);
    }

    void Rect(double x, double y, double dWidth, double dHeight, const CRgb& color, double dAlpha = 1.0)
    {
        cairo_rectangle(m_pCairo, x, y, dWidth, dHeight);
        cairo_set_source_rgba(m_pCairo, color.r / 255.0, color.g / 255.0, color.b / 255.0, dAlpha);
        cairo_fill(m_pCairo);
    }

    void Panel(double x, double y, double dWidth, double dHeight)
    {
        const double r = 7.0 * m_dZoom;
        cairo_new_sub_path(m_pCairo);
        cairo_arc(m_pCairo, x + dWidth - r, y + r, r, -90.0 * c_dRadians, 0.0);
        cairo_arc(m_pCairo, x + dWidth - r, y + dHeight - r, r, 0.0, 90.0 * c_dRadians);
        cairo_arc(m_pCairo, x + r, y + dHeight - r, r, 90.0 * c_dRadians, 180.0 * c_dRadians);
        cairo_arc(m_pCairo, x + r, y + r, r, 180.0 * c_dRadians, 270.0 * c_dRadians);
        cairo_close_path(m_pCairo);
        cairo_set_source_rgba(m_pCairo, 0.06, 0.07, 0.09, 0.62);
        cairo_fill(m_pCairo);
    }

private:
    cairo_t* m_pCairo;
    double m_dZoom;
};

std::string WithUnit(const std::string& sNumber, const std::string& sUnit)
{
    return sUnit.empty() ? sNumber : sNumber + " " + sUnit;
}

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
    const double dPanel = CPicture::GetLegendWidth(nWidth, nHeight) - 12.0 * m;
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
    const double dStep = RoundDown(dRange / 4.0);
    const int nDecimals = std::clamp(static_cast<int>(-std::floor(std::log10(dStep) + 1e-9)), 0, 4);
    for (double z = std::ceil(overlay.zMin / dStep - 1e-9) * dStep; z <= overlay.zMax + 1e-9 * dStep;
         z += dStep)
    {
        const double yTick = std::round(y + dHeight * (overlay.zMax - z) / dRange);
        pen.Rect(x + dBar, yTick - m / 2.0, 5.0 * m, std::max(1.0, m), {235, 238, 242}, 0.9);
        // Adding 0 turns a negative zero into a plain one.
        pen.Text(x + dBar + 9.0 * m, yTick + 5.0 * m, 0.0,
                 fmt::format("{:.{}f}", std::round(z / dStep) * dStep + 0.0, nDecimals));
    }
}

} // namespace

int CPicture::GetLegendWidth(int nWidth, int nHeight)
{
    return static_cast<int>(std::ceil(126.0 * CalcZoom(nWidth, nHeight)));
}

int CPicture::GetTitleHeight(int nWidth, int nHeight)
{
    return static_cast<int>(std::ceil(72.0 * CalcZoom(nWidth, nHeight)));
}

int CPicture::GetScaleBarHeight(int nWidth, int nHeight)
{
    return static_cast<int>(std::ceil(62.0 * CalcZoom(nWidth, nHeight)));
}

void CPicture::DrawOverlay(const COverlay& overlay)
{
    CPen pen(m_pSurface.get(), CalcZoom(m_nWidth, m_nHeight));
    DrawTitle(pen, overlay);
    if (overlay.bLegend)
        DrawLegend(pen, overlay, m_nWidth, m_nHeight);
    if (overlay.dUnitsPerPixel > 0.0)
        DrawScaleBar(pen, overlay, m_nWidth, m_nHeight);
}
