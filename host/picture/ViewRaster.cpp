#include <host/picture/ViewRaster.h>

#include <formats/Compact.h>
#include <host/picture/CloseHoles.h>
#include <host/picture/DrawPnts.h>
#include <host/picture/FillGaps.h>
#include <host/picture/ShadeDepth.h>
#include <zor4data/CPntCld.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorcld
{

namespace
{

constexpr std::int64_t c_nOverviewPnts = 400000;
constexpr double c_dLowShare = 0.02;            // of the points lie below the ramp, as many above it
constexpr float c_fPhotoStrength = 0.55F;       // of the shading: photographs have their own
constexpr std::int64_t c_nFinePixels = 4000000; // four raster pixels each: 240 MB

void Add(const zor::geom::PNT_3D& pnt, bool bFirst, zor::geom::RECT_3D& box)
{
    if (bFirst)
        box = {pnt.x, pnt.y, pnt.z, pnt.x, pnt.y, pnt.z};
    box = {std::min(box.xmin, pnt.x), std::min(box.ymin, pnt.y), std::min(box.zmin, pnt.z),
           std::max(box.xmax, pnt.x), std::max(box.ymax, pnt.y), std::max(box.zmax, pnt.z)};
}

} // namespace

COverview LookOver(const CPntCld& cloud, CQuery query, const CCamera& camera)
{
    query.dLod = FindLod(cloud, query, c_nOverviewPnts);
    COverview overview;
    std::vector<double> vecHeights;
    double dNear = std::numeric_limits<double>::max();
    ForEachPnt(cloud, query,
               [&](const CCldCadPnt& pnt)
               {
                   if (!query.IsInside(pnt.m_pnt))
                       return;
                   const CViewPnt viewPnt = camera.Project(pnt.m_pnt);
                   overview.extent.Add(viewPnt);
                   Add(pnt.m_pnt, vecHeights.empty(), overview.box);
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

CScreenPnt CFrame::Place(const CViewPnt& pnt, const CCldCadPnt& cadPnt) const
{
    CScreenPnt screenPnt{};
    screenPnt.x = static_cast<float>((pnt.x - xOrg) * dPerUnit);
    screenPnt.y = static_cast<float>((yOrg - pnt.y) * dPerUnit);
    screenPnt.fDepth = static_cast<float>((pnt.dDepth - dNear) * dPerUnit);
    screenPnt.SetColor(cadPnt);
    return screenPnt;
}

int ChooseScale(int nWidth, int nHeight)
{
    return static_cast<std::int64_t>(nWidth) * nHeight <= c_nFinePixels ? 2 : 1;
}

CFrame FitFrame(const COverview& overview, const CArea& area, int nScale)
{
    const CViewExtent& e = overview.extent;
    double dPerUnit = std::min(area.dWidth / std::max(e.xmax - e.xmin, 1e-9),
                               area.dHeight / std::max(e.ymax - e.ymin, 1e-9));
    dPerUnit =
        std::min(dPerUnit, 10.0 * c_dCompactScale); // a single point: a step of the cloud is ten pixels
    const double xLeft = 0.5 * (e.xmin + e.xmax) - (area.x + 0.5 * area.dWidth) / dPerUnit;
    const double yTop = 0.5 * (e.ymin + e.ymax) + (area.y + 0.5 * area.dHeight) / dPerUnit;
    return {nScale, dPerUnit * nScale, xLeft, yTop, overview.dNear};
}

std::int64_t CollectPnts(const CPntCld& cloud, const CQuery& query, const CCamera& camera,
                         const CFrame& frame, std::vector<CScreenPnt>& vecPnts)
{
    const std::size_t nBefore = vecPnts.size();
    ForEachPnt(cloud, query,
               [&](const CCldCadPnt& pnt)
               {
                   // A level of detail may give a few points just outside of the planes: not in a picture.
                   if (query.IsInside(pnt.m_pnt))
                       vecPnts.push_back(frame.Place(camera.Project(pnt.m_pnt), pnt));
               });
    return static_cast<std::int64_t>(vecPnts.size() - nBefore);
}

void Rasterize(const std::vector<CScreenPnt>& vecPnts, int nScale, const CLook& look, CPntRaster& raster)
{
    const float fStrength = look.bPhoto ? c_fPhotoStrength : 1.0F;
    if (look.dPntSize > 0.0)
    {
        const auto fRadius = static_cast<float>(0.5 * look.dPntSize * nScale);
        ShadeDepth(raster, DrawDiscs(vecPnts, fRadius, raster), nScale, fStrength);
        return;
    }
    const float fMaxRadius =
        std::clamp(0.0045F * static_cast<float>(std::min(raster.nWidth, raster.nHeight)), 2.0F, 16.0F);
    const CSpacingMap spacing = DrawPnts(vecPnts, fMaxRadius, raster);
    FillGaps(raster, spacing, nScale);
    const int nHole = look.bKeepHoles ? 4 * nScale : 6 * nScale;
    CloseHoles(raster, std::clamp(static_cast<int>(std::lround(1.5F * spacing.fTypical)), nHole, 8 * nScale));
    ShadeDepth(raster, spacing, nScale, fStrength);
}

} // namespace zorcld
