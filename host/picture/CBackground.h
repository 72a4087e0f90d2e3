#ifndef HOST_PICTURE_CBACKGROUND_H
#define HOST_PICTURE_CBACKGROUND_H

#include <host/picture/CRgb.h>

#include <string>

namespace zorcld
{

/// What a picture shows where no points are, and the colours that can be read on it.
struct CBackground
{
    CRgb color = {30.0F, 34.0F, 41.0F};
    bool bClear = false; ///< nothing: transparent

    bool IsLight() const { return !bClear && 0.3F * color.r + 0.59F * color.g + 0.11F * color.b > 140.0F; }

    CRgb GetTextColor() const { return IsLight() ? CRgb{24.0F, 28.0F, 34.0F} : CRgb{237.0F, 242.0F, 247.0F}; }
    CRgb GetPanelColor() const
    {
        return IsLight() ? CRgb{255.0F, 255.0F, 255.0F} : CRgb{15.0F, 18.0F, 23.0F};
    }
    CRgb GetLineColor() const
    {
        return IsLight() ? CRgb{84.0F, 92.0F, 104.0F} : CRgb{170.0F, 178.0F, 190.0F};
    }
};

/// The background that an option asks for: dark, light, transparent or #rrggbb.
/// @throws CUsageError
CBackground ParseBackground(const std::string& sText);

} // namespace zorcld

#endif
