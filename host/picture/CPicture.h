#ifndef HOST_PICTURE_CPICTURE_H
#define HOST_PICTURE_CPICTURE_H

#include <host/picture/CPen.h>
#include <host/picture/CPntRaster.h>

#include <cairo.h>

#include <memory>
#include <string>
#include <vector>

namespace zorcld
{

class COutFile;

/// A line of text that begins at a place on the picture, pixels.
struct CCaption
{
    double x;
    double y;
    std::string sText;
};

/// What is drawn around the points.
struct COverlay
{
    std::string sTitle;
    std::string sSubtitle;
    std::string sUnit;    ///< behind lengths and heights; may be empty
    bool bLegend = false; ///< ramp of heights from zMin to zMax
    double zMin = 0.0;
    double zMax = 0.0;
    double dUnitsPerPixel = 0.0; ///< for the scale bar; 0: none
    std::vector<CCaption> vecCaptions;
};

/// A diagram around the points: what its area shows, and what is written beside it.
struct CAxes
{
    std::string sTitle;
    std::string sSubtitle;
    std::string sLabelX;
    std::string sLabelY;
    double x = 0.0; ///< area of the diagram on the picture, pixels from the upper left corner
    double y = 0.0;
    double dWidth = 0.0;
    double dHeight = 0.0;
    double dMinX = 0.0; ///< what its edges stand for
    double dMaxX = 0.0;
    double dMinY = 0.0;
    double dMaxY = 0.0;
};

/// The finished picture: background, points, labels.
class CPicture
{
public:
    /// Space to the right that the legend takes, for pictures of this size, pixels.
    static int GetLegendWidth(int nWidth, int nHeight);

    /// Space above and below that title and scale bar take.
    static int GetTitleHeight(int nWidth, int nHeight);
    static int GetScaleBarHeight(int nWidth, int nHeight);

    /// Averages `nScale` × `nScale` raster pixels into one over a plain background.
    CPicture(const CPntRaster& raster, int nScale);

    void DrawOverlay(const COverlay& overlay);

    /// Lines that stand out from whatever is below them. Places may lie anywhere, at infinity too.
    void DrawPaths(const std::vector<std::vector<CPixel>>& vecPaths);

    void DrawAxes(const CAxes& axes);

    /// @throws CFailure
    void WritePng(COutFile& out) const;

private:
    struct CDestroy
    {
        void operator()(cairo_surface_t* pSurface) const { cairo_surface_destroy(pSurface); }
    };

    int m_nWidth;
    int m_nHeight;
    std::unique_ptr<cairo_surface_t, CDestroy> m_pSurface;
};

} // namespace zorcld

#endif
