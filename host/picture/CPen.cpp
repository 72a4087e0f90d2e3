#include <host/picture/CPen.h>

#include <formats/MakePrintable.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr double c_dRadians = 3.14159265358979323846 / 180.0;

} // namespace

double CalcZoom(int nWidth, int nHeight)
{
    return std::clamp(std::min(nHeight / 1000.0, nWidth / 1300.0), 0.55, 4.0);
}

std::string WithUnit(const std::string& sNumber, const std::string& sUnit)
{
    return sUnit.empty() ? sNumber : sNumber + " " + sUnit;
}

double CalcTextWidth(const std::string& sText, double dSize)
{
    cairo_surface_t* const pSurface = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
    double dWidth = 0.0;
    {
        CPen pen(pSurface, 1.0, CBackground());
        pen.SetFont(dSize, false);
        dWidth = pen.CalcTextWidth(sText);
    }
    cairo_surface_destroy(pSurface);
    return dWidth;
}

CPen::CPen(cairo_surface_t* pSurface, double dZoom, const CBackground& background)
    : m_pCairo(cairo_create(pSurface)), m_dZoom(dZoom), m_background(background)
{
    SetFont(15.0, false);
}

CPen::~CPen()
{
    cairo_destroy(m_pCairo);
}

void CPen::SetFont(double dSize, bool bBold)
{
    cairo_select_font_face(m_pCairo, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           bBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(m_pCairo, dSize * m_dZoom);
}

double CPen::CalcTextWidth(const std::string& sText) const
{
    cairo_text_extents_t extents;
    cairo_text_extents(m_pCairo, MakePrintable(sText).c_str(), &extents);
    return extents.x_advance;
}

std::string CPen::Fit(const std::string& sText, double dMaxWidth, enumCut eCut) const
{
    return FitText(MakePrintable(sText), dMaxWidth, eCut,
                   [this](const std::string& sPart) { return CalcTextWidth(sPart); });
}

void CPen::Text(double x, double y, double dAlign, const std::string& sText, double dAlpha)
{
    const std::string sPrintable = MakePrintable(sText); // another would end all drawing
    const double xStart = std::round(x - dAlign * CalcTextWidth(sPrintable));
    if (m_background.bClear) // whatever comes behind it
    {
        cairo_move_to(m_pCairo, xStart, std::round(y));
        cairo_text_path(m_pCairo, sPrintable.c_str());
        cairo_set_line_width(m_pCairo, 3.0 * m_dZoom);
        cairo_set_line_join(m_pCairo, CAIRO_LINE_JOIN_ROUND);
        SetColor(m_background.GetPanelColor(), 0.7);
        cairo_stroke(m_pCairo);
    }
    cairo_move_to(m_pCairo, xStart, std::round(y));
    SetColor(m_background.GetTextColor(), dAlpha);
    cairo_show_text(m_pCairo, sPrintable.c_str());
    cairo_new_path(m_pCairo);
}

void CPen::TextUpwards(double x, double y, const std::string& sText, double dAlpha)
{
    cairo_save(m_pCairo);
    cairo_translate(m_pCairo, std::round(x), std::round(y));
    cairo_rotate(m_pCairo, -90.0 * c_dRadians);
    Text(0.0, 0.0, 0.5, sText, dAlpha);
    cairo_restore(m_pCairo);
}

void CPen::Rect(double x, double y, double dWidth, double dHeight, const CRgb& color, double dAlpha)
{
    cairo_rectangle(m_pCairo, x, y, dWidth, dHeight);
    SetColor(color, dAlpha);
    cairo_fill(m_pCairo);
}

void CPen::Fill(const std::vector<CPixel>& vecCorners, const CRgb& color, double dAlpha)
{
    cairo_new_path(m_pCairo);
    for (const CPixel& pixel : vecCorners)
        cairo_line_to(m_pCairo, pixel.x, pixel.y);
    SetColor(color, dAlpha);
    cairo_fill(m_pCairo);
}

void CPen::SetColor(const CRgb& color, double dAlpha)
{
    cairo_set_source_rgba(m_pCairo, color.r / 255.0, color.g / 255.0, color.b / 255.0, dAlpha);
}

void CPen::Panel(double x, double y, double dWidth, double dHeight)
{
    const double r = 7.0 * m_dZoom;
    cairo_new_sub_path(m_pCairo);
    cairo_arc(m_pCairo, x + dWidth - r, y + r, r, -90.0 * c_dRadians, 0.0);
    cairo_arc(m_pCairo, x + dWidth - r, y + dHeight - r, r, 0.0, 90.0 * c_dRadians);
    cairo_arc(m_pCairo, x + r, y + dHeight - r, r, 90.0 * c_dRadians, 180.0 * c_dRadians);
    cairo_arc(m_pCairo, x + r, y + r, r, 180.0 * c_dRadians, 270.0 * c_dRadians);
    cairo_close_path(m_pCairo);
    SetColor(m_background.GetPanelColor(), 0.62);
    cairo_fill(m_pCairo);
}

void CPen::Paths(const std::vector<std::vector<CPixel>>& vecPaths, double dWidth, const CRgb& color,
                 double dAlpha)
{
    cairo_set_line_join(m_pCairo, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(m_pCairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_width(m_pCairo, dWidth);
    SetColor(color, dAlpha);
    for (const std::vector<CPixel>& vecPath : vecPaths)
    {
        cairo_new_sub_path(m_pCairo);
        for (const CPixel& pixel : vecPath)
            cairo_line_to(m_pCairo, pixel.x, pixel.y);
    }
    cairo_stroke(m_pCairo);
}

} // namespace zorcld
