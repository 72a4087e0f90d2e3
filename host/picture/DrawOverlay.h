#ifndef HOST_PICTURE_DRAWOVERLAY_H
#define HOST_PICTURE_DRAWOVERLAY_H

#include <host/picture/DrawSwatches.h>
#include <host/picture/HeightRamp.h>

#include <string>
#include <vector>

namespace zorcld
{

class CPicture;

/// A line of text that begins at a place on the picture, pixels.
struct CCaption
{
    double x;
    double y;
    double dMaxWidth;
    std::string sText;
};

/// What is written and drawn around the points.
struct COverlay
{
    std::string sTitle;
    std::string sSubtitle;
    std::string sUnit;    ///< behind heights; may be empty
    bool bLegend = false; ///< ramp of heights from zMin to zMax
    double zMin = 0.0;
    double zMax = 0.0;
    std::string sRamp = "Height"; ///< what the ramp shows
    CRgb (*pRampColor)(double dShare) = &CalcHeightColor;
    CSwatchLegend swatches;      ///< instead of the ramp
    double dUnitsPerPixel = 0.0; ///< for the scale bar, across the picture; 0: none
    std::string sScaleUnit;      ///< behind its lengths; may be empty
    bool bNorth = false;         ///< an arrow to the north, which is up
    std::vector<CCaption> vecCaptions;

    bool HasLegend() const { return bLegend || !swatches.vecSwatches.empty(); }
};

/// Draws title, captions, legend, scale bar and arrow over a picture. Texts that are too long are cut with an
/// ellipsis; numbers never are.
void DrawOverlay(CPicture& picture, const COverlay& overlay);

/// Space to the right that the legend takes, pixels.
/// @param overlay  its unit and heights, or its swatches.
int CalcLegendWidth(const COverlay& overlay, int nWidth, int nHeight);

/// Space above and below that title and scale bar take, pixels.
int CalcTitleHeight(int nWidth, int nHeight);
int CalcScaleBarHeight(int nWidth, int nHeight);

} // namespace zorcld

#endif
