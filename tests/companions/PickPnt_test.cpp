// The point under a cursor, and the nearest one: rules, ties, and questions that are none.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CTestCld.h>
#include <zor4data/PickPnt.h>

#include <cmath>
#include <limits>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

constexpr double c_dInfinity = std::numeric_limits<double>::infinity();
constexpr double c_dNaN = std::numeric_limits<double>::quiet_NaN();

template <class T>
class PickPnt_case : public ::testing::Test
{
public:
    /// Points every 2 units on a lattice of nEdge^3, from the origin on.
    static std::vector<PNT_3D> MakeLattice(int nEdge)
    {
        std::vector<PNT_3D> vecPnts;
        for (int i = 0; i < nEdge * nEdge * nEdge; ++i)
            vecPnts.emplace_back(i % nEdge * 2, i / nEdge % nEdge * 2, i / nEdge / nEdge * 2);
        return vecPnts;
    }

    /// @return index of the point at a place; -1 for none.
    static int Find(const CTestCld<T>& cld, const PNT_3D& at)
    {
        const std::vector<int> vecFound =
            cld.Scan([&](const PNT_3D& pnt) { return pnt.x == at.x && pnt.y == at.y && pnt.z == at.z; });
        return vecFound.empty() ? -1 : vecFound[0];
    }
};
TYPED_TEST_SUITE(PickPnt_case, TBothPntTypes, CPntTypeName);

const PNT_3D c_down(0.0, 0.0, -1.0);

TYPED_TEST(PickPnt_case, Pick_FirstAlongTheRayNotTheNearestToIt)
{
    CTestCld<TypeParam> cld(
        std::vector<PNT_3D>{PNT_3D(0.0, 0.0, 0.0), PNT_3D(0.25, 0.0, 1.0), PNT_3D(2.0, 0.0, 5.0)});
    const PNT_3D from(0.0, 0.0, 10.0);
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.1, {}), this->Find(cld, PNT_3D(0.25, 0.0, 1.0)));
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.01, {}), this->Find(cld, PNT_3D(0.0, 0.0, 0.0)));
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.5, {}), this->Find(cld, PNT_3D(2.0, 0.0, 5.0)));
}

// At distance 8 the cone of tangent 0.25 reaches 2 to each side, all of it exact.
TYPED_TEST(PickPnt_case, Pick_TheConesSideBelongsToIt)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{PNT_3D(0.0, 0.0, 0.0), PNT_3D(2.0, 0.0, 2.0)});
    const PNT_3D from(0.0, 0.0, 10.0);
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.25, {}), this->Find(cld, PNT_3D(2.0, 0.0, 2.0)));
    EXPECT_EQ(PickPnt(*cld, from, c_down, std::nextafter(0.25, 0.0), {}),
              this->Find(cld, PNT_3D(0.0, 0.0, 0.0)));
}

TYPED_TEST(PickPnt_case, Pick_NothingAtTheBeginningOrBehind)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{PNT_3D(0.0, 0.0, 0.0), PNT_3D(0.0, 0.0, 4.0)});
    EXPECT_EQ(PickPnt(*cld, PNT_3D(0.0, 0.0, 0.0), c_down, 100.0, {}), -1);
    EXPECT_EQ(PickPnt(*cld, PNT_3D(0.0, 0.0, 4.0), c_down, 100.0, {}),
              this->Find(cld, PNT_3D(0.0, 0.0, 0.0)));
    EXPECT_EQ(PickPnt(*cld, PNT_3D(0.0, 0.0, -1.0), c_down, c_dInfinity, {}), -1);
}

TYPED_TEST(PickPnt_case, Pick_LengthOfTheDirectionDoesNotMatter)
{
    CTestCld<TypeParam> cld(this->MakeLattice(8));
    const PNT_3D from(7.0, 7.0, 30.0);
    const int nFound = PickPnt(*cld, from, PNT_3D(0.25, -0.5, -2.0), 0.05, {});
    ASSERT_NE(nFound, -1);
    for (const double d : {1e-300, 0.001, 3.0, 1e300})
        EXPECT_EQ(PickPnt(*cld, from, PNT_3D(0.25 * d, -0.5 * d, -2.0 * d), 0.05, {}), nFound) << d;
}

