#ifndef HOST_PICTURE_CPEN_H
#define HOST_PICTURE_CPEN_H

#include <host/picture/CRgb.h>

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

/// Draws in pixels of a picture whose labels are `dZoom` times their common size.
class CPen
{
public:
    CPen(cairo_surface_t* pSurface, double dZoom);
    ~CPen();
    CPen(const CPen&) = delete;
    CPen& operator=(const CPen&) = delete;

    double GetZoom() const { return m_dZoom; }

    void SetFont(double dSize, bool bBold);
    double CalcTextWidth(const std::string& sText) const;

    /// Writes a line of text whose foot lies at y.
    /// @param dAlign  0: the text begins at x, 0.5: its middle lies there, 1: it ends there.
    void Text(double x, double y, double dAlign, const std::string& sText, double dAlpha = 0.95);

    /// Writes upwards; the middle of the text lies at y.
    void TextUpwards(double x, double y, const std::string& sText, double dAlpha = 0.95);

    void Rect(double x, double y, double dWidth, double dHeight, const CRgb& color, double dAlpha = 1.0);

    /// Draws a dark, half transparent rectangle with round corners.
    void Panel(double x, double y, double dWidth, double dHeight);

    /// Draws lines from place to place of each path.
    void Paths(const std::vector<std::vector<CPixel>>& vecPaths, double dWidth, const CRgb& color,
               double dAlpha = 1.0);

private:
    cairo_t* m_pCairo;
    double m_dZoom;
};

} // namespace zorcld

#endif
