// The plan-view queries as a host calls them.

#include <tests/support/CTestCld.h>

#include <algorithm>
#include <limits>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

using TRing = std::vector<PNT_2D>;

const TRing c_triangle = {{1.5, 1.5}, {17.5, 2.5}, {5.5, 16.5}};

/// 20 × 20 points one unit apart, heights 0 to 38.
std::vector<PNT_3D> MakeGrid()
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < 400; ++i)
        vecPnts.emplace_back(i % 20, i / 20, i % 20 + i / 20);
    return vecPnts;
}

/// A cloud whose listeners write one log.
template <class T>
class CLoggedCld
{
public:
    explicit CLoggedCld(const std::vector<PNT_3D>& vecPnts) : m_color(&m_log), m_cld(&m_color), m_rec(&m_log)
    {
        m_cld.OnReadType(CPntTrait<T>::c_eType);
        m_cld.Init(static_cast<int>(vecPnts.size()));
        for (const PNT_3D& pnt : vecPnts)
            m_cld.AddPnt(pnt.x, pnt.y, pnt.z);
        m_cld.ComputeTree();
    }

    CCallLog m_log;
    CRecColorListener m_color;
    CPntCld m_cld;
    CRecListener m_rec;
};

template <class T>
class CPntCld_Query2D : public ::testing::Test
{
};
TYPED_TEST_SUITE(CPntCld_Query2D, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(CPntCld_Query2D, GetPnts2D_MinimumAboveMaximumNothing)
{
    CLoggedCld<TypeParam> cld(MakeGrid());
    cld.m_cld.GetPnts2D(&cld.m_rec, 10, 0, 5, 20);
    cld.m_cld.GetPnts2D(&cld.m_rec, 0, 10, 20, 5);
    EXPECT_EQ(cld.m_log.GetText(), "ZZ");
    EXPECT_EQ(cld.m_cld.GetNumPnts2D(10, 0, 5, 20), 0);
}

TYPED_TEST(CPntCld_Query2D, GetPnts2D_CoveringRectangleEveryPointWhateverItsHeight)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        CRecListener rec;
        cld->GetPnts2D(&rec, -1e9, -1e9, 1e9, 1e9);
        EXPECT_EQ(rec.GetSortedIndices(), cld.Scan([](const PNT_3D&) { return true; }));
        EXPECT_EQ(cld->GetNumPnts2D(-1e9, -1e9, 1e9, 1e9), cld->GetNumPnts());
    }
}

TYPED_TEST(CPntCld_Query2D, GetPnts2D_EdgesIncludedOneRecordACall)
{
    CTestCld<TypeParam> cld(MakeGrid());
    CRecListener rec;
    cld->GetPnts2D(&rec, 3, 4, 7, 9);
    EXPECT_EQ(
        rec.GetSortedIndices(),
        cld.Scan([](const PNT_3D& pnt) { return pnt.x >= 3 && pnt.x <= 7 && pnt.y >= 4 && pnt.y <= 9; }));
    EXPECT_EQ(rec.GetBatches(), std::vector<int>(30, 1));
    EXPECT_EQ(cld->GetNumPnts2D(3, 4, 7, 9), 30);
    EXPECT_EQ(cld->GetNumPnts2D(3, 4, 3, 4), 1);
}

TYPED_TEST(CPntCld_Query2D, GetPnts2D_OrderOfTheClippedWalk)
{
    CTestCld<TypeParam> cld(MakeGrid());
    CRecListener rec;
    CRecListener clip;
    cld->GetPnts2D(&rec, 2.5, 3.5, 14.5, 11.5);
    cld->GetPnts_Clip(&clip, {PLANE_3D(-1, 0, 0, 2.5), PLANE_3D(0, -1, 0, 3.5), PLANE_3D(1, 0, 0, -14.5),
                              PLANE_3D(0, 1, 0, -11.5)});
    EXPECT_EQ(rec.GetIndices(), clip.GetIndices());
    EXPECT_EQ(rec.GetNumPnts(), 96);
}

// Each count asks the colour listener as the query does.
TYPED_TEST(CPntCld_Query2D, GetNumPnts2D_CallsOfTheQuery)
{
    CLoggedCld<TypeParam> cld({{0, 0, 0}, {1, 1, 1}});
    EXPECT_EQ(cld.m_cld.GetNumPnts2D(0, 0, 5, 5), 2);
    EXPECT_EQ(cld.m_log.GetText(), "Zcc");
}

TYPED_TEST(CPntCld_Query2D, NearLine_WithoutCorridorAndEndsSetZRangeOnly)
{
    CLoggedCld<TypeParam> cld(MakeGrid());
    for (const double dDist : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
        cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {2, 2}, {9, 9}, dDist, false, false);
    EXPECT_EQ(cld.m_log.GetText(), "ZZZ");
    EXPECT_EQ(cld.m_color.GetRanges()[0], std::make_pair(0.0, 38.0));
}