// Sixty-four points of the upper face lie at the same distance along the ray.
TYPED_TEST(PickPnt_case, Pick_OfEqualsTheLowestIndex)
{
    CTestCld<TypeParam> cld(this->MakeLattice(8));
    const std::vector<int> vecTop = cld.Scan([](const PNT_3D& pnt) { return pnt.z == 14.0; });
    ASSERT_EQ(vecTop.size(), 64U);
    EXPECT_EQ(PickPnt(*cld, PNT_3D(7.0, 7.0, 30.0), c_down, 10.0, {}), vecTop[0]);
}

TYPED_TEST(PickPnt_case, Pick_PlanesTakePointsAwayAndThoseOnThemStay)
{
    CTestCld<TypeParam> cld(this->MakeLattice(8));
    const PNT_3D from(4.0, 6.0, 30.0);
    const auto at = [&](double z) { return this->Find(cld, PNT_3D(4.0, 6.0, z)); };
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.001, {}), at(14.0));
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.001, {PLANE_3D(0.0, 0.0, 1.0, -8.0)}), at(8.0));
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.001, {PLANE_3D(0.0, 0.0, 1.0, -7.5)}), at(6.0));
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.001, {PLANE_3D(0.0, 0.0, 0.0, 1.0)}), -1);
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.001, {PLANE_3D(c_dNaN, 0.0, 1.0, 0.0)}), at(14.0));
    EXPECT_EQ(PickPnt(*cld, from, c_down, 0.001, {PLANE_3D(0.0, 0.0, c_dInfinity, 0.0)}), at(0.0));
}

TYPED_TEST(PickPnt_case, Pick_WhatIsNoQuestionFindsNothing)
{
    CTestCld<TypeParam> cld(this->MakeLattice(4));
    const PNT_3D from(0.0, 0.0, 10.0);
    ASSERT_NE(PickPnt(*cld, from, c_down, 0.1, {}), -1);
    ASSERT_NE(PickPnt(*cld, from, c_down, 0.0, {}), -1);
    for (const double d : {-0.1, -5e-324, -c_dInfinity, c_dNaN})
        EXPECT_EQ(PickPnt(*cld, from, c_down, d, {}), -1) << d;
    EXPECT_EQ(PickPnt(*cld, from, PNT_3D(0.0, -0.0, 0.0), 1.0, {}), -1);
    for (const double d : {c_dNaN, c_dInfinity, -c_dInfinity})
        for (int i = 0; i < 3; ++i)
        {
            PNT_3D place = from;
            PNT_3D direction = c_down;
            (i == 0 ? place.x : i == 1 ? place.y : place.z) = d;
            (i == 0 ? direction.x : i == 1 ? direction.y : direction.z) = d;
            EXPECT_EQ(PickPnt(*cld, place, c_down, 1.0, {}), -1) << d;
            EXPECT_EQ(PickPnt(*cld, from, direction, 1.0, {}), -1) << d;
        }
    EXPECT_EQ(PickPnt(*cld, PNT_3D(), c_down, 1.0, {}), -1); // 1.7e200, undefined
    EXPECT_NE(PickPnt(*cld, PNT_3D(0.0, 0.0, 1e150), c_down, 1.0, {}), -1);
}

TYPED_TEST(PickPnt_case, Nearest_InSpaceAndInPlan)
{
    CTestCld<TypeParam> cld(
        std::vector<PNT_3D>{PNT_3D(0.0, 0.0, 0.0), PNT_3D(3.0, 4.0, 0.0), PNT_3D(1.0, 0.0, 50.0)});
    const int nOrigin = this->Find(cld, PNT_3D(0.0, 0.0, 0.0));
    const int nHigh = this->Find(cld, PNT_3D(1.0, 0.0, 50.0));
    EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(2.0, 0.0, 0.0), 100.0), nOrigin);
    EXPECT_EQ(FindNearestPnt2D(*cld, PNT_2D(2.0, 0.0), 100.0), nHigh);
    EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(6.0, 8.0, 0.0), 5.0), this->Find(cld, PNT_3D(3.0, 4.0, 0.0)));
    EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(6.0, 8.0, 0.0), std::nextafter(5.0, 0.0)), -1);
    EXPECT_EQ(FindNearestPnt2D(*cld, PNT_2D(6.0, 8.0), 5.0), this->Find(cld, PNT_3D(3.0, 4.0, 0.0)));
    EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(0.0, 0.0, 0.0), 0.0), nOrigin);
    EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(0.0, 0.0, 0.5), 0.0), -1);
}

