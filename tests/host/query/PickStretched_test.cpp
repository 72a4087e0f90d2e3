// Points under a cursor in clouds that are drawn stretched: in degrees, with heights in metres.

#include <host/query/PickStretched.h>
#include <tests/support/CNoColors.h>
#include <zor4data/CPntCld.h>
#include <zor4data/PickPnt.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace
{

using zor::geom::PNT_3D;
using namespace zorcld;

constexpr int c_nSide = 60;

/// A tenth of a degree of hills, heights in metres.
class PickStretched_case : public ::testing::Test
{
public:
    PickStretched_case()
    {
        cloud.OnReadType(PntCldType_Pnt);
        cloud.Init(c_nSide * c_nSide);
        for (int i = 0; i < c_nSide * c_nSide; ++i)
        {
            const int nRow = i / c_nSide;
            const int nColumn = i % c_nSide;
            cloud.AddPnt(8.0 + 0.002 * nColumn, 47.0 + 0.002 * nRow,
                         400.0 + 90.0 * std::sin(0.3 * nColumn * nRow));
        }
        cloud.ComputeTree();
    }

    /// One point after the other.
    int FindSlowly(const CStretchedCone& cone) const
    {
        const PNT_3D& d = cone.direction;
        const double dLength = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
        int nBest = -1;
        double dBest = 0.0;
        for (int i = 0; i < cloud.GetNumPnts(); ++i)
        {
            PNT_3D p;
            cloud.GetPnt(i, p);
            const PNT_3D v(p.x * cone.stretch.x - cone.from.x, p.y * cone.stretch.y - cone.from.y,
                           p.z * cone.stretch.z - cone.from.z);
            const double dAlong = (v.x * d.x + v.y * d.y + v.z * d.z) / dLength;
            const double dBeside =
                std::sqrt(std::max(0.0, v.x * v.x + v.y * v.y + v.z * v.z - dAlong * dAlong));
            if (dAlong <= 0.0 || dBeside > cone.dTan * dAlong || (nBest >= 0 && dAlong >= dBest))
                continue;
            nBest = i;
            dBest = dAlong;
        }
        return nBest;
    }

    CNoColors colors;
    CPntCld cloud{&colors};
    const PNT_3D stretch{76000.0, 111320.0, 1.0};
};

TEST_F(PickStretched_case, OfAnyDirection_TheFirstOfAllInTheCone)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> share(-1.0, 1.0);
    int nFound = 0;
    for (int n = 0; n < 400; ++n)
    {
        const PNT_3D at(stretch.x * (8.06 + 0.05 * share(random)), stretch.y * (47.06 + 0.05 * share(random)),
                        400.0);
        const PNT_3D direction(share(random), share(random), -1.0 - share(random));
        const PNT_3D from(at.x - 9000.0 * direction.x, at.y - 9000.0 * direction.y,
                          at.z - 9000.0 * direction.z);
        const CStretchedCone cone{from, direction, n % 2 == 0 ? 0.01 : 0.04, stretch};
        const int nIndex = PickStretched(cloud, cone, {});
        EXPECT_EQ(nIndex, FindSlowly(cone));
        nFound += nIndex >= 0;
    }
    EXPECT_GT(nFound, 150);
}

TEST_F(PickStretched_case, Unstretched_AsPickPnt)
{
    const PNT_3D from(8.03, 47.03, 600.0);
    for (const double dTan : {0.0, 1e-6, 1e-5, 1e-4})
        EXPECT_EQ(PickStretched(cloud, {from, {1e-5, 2e-5, -1.0}, dTan, {1.0, 1.0, 1.0}}, {}),
                  PickPnt(cloud, from, {1e-5, 2e-5, -1.0}, dTan, {}));
}

TEST_F(PickStretched_case, NothingInFrontOfThePlanes)
{
    CQuery query;
    const CStretchedCone cone{{stretch.x * 8.06, stretch.y * 47.06, 5000.0}, {0.0, 0.0, -1.0}, 0.05, stretch};
    EXPECT_GE(PickStretched(cloud, cone, query), 0);
    query.vecPlanes.emplace_back(0.0, 0.0, 1.0, -100.0);
    EXPECT_EQ(PickStretched(cloud, cone, query), -1);
}

TEST_F(PickStretched_case, UnusableNumbers_NoPoint)
{
    const double dNan = std::nan("");
    const PNT_3D from(stretch.x * 8.06, stretch.y * 47.06, 5000.0);
    const PNT_3D down(0.0, 0.0, -1.0);
    EXPECT_EQ(PickStretched(cloud, {from, {0.0, 0.0, 0.0}, 0.05, stretch}, {}), -1);
    EXPECT_EQ(PickStretched(cloud, {from, {dNan, 0.0, 0.0}, 0.05, stretch}, {}), -1);
    EXPECT_EQ(PickStretched(cloud, {{dNan, 0.0, 0.0}, down, 0.05, stretch}, {}), -1);
    EXPECT_EQ(PickStretched(cloud, {from, down, -0.05, stretch}, {}), -1);
    EXPECT_EQ(PickStretched(cloud, {from, down, dNan, stretch}, {}), -1);
    EXPECT_EQ(PickStretched(cloud, {from, down, 0.05, {0.0, 1.0, 1.0}}, {}), -1);
}

} // namespace
