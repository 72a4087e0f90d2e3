#ifndef HOST_PICTURE_ATTRIBUTECOLORS_H
#define HOST_PICTURE_ATTRIBUTECOLORS_H

#include <formats/CLasAttributes.h>
#include <host/picture/CRgb.h>
#include <host/picture/DrawSwatches.h>

#include <cstdint>
#include <vector>

namespace zorcld
{

/// Colour of a class. The common ones can be told apart, and from dark and light backgrounds, by eyes that do
/// not see red, green or blue too.
CRgb CalcClassColor(std::uint8_t nClass);

/// Colour of the number of a return; 0, which is not told, is grey.
CRgb CalcReturnColor(std::uint16_t nReturn);

/// Grey of a share of the range of intensities, 0 to 1; neither end is lost on a dark or light background.
CRgb CalcGrey(double dShare);

/// The legend of a picture whose points have these attributes.
/// @param vecCounts   points by attribute.
/// @param eAttribute  class or return.
std::vector<CSwatch> MakeSwatches(const std::vector<std::uint32_t>& vecCounts, enumLasAttribute eAttribute);

} // namespace zorcld

#endif
