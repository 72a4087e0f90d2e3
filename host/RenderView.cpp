#include <host/COutFile.h>
#include <host/GroupDigits.h>
#include <host/RenderView.h>
#include <host/picture/CPicture.h>

#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

constexpr std::int64_t c_nOverviewPnts = 400000;
constexpr double c_dLowShare = 0.02;      // of the points lie below the ramp, as many above it
constexpr float c_fPhotoStrength = 0.55F; // of the shading: photographs have their own
constexpr std::int64_t c_nFinePixels = 12000000;

/// What a coarse look tells: where the points lie on the picture plane and in height.
struct COverview
{
    CViewExtent extent;
    double dNear = 0.0; // least depth
    double zMin = 0.0;
    double zMax = 0.0;
    bool bEmpty = true;
};

COverview LookOver(const CPntCld& cloud, const CView& view)
{
    CQuery query = view.query;
    query.dLod = FindLod(cloud, query, c_nOverviewPnts);
    COverview overview;
    std::vector<double> vecHeights;
    double dNear = std::numeric_limits<double>::max();
    ForEachPnt(cloud, query,
               [&](const CCldCadPnt& pnt)
               {
                   if (!query.IsInside(pnt.m_pnt))
                       return;
                   const CViewPnt viewPnt = view.camera.Project(pnt.m_pnt);
                   overview.extent.Add(viewPnt);
                   dNear = std::min(dNear, viewPnt.dDepth);
                   vecHeights.push_back(pnt.m_pnt.z);
               });
    if (vecHeights.empty())
        return overview;
    overview.bEmpty = false;
    overview.dNear = dNear;
    const auto nLow = static_cast<std::ptrdiff_t>(c_dLowShare * static_cast<double>(vecHeights.size() - 1));
    std::nth_element(vecHeights.begin(), vecHeights.begin() + nLow, vecHeights.end());
    overview.zMin = vecHeights[static_cast<std::size_t>(nLow)];
    std::nth_element(vecHeights.begin(), vecHeights.end() - 1 - nLow, vecHeights.end());
    overview.zMax = *(vecHeights.end() - 1 - nLow);
    return overview;
}

/// How coordinates of the picture plane become raster pixels.
struct CFrame
{
    int nScale;      // raster pixels a picture pixel
    double dPerUnit; // raster pixels a coordinate unit
    double xOrg;     // picture plane, at the left edge
    double yOrg;     // picture plane, at the upper edge
    double dNear;

    CScreenPnt Place(const CViewPnt& pnt, const CCldCadPnt& cadPnt) const
    {
        const auto byte = [](float f)
        { return static_cast<unsigned char>(std::clamp(f, 0.0F, 1.0F) * 255.0F + 0.5F); };
        return {static_cast<float>((pnt.x - xOrg) * dPerUnit),
                static_cast<float>((yOrg - pnt.y) * dPerUnit),
                static_cast<float>((pnt.dDepth - dNear) * dPerUnit),
                byte(cadPnt.m_fR),
                byte(cadPnt.m_fG),
                byte(cadPnt.m_fB)};
    }
};

CFrame FitFrame(const COverview& overview, const CView& view, bool bLegend)
{
    const double dMargin = 0.025 * std::min(view.nWidth, view.nHeight);
    const double dTop = std::max<double>(dMargin, CPicture::GetTitleHeight(view.nWidth, view.nHeight));
    const double dBottom =
        std::max<double>(dMargin, view.bPlan ? CPicture::GetScaleBarHeight(view.nWidth, view.nHeight) : 0);
    const double dRight = dMargin + (bLegend ? CPicture::GetLegendWidth(view.nWidth, view.nHeight) : 0);
    const double dWidth = view.nWidth - dMargin - dRight;
    const double dHeight = view.nHeight - dTop - dBottom;

    const CViewExtent& e = overview.extent;
    double dPerUnit =
        std::min(dWidth / std::max(e.xmax - e.xmin, 1e-9), dHeight / std::max(e.ymax - e.ymin, 1e-9));
    dPerUnit = std::min(dPerUnit, 1e5); // a single point: 1/10000 of a unit is ten pixels
    const int nScale = static_cast<std::int64_t>(view.nWidth) * view.nHeight <= c_nFinePixels ? 2 : 1;
    const double xMid = 0.5 * (e.xmin + e.xmax) - (dMargin + 0.5 * dWidth) / dPerUnit;
    const double yMid = 0.5 * (e.ymin + e.ymax) + (dTop + 0.5 * dHeight) / dPerUnit;
    return {nScale, dPerUnit * nScale, xMid, yMid, overview.dNear};
}