// The corridor is a query of its own, and the range is told again.
TYPED_TEST(CPntCld_Query2D, NearLine_SecondSetZRangeForTheCorridor_Kept)
{
    CLoggedCld<TypeParam> cld(MakeGrid());
    cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {30, 30}, {40, 30}, 1.0, false, false);
    EXPECT_EQ(cld.m_log.GetText(), "ZZ");
}

// A point at an end comes from the end search and again from the corridor; the order is start, corridor, end.
TYPED_TEST(CPntCld_Query2D, NearLine_EndsInTheCorridorComeTwice_Kept)
{
    CLoggedCld<TypeParam> cld(MakeGrid());
    cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {4, 6}, {8, 6}, 0.5, true, true);
    EXPECT_EQ(cld.m_log.GetText(), "ZcP1ZcP1cP1cP1cP1cP1cP1");
    std::vector<double> vecX;
    for (const CCldCadPnt& pnt : cld.m_rec.GetPnts())
        vecX.push_back(pnt.m_pnt.x);
    EXPECT_EQ(vecX.front(), 4.0);
    EXPECT_EQ(vecX.back(), 8.0);
    std::sort(vecX.begin(), vecX.end());
    EXPECT_EQ(vecX, (std::vector<double>{4, 4, 5, 6, 7, 8, 8}));
}

TYPED_TEST(CPntCld_Query2D, NearLine_EndsAreExactToACompactUnit)
{
    CTestCld<TypeParam> cld(MakeGrid());
    const auto count = [&](const PNT_2D& p1, const PNT_2D& p2, bool bStart, bool bEnd)
    {
        CRecListener rec;
        cld->FindPnts2D_NearLine(&rec, p1, p2, 0.0, bStart, bEnd);
        return rec.GetNumPnts();
    };
    EXPECT_EQ(count({4, 6}, {8, 6}, true, true), 2);
    EXPECT_EQ(count({4, 6}, {8, 6}, true, false), 1);
    EXPECT_EQ(count({4, 6}, {8, 6}, false, true), 1);
    EXPECT_EQ(count({4.00005, 6}, {8.5, 6}, true, true), 1); // truncated to the same unit; none at all
    EXPECT_EQ(count({4.00015, 6}, {8, 5.9999}, true, true), 0);
    EXPECT_EQ(count({4, 6}, {4, 6}, true, true), 2); // the same place as both ends
}

TYPED_TEST(CPntCld_Query2D, NearLine_OfTwoPointsAtOnePlaceOneComes)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{{0, 0, 0}, {5, 5, 1}, {5, 5, 2}, {5, 5, 3}, {9, 9, 9}});
    CRecListener rec;
    cld->FindPnts2D_NearLine(&rec, {5, 5}, {6, 6}, 0.0, true, false);
    EXPECT_EQ(rec.GetNumPnts(), 1);
}

TYPED_TEST(CPntCld_Query2D, NearLine_WithoutLengthHasNoCorridor)
{
    CLoggedCld<TypeParam> cld(MakeGrid());
    cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {4, 6}, {4, 6}, 3.0, false, false);
    EXPECT_EQ(cld.m_log.GetText(), "Z");
    cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {4, 6}, {4, 6}, 3.0, true, true);
    EXPECT_EQ(cld.m_log.GetText(), "ZZcP1cP1");
}

TYPED_TEST(CPntCld_Query2D, Contours_OneSetZRangeOneRecordACall)
{
    CLoggedCld<TypeParam> cld({{0, 0, 0}, {1, 1, 5}, {2, 0, 7}});
    const TRing ring = {{-9, -9}, {9, -9}, {9, 9}, {-9, 9}};
    cld.m_cld.FindPnts2D_Cnts(&cld.m_rec, ring, {});
    cld.m_cld.FindPnts2D_IntCnt(&cld.m_rec, ring);
    cld.m_cld.FindPnts2D_Cnts(&cld.m_rec, {}, {ring});
    EXPECT_EQ(cld.m_log.GetText(), "ZcP1cP1cP1ZcP1cP1cP1Z");
}

TYPED_TEST(CPntCld_Query2D, WithoutTree_ContoursDoNothingTheOthersSetZRangeOnly)
{
    CCallLog log;
    CRecColorListener color(&log);
    CRecListener rec(&log);
    CPntCld cld(&color);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(3);
    cld.AddPnt(1, 2, 3);
    cld.FindPnts2D_Cnts(&rec, c_triangle, {});
    cld.FindPnts2D_IntCnt(&rec, c_triangle);
    EXPECT_EQ(log.GetText(), "");
    cld.GetPnts2D(&rec, -9, -9, 9, 9);
    cld.FindPnts2D_NearLine(&rec, {1, 2}, {3, 4}, 1.0, true, true);
    EXPECT_EQ(log.GetText(), "ZZZ");
    EXPECT_EQ(cld.GetNumPnts2D(-9, -9, 9, 9), 0);
    EXPECT_EQ(cld.CalcMaxSearchDist(), 1.7e200);
}

