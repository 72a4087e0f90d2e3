#ifndef HOST_PICTURE_RENDERVIEW_H
#define HOST_PICTURE_RENDERVIEW_H

#include <host/picture/CBackground.h>
#include <host/picture/CCamera.h>
#include <host/picture/CPictureUnits.h>
#include <host/query/Query.h>
#include <host/shapes/CShapes.h>

#include <cstdint>
#include <string>

class CPntCld;

namespace zorcld
{

class COutFile;
class CViewColors;

/// What picture is wanted.
struct CView
{
    CCamera camera = CCamera::Plan();
    CQuery query;              ///< its spacing 0: chosen from the picture's resolution
    std::int64_t nMaxPnts = 0; ///< 0: no limit
    int nWidth = 0;            ///< pixels
    int nHeight = 0;
    bool bPlan = false; ///< north is up: an arrow shows it
    CBackground background;
    double dPntSize = 0.0; ///< diameter of points, pixels; 0: as large as the gaps between them
    CShapes overlay;       ///< drawn over the points; from above only
    std::string sTitle;
    std::string sNote; ///< added to the number of points below the title
    CPictureUnits units;
};

struct CViewResult
{
    std::int64_t nNumPnts = 0; ///< points drawn
    double dLod = 0.0;         ///< spacing that was asked for; 0: every point
    std::string sProportions;  ///< what must be told of them; empty: as the coordinates are
};

/// Draws what the cloud delivers and writes it as PNG, not yet committed.
/// @param colors  the cloud's own listener; its height range is set here.
/// @throws CFailure
CViewResult RenderView(const CPntCld& cloud, CViewColors& colors, const CView& view, COutFile& out);

} // namespace zorcld

#endif
