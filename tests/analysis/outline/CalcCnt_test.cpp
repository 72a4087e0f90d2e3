#include <formats/Compact.h>
#include <tests/analysis/outline/CProgressRecorder.h>
#include <tests/support/CTestCld.h>

#include <gtest/gtest.h>

#include <cmath>

using zor::geom::PNT_3D;

namespace
{

using TPlaces = std::vector<std::pair<double, double>>;

template <class T>
class CalcCnt_ : public ::testing::Test
{
public:
    /// A cloud with points at these places; whole coordinates are kept exactly, the first being (0, 0).
    static CTestCld<T> Make(const TPlaces& places)
    {
        std::vector<PNT_3D> vecPnts;
        for (const auto& place : places)
            vecPnts.emplace_back(place.first, place.second, static_cast<double>(vecPnts.size()));
        return CTestCld<T>(vecPnts);
    }

    /// @return the outline's corners; none when there is no outline.
    static TPlaces Calc(const TPlaces& places, double d)
    {
        CTestCld<T> cld = Make(places);
        CRecListener rec;
        const bool bClosed = cld->CalcCnt(nullptr, &rec, d);
        EXPECT_EQ(bClosed, rec.GetNumPnts() > 0);
        TPlaces corners;
        for (const CCldCadPnt& pnt : rec.GetPnts())
            corners.emplace_back(pnt.m_pnt.x, pnt.m_pnt.y);
        return corners;
    }

    static TPlaces Grid(int nX, int nY, double x0, double y0)
    {
        TPlaces places;
        for (int i = 0; i < nX; ++i)
            for (int k = 0; k < nY; ++k)
                places.emplace_back(x0 + i, y0 + k);
        return places;
    }

    static TPlaces Join(TPlaces a, const TPlaces& b)
    {
        a.insert(a.end(), b.begin(), b.end());
        return a;
    }
};
TYPED_TEST_SUITE(CalcCnt_, TBothPntTypes, CPntTypeName);

const TPlaces c_none;

} // namespace

TYPED_TEST(CalcCnt_, Triangle_FourCorners)
{
    EXPECT_EQ(this->Calc({{0, 0}, {2, 1}, {1, 3}}, 5.0), (TPlaces{{0, 0}, {1, 3}, {2, 1}, {0, 0}}));
}

TYPED_TEST(CalcCnt_, TwoPnts_None)
{
    EXPECT_EQ(this->Calc({{0, 0}, {1, 3}}, 5.0), c_none);
    EXPECT_EQ(this->Calc({{0, 0}}, 5.0), c_none);
}

// Clockwise from the westernmost point, which comes again at the end.
TYPED_TEST(CalcCnt_, Square_Clockwise)
{
    EXPECT_EQ(this->Calc({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {1, 1}}, 2.0),
              (TPlaces{{0, 0}, {0, 2}, {2, 2}, {2, 0}, {0, 0}}));
}

TYPED_TEST(CalcCnt_, TwoClusters_TheLargerOne)
{
    const TPlaces corners = this->Calc(this->Join(this->Grid(3, 3, 0, 0), this->Grid(4, 4, 20, 0)), 5.0);
    ASSERT_GE(corners.size(), 5U);
    for (const auto& corner : corners)
        EXPECT_GE(corner.first, 20.0);
    EXPECT_EQ(corners.front(), corners.back());
}

// Equal counts: the cluster of the first point in index order, which is that of the lower octant.
TYPED_TEST(CalcCnt_, TwoClusters_FirstOfEqual)
{
    for (const bool bWestFirst : {true, false})
    {
        const TPlaces west = this->Grid(3, 3, 0, 0);
        const TPlaces east = this->Grid(3, 3, 20, 0);
        const TPlaces corners = this->Calc(bWestFirst ? this->Join(west, east) : this->Join(east, west), 5.0);
        ASSERT_GE(corners.size(), 5U);
        for (const auto& corner : corners)
            EXPECT_LE(corner.first, 2.0);
    }
}

TYPED_TEST(CalcCnt_, ExactDistanceIsNear)
{
    const TPlaces places = {{0, 0}, {3, 4}, {3, -1}};
    EXPECT_EQ(this->Calc(places, 5.0), (TPlaces{{0, 0}, {3, 4}, {3, -1}, {0, 0}}));
    EXPECT_EQ(this->Calc(places, 4.9999), c_none); // (0, 0) and (3, -1) alone
}

