#ifndef HOST_PICTURE_FINDPROPORTIONS_H
#define HOST_PICTURE_FINDPROPORTIONS_H

#include <host/picture/CCamera.h>

#include <optional>
#include <string>

namespace zorcld
{

struct COverview;

/// How a cloud is stretched for its picture.
struct CProportions
{
    static constexpr const char* c_sDegrees = "x and y taken for degrees";

    CStretch stretch;
    bool bDegrees = false;      ///< x and y are taken for degrees, heights for metres: drawn in metres
    double dExaggeration = 1.0; ///< how many times as large as they are heights are drawn
    std::string Format() const; ///< what must be told of it; empty: nothing
};

/// How many times as large as they are heights are drawn, as the first words below a title: small pictures
/// have room for no more.
/// @return with what separates it from the next; empty where they are drawn as they are.
std::string FormatExaggeration(double dExaggeration);

/// Degrees are told by what the file says, else by heights that are hundreds of times as large as the cloud
/// is wide; and only at places that are longitudes and latitudes.
/// @param bPlan     from above: heights are not exaggerated.
/// @param bDegrees  what the file says; none: nothing.
CProportions FindProportions(const COverview& overview, bool bPlan, std::optional<bool> bDegrees);

} // namespace zorcld

#endif
