#ifndef HOST_PICTURE_DRAWAXES_H
#define HOST_PICTURE_DRAWAXES_H

#include <string>

namespace zorcld
{

class CPicture;

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
    double dFont = 15.0; ///< of the labels at the left, pixels at common size
};

/// Size of letters with which labels from `dMin` to `dMax` fit to the left of a diagram, pixels at common
/// size.
double CalcAxisFont(double dMin, double dMax, int nWidth, int nHeight);

/// Space to the left of a diagram that these labels and the title of the scale take, pixels.
double CalcAxisRoom(double dMin, double dMax, double dFont, int nWidth, int nHeight);

/// Draws the frame, the scales and the texts of a diagram over a picture. Texts that are too long are cut
/// with an ellipsis, numbers never are, and labels do not touch.
void DrawAxes(CPicture& picture, const CAxes& axes);

} // namespace zorcld

#endif
