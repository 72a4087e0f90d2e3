#include <host/picture/RenderView.h>

#include <host/output/COutFile.h>
#include <host/output/FormatCount.h>
#include <host/picture/AttributeColors.h>
#include <host/picture/CPicture.h>
#include <host/picture/CViewColors.h>
#include <host/picture/DrawOverlay.h>
#include <host/picture/DrawPaths.h>
#include <host/picture/FindAttributes.h>
#include <host/picture/FindProportions.h>
#include <host/picture/ViewRaster.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <vector>

namespace zorcld
{

namespace
{

/// Where the points go: what title, scale and legend leave.
CArea FindArea(const CView& view, const COverlay& overlay)
{
    const double dMargin = 0.025 * std::min(view.nWidth, view.nHeight);
    const double dTop = std::max<double>(dMargin, CalcTitleHeight(view.nWidth, view.nHeight));
    const double dBottom = std::max<double>(dMargin, CalcScaleBarHeight(view.nWidth, view.nHeight));
    const double dRight =
        dMargin + (overlay.HasLegend() ? CalcLegendWidth(overlay, view.nWidth, view.nHeight) : 0);
    return {dMargin, dTop, view.nWidth - dMargin - dRight, view.nHeight - dTop - dBottom};
}

/// The shapes as lines on the picture, in its pixels; rings closed.
std::vector<std::vector<CPixel>> PlaceShapes(const CShapes& shapes, const CCamera& camera,
                                             const CFrame& frame)
{
    std::vector<std::vector<CPixel>> vecPaths;
    const auto add = [&](const TRing& ring, bool bClosed)
    {
        std::vector<CPixel> vecPath;
        for (const zor::geom::PNT_2D& pnt : ring)
        {
            const CViewPnt viewPnt = camera.Project(zor::geom::PNT_3D(pnt.x, pnt.y, 0.0));
            vecPath.push_back({(viewPnt.x - frame.xOrg) * frame.dPerUnit / frame.nScale,
                               (frame.yOrg - viewPnt.y) * frame.dPerUnit / frame.nScale});
        }
        if (bClosed && !vecPath.empty())
            vecPath.push_back(vecPath.front());
        vecPaths.push_back(std::move(vecPath));
    };
    for (const zor::geom::TMultiPartPolygon& polygon : shapes.vecPolygons)
    {
        add(polygon.outer, true);
        for (const TRing& hole : polygon.holes)
            add(hole, true);
    }
    for (const TRing& line : shapes.vecLines)
        add(line, false);
    return vecPaths;
}

std::string FormatSubtitle(const CPntCld& cloud, const CViewResult& result)
{
    if (result.nNumPnts == cloud.GetNumPnts())
        return FormatCount(result.nNumPnts, "point");
    return GroupDigits(result.nNumPnts) + " of " + FormatCount(cloud.GetNumPnts(), "point");
}

/// Makes the colours suit what is seen of the cloud, and the legend that tells what they stand for.
void FitColors(const CPntCld& cloud, const CView& view, const COverview& overview, CViewColors& colors,
               COverlay& overlay)
{
    colors.GetHeightColors().SetRange(overview.zMin, overview.zMax);
    overlay.zMin = overview.zMin;
    overlay.zMax = overview.zMax;
    const enumLasAttribute eAttribute = colors.GetAttribute();
    overlay.bLegend = eAttribute == LasAttribute_Intensity || colors.IsByHeight();
    if (eAttribute == LasAttribute_None)
        return;
    const std::vector<std::uint32_t> vecCounts = CountAttributes(cloud, view.query);
    if (eAttribute != LasAttribute_Intensity)
    {
        overlay.swatches = {eAttribute == LasAttribute_Class ? "Class" : "Return",
                            MakeSwatches(vecCounts, eAttribute)};
        return;
    }
    const CIntensityRange range = FindIntensities(vecCounts);
    colors.SetIntensities(range.dMin, range.dMax);
    overlay.zMin = range.dMin;
    overlay.zMax = range.dMax;
    overlay.sRamp = "Intensity";
    overlay.pRampColor = &CalcGrey;
    overlay.sUnit.clear();
}

CViewResult DrawCloud(const CPntCld& cloud, const CView& view, const CCamera& camera, bool bPhoto,
                      const CFrame& frame, CPntRaster& raster)
{
    CQuery query = view.query;
    if (view.nMaxPnts > 0)
        query.dLod = FindLod(cloud, query, view.nMaxPnts);
    else if (!(query.dLod > 0.0))
        query.dLod = frame.GetUnitsPerPixel() / camera.GetLargestStretch();
    std::vector<CScreenPnt> vecPnts;
    CViewResult result = {CollectPnts(cloud, query, camera, frame, vecPnts), query.dLod, {}};
    CLook look;
    look.bPhoto = bPhoto;
    look.dPntSize = view.dPntSize;
    Rasterize(vecPnts, frame.nScale, look, raster);
    return result;
}

} // namespace

CViewResult RenderView(const CPntCld& cloud, CViewColors& colors, const CView& view, COutFile& out)
{
    CCamera camera = view.camera;
    COverview overview = LookOver(cloud, view.query, camera);
    const CProportions proportions = FindProportions(overview, view.bPlan, view.units.bDegrees);
    if (proportions.bDegrees)
    {
        camera.SetStretch(proportions.stretch);
        overview = LookOver(cloud, view.query, camera);
    }
    COverlay overlay;
    overlay.sTitle = view.sTitle;
    overlay.sUnit = view.units.sHeight;
    overlay.sScaleUnit = view.units.sPlan;
    overlay.bNorth = view.bPlan;
    if (!overview.bEmpty)
        FitColors(cloud, view, overview, colors, overlay);

    CViewResult result;
    CFrame frame;
    if (!overview.bEmpty)
        frame = FitFrame(overview, FindArea(view, overlay), ChooseScale(view.nWidth, view.nHeight));
    CPntRaster raster(view.nWidth * frame.nScale, view.nHeight * frame.nScale);
    if (!overview.bEmpty)
    {
        result = DrawCloud(cloud, view, camera, !colors.IsByHeight(), frame, raster);
        overlay.dUnitsPerPixel = frame.GetUnitsPerPixel();
    }
    result.sProportions = proportions.Format();
    if (proportions.bDegrees)
        overlay.sScaleUnit = "m";
    overlay.sSubtitle = FormatExaggeration(proportions.dExaggeration) + FormatSubtitle(cloud, result);
    if (!view.sNote.empty())
        overlay.sSubtitle += ", " + view.sNote;
    if (proportions.bDegrees)
        overlay.sSubtitle += std::string(", ") + CProportions::c_sDegrees;
    CPicture picture(raster, frame.nScale, view.background);
    if (!overview.bEmpty)
        DrawPaths(picture, PlaceShapes(view.overlay, camera, frame));
    DrawOverlay(picture, overlay);
    picture.WritePng(out);
    return result;
}

} // namespace zorcld
