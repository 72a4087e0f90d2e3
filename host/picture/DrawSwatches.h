#ifndef HOST_PICTURE_DRAWSWATCHES_H
#define HOST_PICTURE_DRAWSWATCHES_H

#include <host/picture/CRgb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zorcld
{

class CPen;

/// What one colour of a picture stands for.
struct CSwatch
{
    CRgb color;
    std::string sText;
    std::int64_t nNumPnts = 0;
};

/// A legend of colours and what they stand for, on the right of a picture.
struct CSwatchLegend
{
    std::string sTitle;
    std::vector<CSwatch> vecSwatches; ///< none: no legend
};

/// Width of its panel, pixels; not above two fifths of the picture.
double CalcSwatchPanel(const CSwatchLegend& legend, int nWidth, int nHeight);

/// Draws it between these heights. Texts that are too long are cut with an ellipsis; where there are too
/// many, those of the fewest points are left out, which the last line tells.
void DrawSwatches(CPen& pen, const CSwatchLegend& legend, int nWidth, int nHeight, double dTop,
                  double dBottom);

} // namespace zorcld

#endif
