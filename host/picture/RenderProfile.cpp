#include <host/picture/RenderProfile.h>

#include <host/output/COutFile.h>
#include <host/output/FormatCount.h>
#include <host/picture/CPen.h>
#include <host/picture/CPicture.h>
#include <host/picture/DrawAxes.h>
#include <host/picture/DrawPnts.h>
#include <host/picture/FindProportions.h>
#include <host/picture/HeightRamp.h>
#include <host/picture/Ticks.h>
#include <host/picture/ViewRaster.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorcld
{

namespace
{

constexpr double c_dMaxExaggeration = 100.0;
constexpr double c_dRoomAbove = 1.08;   // of the range of heights: points do not touch the frame
constexpr double c_dLeastShare = 1e-12; // of the heights, that the diagram reaches over
constexpr float c_fMaxRadius = 3.2F;    // picture pixels at common size

struct CRange
{
    double dMin = 0.0;
    double dMax = 0.0;
};

CRange FindHeights(const CProfile& profile)
{
    if (profile.vecPnts.empty())
        return {0.0, 0.0};
    const auto [itMin, itMax] = std::minmax_element(profile.vecPnts.begin(), profile.vecPnts.end(),
                                                    [](const CProfilePnt& a, const CProfilePnt& b)
                                                    { return a.pnt.m_pnt.z < b.pnt.m_pnt.z; });
    return {itMin->pnt.m_pnt.z, itMax->pnt.m_pnt.z};
}

/// The area of the diagram, and how large heights are drawn: as large as they fit in round steps.
double FitAxes(const CProfile& profile, const CRange& heights, const CProfileView& view, CAxes& axes)
{
    const double m = CalcZoom(view.nWidth, view.nHeight);
    axes.dFont = CalcAxisFont(heights.dMin, heights.dMax, view.nWidth, view.nHeight);
    axes.x = std::round(CalcAxisRoom(heights.dMin, heights.dMax, axes.dFont, view.nWidth, view.nHeight));
    axes.y = std::round(84.0 * m);
    axes.dWidth = std::max(1.0, view.nWidth - axes.x - std::round(40.0 * m));
    axes.dHeight = std::max(1.0, view.nHeight - axes.y - std::round(84.0 * m));
    const double dPerUnit = axes.dWidth / profile.dLength;
    const double dNeeded = std::max((heights.dMax - heights.dMin) * c_dRoomAbove, 1e-9);
    const double dExaggeration = std::min(RoundDown(axes.dHeight / dNeeded / dPerUnit), c_dMaxExaggeration);
    const double dShown = axes.dHeight / (dPerUnit * dExaggeration);
    const double dMiddle = 0.5 * (heights.dMin + heights.dMax);
    // A range that is lost in the size of the heights would be none.
    const double dHalf = std::max(0.5 * dShown, c_dLeastShare * std::fabs(dMiddle));
    axes.dMinX = 0.0;
    axes.dMaxX = profile.dLength;
    axes.dMinY = dMiddle - dHalf;
    axes.dMaxY = dMiddle + dHalf;
    return dExaggeration;
}

std::vector<CScreenPnt> PlacePnts(const CProfile& profile, CHeightColors* pColors, const CAxes& axes,
                                  int nScale)
{
    std::vector<CScreenPnt> vecPnts;
    vecPnts.reserve(profile.vecPnts.size());
    const double dPerX = axes.dWidth / (axes.dMaxX - axes.dMinX) * nScale;
    const double dPerY = axes.dHeight / (axes.dMaxY - axes.dMinY) * nScale;
    for (const CProfilePnt& pnt : profile.vecPnts)
    {
        CCldCadPnt colored = pnt.pnt;
        if (pColors != nullptr)
            pColors->GetColor(colored.m_pnt.z, colored.m_fR, colored.m_fG, colored.m_fB);
        CScreenPnt& screenPnt = vecPnts.emplace_back();
        screenPnt.x = static_cast<float>(axes.x * nScale + (pnt.dAlong - axes.dMinX) * dPerX);
        screenPnt.y = static_cast<float>(axes.y * nScale + (axes.dMaxY - colored.m_pnt.z) * dPerY);
        screenPnt.fDepth = static_cast<float>((pnt.dAcross + 0.5 * profile.dWidth) * dPerX);
        screenPnt.SetColor(colored);
    }
    return vecPnts;
}

std::string FormatSubtitle(const CProfile& profile, double dExaggeration, const std::string& sUnit)
{
    std::string sText = fmt::format("{}{} up to {} beside the line", FormatExaggeration(dExaggeration),
                                    FormatCount(static_cast<std::int64_t>(profile.vecPnts.size()), "point"),
                                    WithUnit(fmt::format("{:.6g}", 0.5 * profile.dWidth), sUnit));
    if (!profile.sNote.empty())
        sText += ", " + profile.sNote;
    return sText;
}

std::string AddUnit(const char* pLabel, const std::string& sUnit)
{
    return sUnit.empty() ? pLabel : std::string(pLabel) + ", " + sUnit;
}

} // namespace

double RenderProfile(const CProfile& profile, CHeightColors* pColors, const CProfileView& view, COutFile& out)
{
    const CRange heights = FindHeights(profile);
    CAxes axes;
    const double dExaggeration = FitAxes(profile, heights, view, axes);
    axes.sTitle = view.sTitle;
    axes.sSubtitle = FormatSubtitle(profile, dExaggeration, view.units.sPlan);
    axes.sLabelX = AddUnit("Distance along the line", view.units.sPlan);
    axes.sLabelY = AddUnit("Height", view.units.sHeight);
    if (pColors != nullptr)
        pColors->SetRange(heights.dMin, heights.dMax);

    const int nScale = ChooseScale(view.nWidth, view.nHeight);
    CPntRaster raster(view.nWidth * nScale, view.nHeight * nScale);
    const float fRadius = c_fMaxRadius * static_cast<float>(nScale * CalcZoom(view.nWidth, view.nHeight));
    DrawPnts(PlacePnts(profile, pColors, axes, nScale), fRadius, raster);
    CPicture picture(raster, nScale);
    DrawAxes(picture, axes);
    picture.WritePng(out);
    return dExaggeration;
}

} // namespace zorcld