TYPED_TEST(CalcCnt_, OnlyStacks_None)
{
    EXPECT_EQ(this->Calc({{0, 0}, {0, 0}, {0, 0}, {9, 0}, {9, 0}, {0, 9}, {0, 9}}, 3.0), c_none);
}

// A U of single rows, 4 apart: from the tip of one, where no step leads on, the walk looks farther and
// goes across to the other. The far point keeps the others in one leaf, in this order.
TYPED_TEST(CalcCnt_, NotchIsCutAcross)
{
    const TPlaces places = {{0, 6},  {0, 2},  {1, -1}, {5, 0}, {4, 4},      {0, 4},
                            {-1, 0}, {3, -1}, {4, 2},  {4, 6}, {9999, 9999}};
    EXPECT_EQ(
        this->Calc(places, 2.5),
        (TPlaces{
            {-1, 0}, {0, 2}, {0, 4}, {0, 6}, {4, 6}, {4, 4}, {4, 2}, {5, 0}, {3, -1}, {1, -1}, {-1, 0}}));
}

// The first step leads strictly north, or there is no outline: east does not count, nor does south.
TYPED_TEST(CalcCnt_, FirstStepIsStrictlyNorth_Kept)
{
    EXPECT_EQ(this->Calc({{0, 0}, {2, -1}, {1, -3}, {2, 0}}, 5.0), c_none);
    EXPECT_NE(this->Calc({{0, 0}, {2, -1}, {1, -3}, {2, 0.0001}}, 5.0), c_none);
}

TYPED_TEST(CalcCnt_, ProgressOncePerPnt)
{
    CTestCld<TypeParam> cld = this->Make(this->Grid(3, 3, 0, 0));
    CProgressRecorder progress;
    CRecListener rec;
    EXPECT_TRUE(cld->CalcCnt(&progress, &rec, 2.0));
    EXPECT_EQ(progress.GetPos(), (std::vector<int>{0, 11, 22, 33, 44, 55, 66, 77, 88}));
    EXPECT_EQ(progress.GetNumOthers(), 0);
}

TYPED_TEST(CalcCnt_, OnePntACall)
{
    CTestCld<TypeParam> cld = this->Make(this->Grid(3, 3, 0, 0));
    CRecListener rec;
    EXPECT_TRUE(cld->CalcCnt(nullptr, &rec, 3.0));
    EXPECT_GT(rec.GetNumPnts(), 4);
    EXPECT_EQ(rec.GetBatches(), std::vector<int>(static_cast<std::size_t>(rec.GetNumPnts()), 1));
}

// What is delivered is the point of the cloud: its place, index, selection mark and colour.
TYPED_TEST(CalcCnt_, RecordsAreThoseOfTheCloud)
{
    CRecColorListener colors;
    CPntCld cld(&colors);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(4);
    for (int i = 0; i < 4; ++i)
        cld.AddPnt(500000.25 + i % 2, 4000000.5 + i / 2, 100.0 + i, static_cast<unsigned char>(50 * i), 20,
                   30);
    cld.ComputeTree();
    cld.SelPnt(2, false);
    colors.SetAlter();
    CRecListener rec;
    CRecListener recAll;
    cld.GetPnts(&recAll, 4);
    ASSERT_TRUE(cld.CalcCnt(nullptr, &rec, 2.0));
    ASSERT_EQ(rec.GetNumPnts(), 5);
    for (const CCldCadPnt& pnt : rec.GetPnts())
    {
        const CCldCadPnt& same = recAll.GetPnts()[static_cast<std::size_t>(pnt.m_nIndex)];
        EXPECT_EQ(pnt.m_pnt.x, same.m_pnt.x);
        EXPECT_EQ(pnt.m_pnt.y, same.m_pnt.y);
        EXPECT_EQ(pnt.m_pnt.z, same.m_pnt.z);
        EXPECT_EQ(pnt.m_bSel, pnt.m_nIndex == 2);
        if (CPntTrait<TypeParam>::c_bColor)
        {
            EXPECT_EQ(pnt.m_fR, same.m_fR);
        }
    }
    EXPECT_EQ(colors.GetEntries().size(), 9U);
}

