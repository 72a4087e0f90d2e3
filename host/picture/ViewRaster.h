#ifndef HOST_PICTURE_VIEWRASTER_H
#define HOST_PICTURE_VIEWRASTER_H

#include <host/picture/CCamera.h>
#include <host/picture/CPntRaster.h>
#include <host/picture/CScreenPnt.h>
#include <host/query/Query.h>
#include <zor3geom/RECT_3D.h>

#include <cstdint>
#include <vector>

class CPntCld;

namespace zorcld
{

// The steps from a cloud to its picture: look over it, fit a frame to it, collect the points as they fall
// on the picture, draw and shade them.

/// What a coarse look tells: where the points lie on the picture plane and in height.
struct COverview
{
    CViewExtent extent;
    zor::geom::RECT_3D box; ///< of the coordinates; undefined when empty
    double dNear = 0.0;     ///< least depth
    double zMin = 0.0;      ///< some points in a hundred lie below it, as many above zMax
    double zMax = 0.0;
    bool bEmpty = true;
};

/// Looks at a coarse level of detail of what the query delivers.
COverview LookOver(const CPntCld& cloud, CQuery query, const CCamera& camera);

/// Where on a picture the points are to lie, pixels from the upper left corner.
struct CArea
{
    double x = 0.0;
    double y = 0.0;
    double dWidth = 0.0;
    double dHeight = 0.0;
};

/// How coordinates of the picture plane become raster pixels.
struct CFrame
{
    int nScale = 1;        ///< raster pixels a picture pixel
    double dPerUnit = 1.0; ///< raster pixels a coordinate unit
    double xOrg = 0.0;     ///< picture plane, at the left edge of the picture
    double yOrg = 0.0;     ///< picture plane, at its upper edge
    double dNear = 0.0;

    CScreenPnt Place(const CViewPnt& pnt, const CCldCadPnt& cadPnt) const;

    double GetUnitsPerPixel() const { return nScale / dPerUnit; }
};

/// The frame that shows the overview as large as it fits, in the middle of the area.
CFrame FitFrame(const COverview& overview, const CArea& area, int nScale);

/// How many raster pixels there are a picture pixel, each way: fewer for very large pictures.
int ChooseScale(int nWidth, int nHeight);

/// Appends the points that the query delivers. @return their number.
std::int64_t CollectPnts(const CPntCld& cloud, const CQuery& query, const CCamera& camera,
                         const CFrame& frame, std::vector<CScreenPnt>& vecPnts);

/// How points are drawn.
struct CLook
{
    bool bPhoto = false;     ///< in colours of photographs, which show form of their own: shaded less
    bool bKeepHoles = false; ///< holes tell something: only small ones are closed
    double dPntSize = 0.0;   ///< diameter, picture pixels, and no gap is closed; 0: as large as gaps are
};

/// Draws the points and shades them.
void Rasterize(const std::vector<CScreenPnt>& vecPnts, int nScale, const CLook& look, CPntRaster& raster);

} // namespace zorcld

#endif