TYPED_TEST(CPntCld_Query2D, TreeWithoutPoints_DeliversNothing)
{
    CLoggedCld<TypeParam> cld({});
    cld.m_cld.GetPnts2D(&cld.m_rec, -9, -9, 9, 9);
    cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {1, 2}, {3, 4}, 1.0, true, true);
    cld.m_cld.FindPnts2D_Cnts(&cld.m_rec, c_triangle, {c_triangle});
    cld.m_cld.FindPnts2D_IntCnt(&cld.m_rec, c_triangle);
    EXPECT_EQ(cld.m_log.GetText(), "ZZZZZ");
    EXPECT_EQ(cld.m_cld.CalcMaxSearchDist(), 1.7e200);
}

TYPED_TEST(CPntCld_Query2D, CalcMaxSearchDist_FiveTimesTheSpacingAtLeastOne)
{
    const auto calc = [](int nNumPnts, double dX, double dY)
    {
        std::vector<PNT_3D> vecPnts{{0, 0, 0}, {dX, dY, 0}};
        for (int i = 2; i < nNumPnts; ++i)
            vecPnts.emplace_back(dX * (i % 97) / 97.0, dY * (i % 89) / 89.0, i % 5);
        return CTestCld<TypeParam>(vecPnts)->CalcMaxSearchDist();
    };
    EXPECT_EQ(calc(100, 10, 10), 5.0);
    EXPECT_EQ(calc(1000000, 10, 10), 1.0);
    EXPECT_NEAR(calc(100, 40, 10), 10.0, 1e-12);
    EXPECT_NEAR(calc(100, 10, 40), 10.0, 1e-12);
}

TYPED_TEST(CPntCld_Query2D, CalcMaxSearchDist_WithoutExtentInXOrY)
{
    EXPECT_EQ(CTestCld<TypeParam>(std::vector<PNT_3D>{{1, 1, 1}})->CalcMaxSearchDist(), 1.0);
    EXPECT_EQ(CTestCld<TypeParam>(std::vector<PNT_3D>{{0, 0, 0}, {900, 0, 0}})->CalcMaxSearchDist(), 1.0);
    EXPECT_EQ(CTestCld<TypeParam>(std::vector<PNT_3D>{{0, 0, 0}, {0, 900, 0}})->CalcMaxSearchDist(), 1.0);
    EXPECT_EQ(CTestCld<TypeParam>(std::vector<PNT_3D>{{0, 0, 0}, {0, 0, 900}})->CalcMaxSearchDist(), 1.0);
}

// Without one of the two point types nothing is called, and nothing found.
TYPED_TEST(CPntCld_Query2D, UnknownTypes_NothingAtAll)
{
    for (const int nType : {-1, 2, 3, 99, -2147483647})
    {
        CLoggedCld<TypeParam> cld(MakeGrid());
        cld.m_cld.OnReadType(static_cast<enumPntCldType>(nType));
        EXPECT_EQ(cld.m_cld.GetNumPnts2D(-99, -99, 99, 99), 0);
        EXPECT_EQ(cld.m_cld.CalcMaxSearchDist(), 1.7e200);
        cld.m_cld.GetPnts2D(&cld.m_rec, -99, -99, 99, 99);
        cld.m_cld.FindPnts2D_NearLine(&cld.m_rec, {4, 6}, {8, 6}, 2.0, true, true);
        cld.m_cld.FindPnts2D_Cnts(&cld.m_rec, c_triangle, {});
        cld.m_cld.FindPnts2D_IntCnt(&cld.m_rec, c_triangle);
        EXPECT_EQ(cld.m_log.GetText(), "") << nType;
    }
}

TYPED_TEST(CPntCld_Query2D, Selected_IsDelivered)
{
    CTestCld<TypeParam> cld(MakeGrid());
    cld->SelPnt(17, false);
    CRecListener rec;
    cld->GetPnts2D(&rec, -99, -99, 99, 99);
    cld->FindPnts2D_Cnts(&rec, {{-99, -99}, {99, -99}, {99, 99}, {-99, 99}}, {});
    ASSERT_EQ(rec.GetNumPnts(), 800);
    for (const CCldCadPnt& pnt : rec.GetPnts())
        EXPECT_EQ(pnt.m_bSel, pnt.m_nIndex == 17);
}

TYPED_TEST(CPntCld_Query2D, Queries_LeaveTheCloudAndTheirArguments)
{
    CTestCld<TypeParam> cld(MakeGrid());
    TRing outer = c_triangle;
    std::vector<TRing> holes{{{5, 5}, {6, 5}, {6, 6}}};
    CRecListener rec;
    cld->FindPnts2D_Cnts(&rec, outer, holes);
    cld->FindPnts2D_IntCnt(&rec, outer);
    EXPECT_EQ(outer.size(), 3U);
    EXPECT_EQ(holes.size(), 1U);
    EXPECT_FALSE(cld->IsModified());
    EXPECT_EQ(cld->GetVersion(), 0);
    EXPECT_EQ(cld->GetNumPnts(), 400);
}