// SetZRange once and first, with the height range of the cloud; then colour and delivery, corner by corner.
TYPED_TEST(CalcCnt_, OrderOfCalls)
{
    CCallLog log;
    CRecColorListener colors(&log);
    CPntCld cld(&colors);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(3);
    cld.AddPnt(0, 0, 5.0);
    cld.AddPnt(2, 1, 9.0);
    cld.AddPnt(1, 3, 7.0);
    cld.ComputeTree();
    CRecListener rec(&log);
    EXPECT_TRUE(cld.CalcCnt(nullptr, &rec, 5.0));
    EXPECT_EQ(log.GetText(), "ZcP1cP1cP1cP1");
    ASSERT_EQ(colors.GetRanges().size(), 1U);
    EXPECT_EQ(colors.GetRanges()[0], std::make_pair(5.0, 9.0));
}

TYPED_TEST(CalcCnt_, WithoutOutline_SetZRangeAndProgressOnly)
{
    CCallLog log;
    CRecColorListener colors(&log);
    CPntCld cld(&colors);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(2);
    cld.AddPnt(0, 0, 0);
    cld.AddPnt(0, 1, 0);
    cld.ComputeTree();
    CRecListener rec(&log);
    CProgressRecorder progress;
    EXPECT_FALSE(cld.CalcCnt(&progress, &rec, 5.0));
    EXPECT_EQ(log.GetText(), "Z");
    EXPECT_EQ(progress.GetPos(), (std::vector<int>{0, 50}));
}

TYPED_TEST(CalcCnt_, WithoutTree_NoCall)
{
    CCallLog log;
    CRecColorListener colors(&log);
    CPntCld cld(&colors);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    CRecListener rec(&log);
    CProgressRecorder progress;
    EXPECT_FALSE(cld.CalcCnt(&progress, &rec, 5.0));
    cld.Init(3);
    EXPECT_FALSE(cld.CalcCnt(&progress, &rec, 5.0));
    EXPECT_EQ(log.GetText(), "");
    EXPECT_EQ(progress.GetPos(), std::vector<int>());
}

TYPED_TEST(CalcCnt_, TreeWithoutPnts_SetZRangeOnly)
{
    CCallLog log;
    CRecColorListener colors(&log);
    CPntCld cld(&colors);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(0);
    cld.ComputeTree();
    CRecListener rec(&log);
    CProgressRecorder progress;
    EXPECT_FALSE(cld.CalcCnt(&progress, &rec, 5.0));
    EXPECT_EQ(log.GetText(), "Z");
    EXPECT_EQ(progress.GetPos(), std::vector<int>());
}

TEST(CalcCnt, WithoutType_NoCall)
{
    CCallLog log;
    CRecColorListener colors(&log);
    CPntCld cld(&colors);
    CRecListener rec(&log);
    CProgressRecorder progress;
    EXPECT_FALSE(cld.CalcCnt(&progress, &rec, 5.0));
    EXPECT_EQ(log.GetText(), "");
    EXPECT_EQ(progress.GetPos(), std::vector<int>());
}

TYPED_TEST(CalcCnt_, CloudIsNotChanged)
{
    CTestCld<TypeParam> cld = this->Make(this->Grid(5, 5, 0, 0));
    cld->SelPnt(3, false);
    CRecListener recBefore;
    cld->GetPnts(&recBefore, 100);
    CRecListener rec;
    EXPECT_TRUE(cld->CalcCnt(nullptr, &rec, 6.0));
    EXPECT_FALSE(cld->IsModified());
    EXPECT_EQ(cld->GetVersion(), 0);
    CRecListener recAfter;
    cld->GetPnts(&recAfter, 100);
    ASSERT_EQ(recBefore.GetNumPnts(), recAfter.GetNumPnts());
    for (int i = 0; i < recAfter.GetNumPnts(); ++i)
    {
        const std::size_t n = static_cast<std::size_t>(i);
        EXPECT_EQ(recBefore.GetPnts()[n].m_pnt.x, recAfter.GetPnts()[n].m_pnt.x);
        EXPECT_EQ(recBefore.GetPnts()[n].m_bSel, recAfter.GetPnts()[n].m_bSel);
    }
}

// Distances that are none: no outline, or one without limit, but never an endless walk.
TYPED_TEST(CalcCnt_, OddDistances)
{
    const TPlaces places = {{0, 0}, {20, 10}, {10, 30}};
    for (const double d : {0.0, -0.0, -1.0, -HUGE_VAL, 1.0e-300, 1.0})
        EXPECT_EQ(this->Calc(places, d), c_none) << d;
    for (const double d : {HUGE_VAL, std::nan(""), 1.0e300, 1.7e308})
        EXPECT_EQ(this->Calc(places, d).size(), 4U) << d;
}