TYPED_TEST(PickPnt_case, Nearest_OfEqualsTheLowestIndex)
{
    CTestCld<TypeParam> cld(this->MakeLattice(8));
    const std::vector<int> vecAround = cld.Scan(
        [](const PNT_3D& pnt) {
            return std::fabs(pnt.x - 7.0) < 1.5 && std::fabs(pnt.y - 7.0) < 1.5 &&
                   std::fabs(pnt.z - 7.0) < 1.5;
        });
    ASSERT_EQ(vecAround.size(), 8U);
    EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(7.0, 7.0, 7.0), c_dInfinity), vecAround[0]);
    const std::vector<int> vecColumn =
        cld.Scan([](const PNT_3D& pnt) { return pnt.x == 6.0 && pnt.y == 4.0; });
    EXPECT_EQ(FindNearestPnt2D(*cld, PNT_2D(6.1, 4.0), c_dInfinity), vecColumn[0]);
}

TYPED_TEST(PickPnt_case, Nearest_WhatIsNoQuestionFindsNothing)
{
    CTestCld<TypeParam> cld(this->MakeLattice(4));
    const PNT_3D at(1.0, 1.0, 1.0);
    ASSERT_NE(FindNearestPnt(*cld, at, 1.7e200), -1); // CalcMaxSearchDist's "no limit"
    for (const double d : {-1.0, -5e-324, -c_dInfinity, c_dNaN})
    {
        EXPECT_EQ(FindNearestPnt(*cld, at, d), -1) << d;
        EXPECT_EQ(FindNearestPnt2D(*cld, PNT_2D(1.0, 1.0), d), -1) << d;
    }
    for (const double d : {c_dNaN, c_dInfinity, -c_dInfinity, 1.7e200})
    {
        EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(d, 1.0, 1.0), c_dInfinity), -1) << d;
        EXPECT_EQ(FindNearestPnt(*cld, PNT_3D(1.0, 1.0, d), c_dInfinity), -1) << d;
        EXPECT_EQ(FindNearestPnt2D(*cld, PNT_2D(1.0, d), c_dInfinity), -1) << d;
    }
    EXPECT_NE(FindNearestPnt(*cld, PNT_3D(1e150, 1.0, 1.0), c_dInfinity), -1);
}

TYPED_TEST(PickPnt_case, WithoutPoints_NothingIsFound)
{
    CPntCld cld(nullptr);
    const auto ask = [&]
    {
        EXPECT_EQ(PickPnt(cld, PNT_3D(0.0, 0.0, 10.0), c_down, 1.0, {}), -1);
        EXPECT_EQ(FindNearestPnt(cld, PNT_3D(0.0, 0.0, 0.0), c_dInfinity), -1);
        EXPECT_EQ(FindNearestPnt2D(cld, PNT_2D(0.0, 0.0), c_dInfinity), -1);
    };
    ask();
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    ask();
    cld.Init(0);
    ask();
    cld.ComputeTree();
    ask();
    cld.Clear();
    ask();
}

// What a query must not deliver is not found either, with an octree and without.
TYPED_TEST(PickPnt_case, Deleted_IsNotFound)
{
    for (const bool bTree : {false, true})
    {
        CRecipeCld<TypeParam> cld({0, 500, 4, false}, bTree);
        const PNT_3D at = cld.GetPnt(100);
        for (int i = 0; i < 500; ++i)
        {
            const int nFound = FindNearestPnt(*cld, at, c_dInfinity);
            ASSERT_NE(nFound, -1) << i;
            ASSERT_TRUE(cld.IsLive(nFound));
            cld.DeletePnt(nFound);
        }
        EXPECT_EQ(FindNearestPnt(*cld, at, c_dInfinity), -1);
        EXPECT_EQ(FindNearestPnt2D(*cld, PNT_2D(at.x, at.y), c_dInfinity), -1);
    }
}

} // namespace