std::vector<CScreenPnt> CollectPnts(const CPntCld& cloud, const CView& view, const CQuery& query,
                                    const CFrame& frame)
{
    std::vector<CScreenPnt> vecPnts;
    ForEachPnt(cloud, query,
               [&](const CCldCadPnt& pnt)
               {
                   // A level of detail may give a few points just outside of the planes: not in a picture.
                   if (query.IsInside(pnt.m_pnt))
                       vecPnts.push_back(frame.Place(view.camera.Project(pnt.m_pnt), pnt));
               });
    return vecPnts;
}

void Rasterize(const std::vector<CScreenPnt>& vecPnts, int nScale, float fStrength, CPntRaster& raster)
{
    const float fMaxRadius =
        std::clamp(0.0045F * static_cast<float>(std::min(raster.nWidth, raster.nHeight)), 2.0F, 16.0F);
    const float fSpacing = DrawPnts(vecPnts, fMaxRadius, raster);
    const int nReach = std::clamp(static_cast<int>(std::ceil(1.6F * fSpacing)), 2 * nScale, 5 * nScale);
    FillGaps(raster, nReach, 6, false);
    FillGaps(raster, 6 * nScale, 6, true);
    ShadeDepth(raster, nScale, fSpacing, fStrength);
}

/// The shapes as lines on the picture, in its pixels; rings closed.
std::vector<std::vector<CPixel>> PlaceShapes(const CShapes& shapes, const CView& view, const CFrame& frame)
{
    std::vector<std::vector<CPixel>> vecPaths;
    const auto add = [&](const TRing& ring, bool bClosed)
    {
        std::vector<CPixel> vecPath;
        for (const zor::geom::PNT_2D& pnt : ring)
        {
            const CViewPnt viewPnt = view.camera.Project(zor::geom::PNT_3D(pnt.x, pnt.y, 0.0));
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
        return GroupDigits(result.nNumPnts) + " points";
    return GroupDigits(result.nNumPnts) + " of " + GroupDigits(cloud.GetNumPnts()) + " points";
}

} // namespace

CViewResult RenderView(const CPntCld& cloud, CViewColors& colors, const CView& view, COutFile& out)
{
    const COverview overview = LookOver(cloud, view);
    const bool bLegend = colors.IsByHeight() && !overview.bEmpty;
    colors.GetHeightColors().SetRange(overview.zMin, overview.zMax);

    CViewResult result;
    CPntRaster raster(0, 0);
    CFrame frame{1, 1.0, 0.0, 0.0, 0.0};
    if (!overview.bEmpty)
        frame = FitFrame(overview, view, bLegend);
    raster = CPntRaster(view.nWidth * frame.nScale, view.nHeight * frame.nScale);
    if (!overview.bEmpty)
    {
        CQuery query = view.query;
        if (view.nMaxPnts > 0)
            query.dLod = FindLod(cloud, query, view.nMaxPnts);
        else if (!(query.dLod > 0.0))
            query.dLod = frame.nScale / frame.dPerUnit; // one picture pixel
        const std::vector<CScreenPnt> vecPnts = CollectPnts(cloud, view, query, frame);
        Rasterize(vecPnts, frame.nScale, colors.IsByHeight() ? 1.0F : c_fPhotoStrength, raster);
        result = {static_cast<std::int64_t>(vecPnts.size()), query.dLod};
    }

    COverlay overlay;
    overlay.sTitle = view.sTitle;
    overlay.sSubtitle = FormatSubtitle(cloud, result);
    overlay.sUnit = view.sUnit;
    overlay.bLegend = bLegend;
    overlay.zMin = overview.zMin;
    overlay.zMax = overview.zMax;
    overlay.dUnitsPerPixel = view.bPlan && !overview.bEmpty ? frame.nScale / frame.dPerUnit : 0.0;
    CPicture picture(raster, frame.nScale);
    if (!overview.bEmpty)
        picture.DrawPaths(PlaceShapes(view.overlay, view, frame));
    picture.DrawOverlay(overlay);
    picture.WritePng(out);
    return result;
}
