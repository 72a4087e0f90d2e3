#ifndef HOST_PICTURE_RENDERPROFILE_H
#define HOST_PICTURE_RENDERPROFILE_H

#include <host/picture/CPictureUnits.h>
#include <zor3geom/PNT_3D.h>
#include <zor4data/CCldCadPnt.h>

#include <string>
#include <vector>

namespace zorcld
{

class CHeightColors;
class COutFile;

/// A point of a cross-section.
struct CProfilePnt
{
    double dAlong;  ///< from the beginning of the line, in the unit of the profile
    double dAcross; ///< from the line, positive on its left
    CCldCadPnt pnt;
};

/// A cross-section: a corridor along a line, seen from its right.
struct CProfile
{
    double dLength = 0.0; ///< of the line, coordinate units, or metres where these are degrees
    double dWidth = 0.0;  ///< of the corridor
    std::string sNote;    ///< what must be told of its lengths; empty: nothing
    std::vector<CProfilePnt> vecPnts;
};

/// How the picture of a cross-section is wanted.
struct CProfileView
{
    int nWidth = 0; ///< pixels
    int nHeight = 0;
    std::string sTitle;
    CPictureUnits units;
};

/// Draws the points by distance and height, within axes, and writes the picture as PNG, not yet committed.
/// @param pColors  null: the points keep their colours.
/// @return how many times heights are drawn larger than distances.
/// @throws CFailure
double RenderProfile(const CProfile& profile, CHeightColors* pColors, const CProfileView& view,
                     COutFile& out);

} // namespace zorcld

#endif
