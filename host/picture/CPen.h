#ifndef HOST_PICTURE_CPEN_H
#define HOST_PICTURE_CPEN_H

#include <host/picture/CBackground.h>
#include <host/picture/FitText.h>

#include <cairo.h>

#include <string>
#include <vector>

namespace zorcld
{

/// How many times their common size labels have on a picture of this size, pixels.
double CalcZoom(int nWidth, int nHeight);

/// The number with the unit behind it, where there is one.
std::string WithUnit(const std::string& sNumber, const std::string& sUnit);

/// A place on a picture, pixels.
struct CPixel
{
    double x;
    double y;
};

/// Width of a text, pixels, in regular letters of this size.
double CalcTextWidth(const std::string& sText, double dSize);

/// Draws in pixels of a picture whose labels are `dZoom` times their common size.
class CPen
{
public:
    /// @param background  texts are to be read on it.
    CPen(cairo_surface_t* pSurface, double dZoom, const CBackground& background);
    ~CPen();
    CPen(const CPen&) = delete;
    CPen& operator=(const CPen&) = delete;

    double GetZoom() const { return m_dZoom; }

    void SetFont(double dSize, bool bBold);
    double CalcTextWidth(const std::string& sText) const;

    /// The text in the current font, cut where it is wider than this.
    std::string Fit(const std::string& sText, double dMaxWidth, enumCut eCut = Cut_End) const;

    const CBackground& GetBackground() const { return m_background; }

    /// Writes a line of text whose foot lies at y.
    /// @param dAlign  0: the text begins at x, 0.5: its middle lies there, 1: it ends there.
    void Text(double x, double y, double dAlign, const std::string& sText, double dAlpha = 0.95);

    /// Writes upwards; the middle of the text lies at y.
    void TextUpwards(double x, double y, const std::string& sText, double dAlpha = 0.95);

    void Rect(double x, double y, double dWidth, double dHeight, const CRgb& color, double dAlpha = 1.0);

    /// Fills the polygon.
    void Fill(const std::vector<CPixel>& vecCorners, const CRgb& color, double dAlpha = 1.0);

    /// Draws a half transparent rectangle with round corners, for texts to lie upon.
    void Panel(double x, double y, double dWidth, double dHeight);

    /// Draws lines from place to place of each path.
    void Paths(const std::vector<std::vector<CPixel>>& vecPaths, double dWidth, const CRgb& color,
               double dAlpha = 1.0);

private:
    void SetColor(const CRgb& color, double dAlpha);

    cairo_t* m_pCairo;
    double m_dZoom;
    CBackground m_background;
};

} // namespace zorcld

#endif
