#include <host/picture/CGroundPicture.h>

#include <host/output/COutFile.h>
#include <host/output/FormatCount.h>
#include <host/output/GroupDigits.h>
#include <host/picture/CPicture.h>
#include <host/picture/DrawOverlay.h>
#include <host/picture/HeightRamp.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr double c_dGap = 26.0;     // between the parts, pixels at common size
constexpr double c_dCaption = 30.0; // height of a caption

// The colours are for the ground's relief; of the range of heights above it they reach over this share.
constexpr double c_dShareAbove = 0.3;

} // namespace

void CGroundPicture::AddBefore(const CPntCld& cloud)
{
    m_overview = LookOver(cloud, CQuery(), CCamera::Plan());
    m_nNumPnts[0] = cloud.GetNumPnts();
    if (m_overview.bEmpty)
        return;
    FitParts();
    AddPnts(cloud, 0);
}

void CGroundPicture::AddAfter(const CPntCld& cloud)
{
    m_nNumPnts[1] = cloud.GetNumPnts();
    if (m_nNumPnts[1] == 0)
        return;
    AddPnts(cloud, 1);
    const COverview ground = LookOver(cloud, CQuery(), CCamera::Plan());
    m_overview.zMin = ground.zMin;
    m_overview.zMax = ground.zMax + c_dShareAbove * std::max(m_overview.zMax - ground.zMax, 0.0);
}

/// Divides what title, scale and legend leave of the picture the way that makes the parts larger.
void CGroundPicture::FitParts()
{
    const int w = m_options.nWidth;
    const int h = m_options.nHeight;
    const double m = CalcZoom(w, h);
    const double dMargin = 0.025 * std::min(w, h);
    COverlay overlay;
    overlay.sUnit = m_options.units.sHeight;
    overlay.zMin = m_overview.zMin;
    overlay.zMax = m_overview.zMax;
    const double dRight = dMargin + (m_options.bByHeight ? CalcLegendWidth(overlay, w, h) : 0);
    const double dTop = CalcTitleHeight(w, h);
    const CArea all{dMargin, dTop, w - dMargin - dRight, h - dTop - CalcScaleBarHeight(w, h)};
    const CArea beside{0.0, c_dCaption * m, (all.dWidth - c_dGap * m) / 2.0, all.dHeight - c_dCaption * m};
    const CArea below{0.0, c_dCaption * m, all.dWidth, (all.dHeight - c_dGap * m) / 2.0 - c_dCaption * m};

    const int nScale = ChooseScale(w, h);
    const bool bBelow =
        FitFrame(m_overview, below, nScale).dPerUnit > FitFrame(m_overview, beside, nScale).dPerUnit;
    for (std::size_t i = 0; i < c_nNumParts; ++i)
    {
        CArea area = bBelow ? below : beside;
        area.x = all.x + (bBelow ? 0.0 : static_cast<double>(i) * (area.dWidth + c_dGap * m));
        area.y = all.y + c_dCaption * m +
                 (bBelow ? static_cast<double>(i) * (area.dHeight + (c_dGap + c_dCaption) * m) : 0.0);
        m_frames[i] = FitFrame(m_overview, area, nScale);
        const CViewExtent& e = m_overview.extent;
        m_captions[i] = {(e.xmin - m_frames[i].xOrg) / m_frames[i].GetUnitsPerPixel(),
                         (m_frames[i].yOrg - e.ymax) / m_frames[i].GetUnitsPerPixel() - 10.0 * m,
                         area.x + area.dWidth - (e.xmin - m_frames[i].xOrg) / m_frames[i].GetUnitsPerPixel(),
                         0.0};
    }
}

void CGroundPicture::AddPnts(const CPntCld& cloud, std::size_t nPart)
{
    CQuery query;
    query.dLod = m_frames[nPart].GetUnitsPerPixel();
    CollectPnts(cloud, query, CCamera::Plan(), m_frames[nPart], m_vecPnts);
}

/// The heights to go by are known when all points have been added: they are told from the depths.
void CGroundPicture::ColorByHeight()
{
    const double dRange = m_overview.zMax - m_overview.zMin;
    const auto byte = [](float f) { return static_cast<unsigned char>(std::lround(f)); };
    for (CScreenPnt& pnt : m_vecPnts)
    {
        const double z = -(pnt.fDepth / m_frames[0].dPerUnit + m_overview.dNear);
        const CRgb color = CalcHeightColor(dRange > 0.0 ? (z - m_overview.zMin) / dRange : 0.5);
        pnt.r = byte(color.r);
        pnt.g = byte(color.g);
        pnt.b = byte(color.b);
    }
}

std::string CGroundPicture::FormatShare() const
{
    const double dShare =
        m_nNumPnts[0] > 0 ? 100.0 * static_cast<double>(m_nNumPnts[1]) / static_cast<double>(m_nNumPnts[0])
                          : 0.0;
    return fmt::format("{} of {} {} ground ({:.1f} %)", GroupDigits(m_nNumPnts[1]),
                       FormatCount(m_nNumPnts[0], "point"), m_nNumPnts[1] == 1 ? "is" : "are", dShare);
}

void CGroundPicture::Write(COutFile& out)
{
    if (m_options.bByHeight)
        ColorByHeight();
    const int nScale = ChooseScale(m_options.nWidth, m_options.nHeight);
    CPntRaster raster(m_options.nWidth * nScale, m_options.nHeight * nScale);
    CLook look;
    look.bPhoto = !m_options.bByHeight;
    look.bKeepHoles = true;
    Rasterize(m_vecPnts, nScale, look, raster);

    COverlay overlay;
    overlay.sTitle = m_options.sTitle;
    overlay.sSubtitle = FormatShare();
    overlay.sUnit = m_options.units.sHeight;
    overlay.sScaleUnit = m_options.units.sPlan;
    overlay.bLegend = m_options.bByHeight && !m_overview.bEmpty;
    overlay.zMin = m_overview.zMin;
    overlay.zMax = m_overview.zMax;
    overlay.dUnitsPerPixel = m_overview.bEmpty ? 0.0 : m_frames[0].GetUnitsPerPixel();
    overlay.bNorth = !m_overview.bEmpty;
    if (!m_overview.bEmpty)
        overlay.vecCaptions = {{m_captions[0].x, m_captions[0].y, m_captions[0].dWidth, "All points"},
                               {m_captions[1].x, m_captions[1].y, m_captions[1].dWidth, "Ground"}};
    CPicture picture(raster, nScale);
    DrawOverlay(picture, overlay);
    picture.WritePng(out);
}

} // namespace zorcld
