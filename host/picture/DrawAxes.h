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
};

/// Draws the frame, the scales and the texts of a diagram over a picture.
void DrawAxes(CPicture& picture, const CAxes& axes);

} // namespace zorcld

#endif
