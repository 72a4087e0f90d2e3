#include "CViewer.h"

#include "CVertexBuffer.h"

#include <zor4data/CPntCld.h>
#include <zor4data/CRootCube.h>

#include <algorithm>

namespace
{

constexpr double c_dFinest = 1.0;   // pixels
constexpr double c_dCoarsest = 1e4; // pixels: more than a picture has
constexpr double c_dStep = 1.25;
constexpr double c_dNearest = 0.1; // nothing nearer to the eye is drawn
constexpr double c_dRoom = 0.001;  // coordinate units: the box is exact to 2/10000
constexpr int c_nBatch = 1024;

} // namespace

CViewer::CViewer(const CPntCld& cld) : m_cld(cld) {}

// The depths between which the cloud's box lies; nothing is there to be asked for before and behind it.
std::pair<double, double> CViewer::CalcDepths(const CCamera& camera) const
{
    zor::geom::RECT_3D box;
    if (!m_cld.GetBdry(box))
        return {0.0, 0.0};
    double dNear = 1e300;
    double dFar = -1e300;
    for (int i = 0; i < 8; ++i)
    {
        const double dDepth =
            camera.CalcDepth({(i & 4) != 0 ? box.xmax : box.xmin, (i & 2) != 0 ? box.ymax : box.ymin,
                              (i & 1) != 0 ? box.zmax : box.zmin});
        dNear = std::min(dNear, dDepth);
        dFar = std::max(dFar, dDepth);
    }
    return {std::max(dNear - c_dRoom, c_dNearest), dFar + c_dRoom};
}

// [bands]
bool CViewer::TryFillFrame(const CCamera& camera, CVertexBuffer& buffer)
{
    CRootCube root;
    if (!GetRootCube(m_cld, root))
        return true; // no octree, no points
    const double dEdge = root.nEdge / 10000.0;
    const auto [dFirst, dLast] = CalcDepths(camera);

    buffer.Begin(camera.GetEye());
    m_nNumBands = 0;
    try
    {
        double dNear = dFirst;
        for (; dNear < dLast; ++m_nNumBands)
        {
            // A spacing above the cloud's own size would mean one point a leaf: more points, not fewer.
            const double dLod = std::min(m_dSpacing * camera.CalcPixelSize(dNear), dEdge);
            m_cld.GetPnts_LodClip(&buffer, dLod, camera.GetFrustum(dNear, 2.0 * dNear), c_nBatch);
            dNear *= 2.0;
        }
    }
    catch (const CBufferFull&)
    {
        return false;
    }
    return true;
}

bool CViewer::FillFrame(const CCamera& camera, CVertexBuffer& buffer)
{
    if (m_bRoom)
        m_dSpacing = std::max(m_dSpacing / c_dStep, c_dFinest);
    while (!TryFillFrame(camera, buffer))
    {
        if (m_dSpacing > c_dCoarsest)
            return false;
        m_dSpacing *= c_dStep;
    }
    m_bRoom = buffer.GetSize() < buffer.GetCapacity() / 4; // half the spacing: four times the points
    return true;
}
// [/bands]
