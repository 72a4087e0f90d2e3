// The viewer of the guide, held to what it says: nothing seen is left out, and the buffer holds points of the
// cloud.

#include <examples/common/CFileColors.h>
#include <examples/common/FillHills.h>
#include <examples/viewer_core/CCamera.h>
#include <examples/viewer_core/CVertexBuffer.h>
#include <examples/viewer_core/CViewer.h>
#include <tests/support/CRandom.h>

#include <zor4data/CPntCld.h>
#include <zor4data/PickPnt.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace
{

using zor::geom::PNT_3D;

class CViewerProp : public testing::Test
{
protected:
    CViewerProp() : m_cld(&m_colors), m_random(1) { FillHills(m_cld); }

    // Eyes from within the land to a few lengths away, looking somewhere into it.
    CCamera MakeCamera()
    {
        const double dAway = 20.0 * std::pow(20.0, m_random.Unit());
        const double dTurn = 6.3 * m_random.Unit();
        const PNT_3D eye(CHills::c_dWest + 50.0 + dAway * std::cos(dTurn),
                         CHills::c_dSouth + 50.0 + dAway * std::sin(dTurn), 100.0 + 60.0 * m_random.Unit());
        const PNT_3D target(CHills::c_dWest + 100.0 * m_random.Unit(),
                            CHills::c_dSouth + 100.0 * m_random.Unit(), 105.0);
        return CCamera(eye, target, 0.3 + m_random.Unit(), 800, 600);
    }

    // Some of the points that the camera sees: the planes are asked about each, not the octree.
    std::vector<PNT_3D> ScanSeen(const CCamera& camera)
    {
        std::vector<PNT_3D> seen;
        for (int i = 0; i < m_cld.GetNumPnts(); i += 97)
        {
            PNT_3D pnt;
            m_cld.GetPnt(i, pnt);
            bool bSeen = true;
            for (const zor::geom::PLANE_3D& plane : camera.GetFrustum(0.1, 1e6))
                bSeen = bSeen && !plane.IsInFrontOf(pnt.x, pnt.y, pnt.z);
            if (bSeen)
                seen.push_back(pnt);
        }
        return seen;
    }

    CFileColors m_colors;
    CPntCld m_cld;
    CRandom m_random;
};

double CalcDistance(const CVertex& vertex, const PNT_3D& eye, const PNT_3D& pnt)
{
    const double dx = static_cast<double>(vertex.x) - (pnt.x - eye.x);
    const double dy = static_cast<double>(vertex.y) - (pnt.y - eye.y);
    const double dz = static_cast<double>(vertex.z) - (pnt.z - eye.z);
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// A band is as deep as its near end is away, so that a point lies at most twice as far as what its spacing is
// for; and a cube of that edge has its own point at most a diagonal away.
TEST_F(CViewerProp, FillFrame_LeavesNothingOutThatIsSeen)
{
    int nNumSeen = 0;
    std::vector<CVertex> vertices(100000);
    CVertexBuffer buffer(vertices.data(), vertices.size());
    for (int nRound = 0; nRound < 12; ++nRound)
    {
        const CCamera camera = MakeCamera();
        CViewer viewer(m_cld);
        ASSERT_TRUE(viewer.FillFrame(camera, buffer));
        for (const PNT_3D& pnt : ScanSeen(camera))
        {
            ++nNumSeen;
            const double dSpacing = viewer.GetSpacing() * camera.CalcPixelSize(camera.CalcDepth(pnt));
            double dNearest = 1e300;
            for (std::size_t i = 0; i < buffer.GetSize() && dNearest > 0.0; ++i)
                dNearest = std::min(dNearest, CalcDistance(vertices[i], camera.GetEye(), pnt));
            EXPECT_LE(dNearest, std::sqrt(3.0) * dSpacing + 1e-3) << "round " << nRound;
        }
    }
    EXPECT_GT(nNumSeen, 500);
}

// The same where the buffer is small, so that the spacing has to grow.
TEST_F(CViewerProp, FillFrame_FitsIntoASmallBufferAndStillLeavesNothingOut)
{
    std::vector<CVertex> vertices(1001);
    vertices.back() = {-1.0F, -2.0F, -3.0F, 1, 2, 3, 4};
    CVertexBuffer buffer(vertices.data(), vertices.size() - 1);
    CViewer viewer(m_cld);
    for (int nRound = 0; nRound < 40; ++nRound)
    {
        const CCamera camera = MakeCamera();
        ASSERT_TRUE(viewer.FillFrame(camera, buffer));
        ASSERT_LE(buffer.GetSize(), buffer.GetCapacity());
        for (const PNT_3D& pnt : ScanSeen(camera))
        {
            const double dSpacing = viewer.GetSpacing() * camera.CalcPixelSize(camera.CalcDepth(pnt));
            double dNearest = 1e300;
            for (std::size_t i = 0; i < buffer.GetSize(); ++i)
                dNearest = std::min(dNearest, CalcDistance(vertices[i], camera.GetEye(), pnt));
            EXPECT_LE(dNearest, std::sqrt(3.0) * dSpacing + 1e-3) << "round " << nRound;
        }
    }
    EXPECT_EQ(vertices.back().z, -3.0F);
}

TEST_F(CViewerProp, FillFrame_VerticesArePointsOfTheCloudToTheLastFloatBit)
{
    std::vector<CVertex> vertices(20000);
    CVertexBuffer buffer(vertices.data(), vertices.size());
    CViewer viewer(m_cld);
    for (int nRound = 0; nRound < 10; ++nRound)
    {
        const CCamera camera = MakeCamera();
        ASSERT_TRUE(viewer.FillFrame(camera, buffer));
        const PNT_3D& eye = camera.GetEye();
        for (std::size_t i = 0; i < buffer.GetSize(); ++i)
        {
            const CVertex& v = vertices[i];
            const PNT_3D place(eye.x + static_cast<double>(v.x), eye.y + static_cast<double>(v.y),
                               eye.z + static_cast<double>(v.z));
            // Half a step of floats below 512.
            ASSERT_GE(FindNearestPnt(m_cld, place, std::sqrt(3.0) * 512.0 * 0x1p-24), 0)
                << "round " << nRound;
            ASSERT_EQ(v.a, 255);
            ASSERT_TRUE(v.r == 90 || v.r == 200);
        }
    }
}

TEST_F(CViewerProp, FillFrame_TellsWhereEvenTheSparsestPointsDoNotFit)
{
    std::vector<CVertex> vertices(1);
    CVertexBuffer none(vertices.data(), 0);
    const CCamera camera({CHills::c_dWest - 50.0, CHills::c_dSouth + 1.0, 150.0},
                         {CHills::c_dWest + 50.0, CHills::c_dSouth + 50.0, 105.0}, 1.0, 800, 600);
    CViewer viewer(m_cld);
    EXPECT_FALSE(viewer.FillFrame(camera, none));

    CPntCld empty(&m_colors);
    CViewer viewerOfNothing(empty);
    EXPECT_TRUE(viewerOfNothing.FillFrame(camera, none));
}

} // namespace
