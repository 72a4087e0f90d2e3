// A cloud's life: filling, access, selection, deletion, modification.

#include <tests/support/CTestCld.h>

#include <cmath>

namespace
{

using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

template <class T>
class CPntCld_case : public ::testing::Test
{
public:
    CPntCld_case() { m_cld.OnReadType(CPntTrait<T>::c_eType); }

    /// Fills the cloud: point i at (i, 10 i, 100 i).
    void Fill(int nNumPnts)
    {
        ASSERT_TRUE(m_cld.Init(nNumPnts));
        for (int i = 0; i < nNumPnts; ++i)
            ASSERT_TRUE(m_cld.AddPnt(i, 10.0 * i, 100.0 * i));
    }

    std::vector<double> GetX() const
    {
        std::vector<double> vecX;
        for (int i = 0; i < m_cld.GetNumPnts(); ++i)
        {
            PNT_3D pnt;
            m_cld.GetPnt(i, pnt);
            vecX.push_back(pnt.x);
        }
        return vecX;
    }

    std::vector<int> GetSelected() const
    {
        CRecListener rec;
        m_cld.GetPnts(&rec, 8);
        std::vector<int> vecSelected;
        for (const CCldCadPnt& pnt : rec.GetPnts())
            if (pnt.m_bSel)
                vecSelected.push_back(pnt.m_nIndex);
        return vecSelected;
    }

    CRecColorListener m_color;
    CPntCld m_cld{&m_color};
};
TYPED_TEST_SUITE(CPntCld_case, TBothPntTypes, CPntTypeName);

using TIndices = std::vector<int>;
using TValues = std::vector<double>;

TYPED_TEST(CPntCld_case, Init_TwiceWithoutClearIsRefused)
{
    this->Fill(10);
    this->m_cld.SelPnt(3, false);
    EXPECT_FALSE(this->m_cld.Init(10));
    EXPECT_FALSE(this->m_cld.Init(5));
    this->m_cld.OnReadNumPnts(5);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 10);
    EXPECT_EQ(this->GetX()[9], 9.0);
    EXPECT_EQ(this->GetSelected(), (TIndices{3}));
    this->m_cld.Clear();
    EXPECT_TRUE(this->m_cld.Init(5));
    EXPECT_EQ(this->m_cld.GetNumPnts(), 5);
    EXPECT_EQ(this->GetSelected(), TIndices());
}

TYPED_TEST(CPntCld_case, OnReadNumPnts_IsInit)
{
    this->m_cld.OnReadNumPnts(4);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 4);
    EXPECT_FALSE(this->m_cld.Init(4));
}

TYPED_TEST(CPntCld_case, AddPnt_TheEleventhOfTenIsRefused)
{
    this->Fill(10);
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 2.0, 3.0));
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 2.0, 3.0, 4, 5, 6));
    EXPECT_EQ(this->m_cld.GetNumPnts(), 10);
    EXPECT_EQ(this->GetX()[9], 9.0);
}

TYPED_TEST(CPntCld_case, AddPnt_BeforeInitIsRefused)
{
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 2.0, 3.0));
    this->m_cld.OnReadPnt(1.0, 2.0, 3.0);
    this->m_cld.OnReadPnt(1.0, 2.0, 3.0, 4, 5, 6);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 0);
}

TYPED_TEST(CPntCld_case, GetNumPnts_IsTheNumberAnnounced_Kept)
{
    this->m_cld.Init(10);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 10);
    this->m_cld.AddPnt(1.0, 2.0, 3.0);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 10);
}

TYPED_TEST(CPntCld_case, AddPnt_FirstPointSetsTheRoundedOrigin)
{
    this->m_cld.Init(2);
    this->m_cld.AddPnt(500000.123456, 4000000.5, 12.34);
    this->m_cld.AddPnt(500001.0, 4000001.0, 13.0);
    PNT_3D pnt;
    this->m_cld.GetPnt(0, pnt);
    EXPECT_EQ(pnt.x, -15 / 10000.0 + 500000.125);
    EXPECT_DOUBLE_EQ(pnt.x, 500000.1235);
    EXPECT_EQ(pnt.y, 4000000.5);
    EXPECT_EQ(pnt.z, static_cast<double>(12.34F) + std::trunc((12.34 - 12.34F) * 10000.0) / 10000.0);
    this->m_cld.GetPnt(1, pnt);
    EXPECT_DOUBLE_EQ(pnt.x, 500001.0);
    EXPECT_DOUBLE_EQ(pnt.y, 4000001.0);
    EXPECT_NEAR(pnt.z, 13.0, 0.0001);
}

TYPED_TEST(CPntCld_case, AddPnt_SpanSaturates)
{
    this->m_cld.Init(3);
    this->m_cld.AddPnt(0.0, 0.0, 0.0);
    this->m_cld.AddPnt(214748.3647, -214748.3648, 214748.36475);
    this->m_cld.AddPnt(214749.0, -214749.0, 1e300);
    PNT_3D pnt;
    this->m_cld.GetPnt(1, pnt);
    EXPECT_DOUBLE_EQ(pnt.x, 214748.3647);
    EXPECT_DOUBLE_EQ(pnt.y, -214748.3648);
    EXPECT_DOUBLE_EQ(pnt.z, 214748.3647);
    this->m_cld.GetPnt(2, pnt);
    EXPECT_DOUBLE_EQ(pnt.x, 214748.3647);
    EXPECT_DOUBLE_EQ(pnt.y, -214748.3648);
    EXPECT_DOUBLE_EQ(pnt.z, 214748.3647);
}

// --- colour: which call stores what ------------------------------------------------------------

class CPntCld_Color : public ::testing::Test
{
public:
    void Start(enumPntCldType eType)
    {
        m_cld.OnReadType(eType);
        m_cld.Init(4);
    }

    std::vector<int> GetColor(int nIndex) const
    {
        unsigned char r = 1;
        unsigned char g = 2;
        unsigned char b = 3;
        const bool bColor = m_cld.GetPntColor(nIndex, r, g, b);
        return {bColor ? 1 : 0, r, g, b};
    }

    /// @return slots filled, found by filling the rest.
    int CountFilled()
    {
        int nNumFree = 0;
        while (m_cld.AddPnt(0.0, 0.0, 0.0))
            ++nNumFree;
        return 4 - nNumFree;
    }

    CRecColorListener m_color;
    CPntCld m_cld{&m_color};
};

TEST_F(CPntCld_Color, AddPnt_WithoutColourIsGreen_Kept)
{
    Start(PntCldType_PntColor);
    EXPECT_TRUE(m_cld.AddPnt(1.0, 2.0, 3.0));
    EXPECT_EQ(GetColor(0), (std::vector<int>{1, 0, 255, 0}));
}

TEST_F(CPntCld_Color, AddPnt_WithColour)
{
    Start(PntCldType_PntColor);
    EXPECT_TRUE(m_cld.AddPnt(1.0, 2.0, 3.0, 10, 20, 30));
    EXPECT_EQ(GetColor(0), (std::vector<int>{1, 10, 20, 30}));
}

TEST_F(CPntCld_Color, AddPnt_DropsTheColourOnAPlainCloud)
{
    Start(PntCldType_Pnt);
    EXPECT_TRUE(m_cld.AddPnt(1.0, 2.0, 3.0, 10, 20, 30));
    EXPECT_EQ(GetColor(0), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(CountFilled(), 1);
}

TEST_F(CPntCld_Color, OnReadPnt_OfTheWrongKindIsIgnored_Kept)
{
    Start(PntCldType_PntColor);
    m_cld.OnReadPnt(1.0, 2.0, 3.0);
    EXPECT_EQ(CountFilled(), 0);
    m_cld.Clear();
    Start(PntCldType_Pnt);
    m_cld.OnReadPnt(1.0, 2.0, 3.0, 10, 20, 30);
    EXPECT_EQ(CountFilled(), 0);
}

TEST_F(CPntCld_Color, OnReadPnt_OfTheRightKindIsStored)
{
    Start(PntCldType_PntColor);
    m_cld.OnReadPnt(1.0, 2.0, 3.0, 10, 20, 30);
    EXPECT_EQ(GetColor(0), (std::vector<int>{1, 10, 20, 30}));
    EXPECT_EQ(CountFilled(), 1);
    m_cld.OnReadType(PntCldType_Pnt);
    m_cld.Init(4);
    m_cld.OnReadPnt(1.0, 2.0, 3.0);
    EXPECT_EQ(CountFilled(), 1);
}

// The two stores are apart: the one not chosen stays as it is.
TEST_F(CPntCld_Color, OnReadType_ChoosesTheStore)
{
    Start(PntCldType_Pnt);
    m_cld.AddPnt(5.0, 5.0, 5.0);
    m_cld.SetVersion(7);
    Start(PntCldType_PntColor);
    m_cld.SetModified(true);
    EXPECT_TRUE(m_cld.IsWithColor());
    EXPECT_EQ(m_cld.GetVersion(), 1);
    m_cld.Clear();
    m_cld.OnReadType(PntCldType_Pnt);
    EXPECT_FALSE(m_cld.IsWithColor());
    EXPECT_EQ(m_cld.GetNumPnts(), 4);
    EXPECT_EQ(m_cld.GetVersion(), 7);
    EXPECT_FALSE(m_cld.IsModified());
}

// --- selection and deletion --------------------------------------------------------------------

TYPED_TEST(CPntCld_case, SelPnt_TogglesOnlyWhenAsked)
{
    this->Fill(10);
    this->m_cld.SelPnt(5, true);
    EXPECT_EQ(this->GetSelected(), (TIndices{5}));
    this->m_cld.SelPnt(5, true);
    EXPECT_EQ(this->GetSelected(), TIndices());
    this->m_cld.SelPnt(5, false);
    this->m_cld.SelPnt(5, false);
    EXPECT_EQ(this->GetSelected(), (TIndices{5}));
    this->m_cld.SelPnt(8, false);
    this->m_cld.SelPnt(5, true);
    EXPECT_EQ(this->GetSelected(), (TIndices{8}));
}

TYPED_TEST(CPntCld_case, SelPnt_NegativeIndexChangesNothing_Kept)
{
    this->Fill(10);
    this->m_cld.SelPnt(-1, false);
    this->m_cld.SelPnt(-8, true);
    this->m_cld.SelPnt(-2147483647 - 1, false);
    EXPECT_EQ(this->GetSelected(), TIndices());
}

TYPED_TEST(CPntCld_case, UnSelPnts_ClearsAll)
{
    this->Fill(20);
    for (const int i : {0, 7, 8, 15, 19})
        this->m_cld.SelPnt(i, false);
    this->m_cld.UnSelPnts();
    EXPECT_EQ(this->GetSelected(), TIndices());
    EXPECT_FALSE(this->m_cld.IsModified());
}

TYPED_TEST(CPntCld_case, DelSelPnts_WithoutSelectionChangesNothing)
{
    this->Fill(10);
    this->m_cld.DelSelPnts();
    EXPECT_FALSE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 0);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 10);
    RECT_3D rect;
    EXPECT_FALSE(this->m_cld.GetBdry(rect)); // nor was a tree built
}

TYPED_TEST(CPntCld_case, DelSelPnts_RenumbersInTheOldOrder)
{
    this->Fill(10);
    this->m_cld.ComputeTree();
    const TValues vecX = this->GetX();
    for (const int i : {0, 4, 9})
        this->m_cld.SelPnt(i, false);
    this->m_cld.DelSelPnts();
    EXPECT_EQ(this->GetX(), (TValues{vecX[1], vecX[2], vecX[3], vecX[5], vecX[6], vecX[7], vecX[8]}));
    EXPECT_EQ(this->GetSelected(), TIndices());
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 1);
}

// The order is that of the points before, as the new build leaves it: no more than eight points of one
// octant each are left as they are.
TYPED_TEST(CPntCld_case, DelSelPnts_BuildsTheTree)
{
    this->Fill(10);
    this->m_cld.SelPnt(9, false);
    this->m_cld.DelSelPnts();
    RECT_3D rect;
    ASSERT_TRUE(this->m_cld.GetBdry(rect));
    EXPECT_DOUBLE_EQ(rect.xmax, 8.0);
    EXPECT_DOUBLE_EQ(rect.zmax, 800.0);
    CRecListener rec;
    this->m_cld.GetPnts_Clip(&rec, {}, 100);
    EXPECT_EQ(rec.GetNumPnts(), 9);
}

TYPED_TEST(CPntCld_case, DelSelPnts_ClosesTheStore_Kept)
{
    this->m_cld.Init(10);
    for (int i = 0; i < 5; ++i)
        this->m_cld.AddPnt(i, i, i);
    this->m_cld.SelPnt(9, false);
    for (int i = 5; i < 10; ++i)
        this->m_cld.SelPnt(i, false);
    this->m_cld.DelSelPnts();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 5);
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 1.0, 1.0)); // five were added, five slots are there
    this->m_cld.Clear();
    EXPECT_TRUE(this->m_cld.Init(1));
    EXPECT_TRUE(this->m_cld.AddPnt(1.0, 1.0, 1.0));
}

TYPED_TEST(CPntCld_case, DelSelPnts_OfAllLeavesATreeWithoutRoot)
{
    this->Fill(3);
    for (int i = 0; i < 3; ++i)
        this->m_cld.SelPnt(i, false);
    this->m_cld.DelSelPnts();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 0);
    EXPECT_FALSE(this->m_cld.Init(3)); // there is an array still
    RECT_3D rect;
    EXPECT_TRUE(this->m_cld.GetBdry(rect));
    EXPECT_FALSE(this->m_cld.ComputeTree());
}

// --- modified flag and version -----------------------------------------------------------------

TYPED_TEST(CPntCld_case, SetModified_CountsTheRises)
{
    EXPECT_EQ(this->m_cld.GetVersion(), 0);
    this->m_cld.SetModified(true);
    this->m_cld.SetModified(true);
    EXPECT_EQ(this->m_cld.GetVersion(), 1);
    this->m_cld.SetModified(false);
    EXPECT_FALSE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 1);
    this->m_cld.SetModified(true);
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 2);
    this->m_cld.SetVersion(-5);
    EXPECT_EQ(this->m_cld.GetVersion(), -5);
    EXPECT_TRUE(this->m_cld.IsModified());
}

TYPED_TEST(CPntCld_case, DelSelPnts_OfAModifiedCloudDoesNotCount)
{
    this->Fill(4);
    this->m_cld.SetModified(true);
    this->m_cld.SelPnt(0, false);
    this->m_cld.DelSelPnts();
    EXPECT_EQ(this->m_cld.GetVersion(), 1);
}

// --- reading end, build, box -------------------------------------------------------------------

TYPED_TEST(CPntCld_case, OnReadEnd_RemovesPlanDuplicatesOfALeaf_Kept)
{
    this->m_cld.Init(3);
    this->m_cld.AddPnt(1.0, 2.0, 5.0);
    this->m_cld.AddPnt(1.0, 2.0, 5.0001); // one unit higher, and the centre is rounded down: one leaf
    this->m_cld.AddPnt(9.0, 2.0, 5.0);
    this->m_cld.OnReadEnd();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 2);
    PNT_3D pnt;
    this->m_cld.GetPnt(0, pnt);
    EXPECT_DOUBLE_EQ(pnt.z, 5.0);
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 1);
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 1.0, 1.0));
}

TYPED_TEST(CPntCld_case, OnReadEnd_PairInTwoLeavesStays_Kept)
{
    this->m_cld.Init(2);
    this->m_cld.AddPnt(1.0, 2.0, 5.0);
    this->m_cld.AddPnt(1.0, 2.0, 6.0);
    this->m_cld.OnReadEnd();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 2);
    EXPECT_FALSE(this->m_cld.IsModified());
}

TYPED_TEST(CPntCld_case, OnReadEnd_WithoutDuplicatesIsComputeTree)
{
    this->Fill(50);
    this->m_cld.SelPnt(3, false);
    this->m_cld.OnReadEnd();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 50);
    EXPECT_FALSE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 0);
    EXPECT_EQ(this->GetSelected(), (TIndices{3}));
    RECT_3D rect;
    EXPECT_TRUE(this->m_cld.GetBdry(rect));
}

TYPED_TEST(CPntCld_case, OnReadEnd_WithoutPoints)
{
    this->m_cld.OnReadEnd();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 0);
    EXPECT_FALSE(this->m_cld.IsModified());
    RECT_3D rect;
    EXPECT_TRUE(this->m_cld.GetBdry(rect));
}

TYPED_TEST(CPntCld_case, ComputeTree_ReordersTheSamePoints)
{
    this->m_cld.Init(4);
    for (const double d : {9.0, 1.0, 8.0, 2.0})
        this->m_cld.AddPnt(d, d, d);
    EXPECT_TRUE(this->m_cld.ComputeTree());
    EXPECT_EQ(this->GetX(), (TValues{1.0, 2.0, 8.0, 9.0})); // 9 and 8 changed places with those below
}

TYPED_TEST(CPntCld_case, ComputeTree_CountsUnfilledSlotsAsTheOrigin_Kept)
{
    this->m_cld.Init(3);
    this->m_cld.AddPnt(100.0, 200.0, 300.0);
    this->m_cld.AddPnt(101.0, 200.0, 300.0);
    EXPECT_TRUE(this->m_cld.ComputeTree());
    CRecListener rec;
    this->m_cld.GetPnts_Clip(&rec, {}, 10);
    EXPECT_EQ(rec.GetNumPnts(), 3);
}

TYPED_TEST(CPntCld_case, GetBdry_IsThatOfTheLastBuild)
{
    RECT_3D rect;
    this->m_cld.Init(3);
    this->m_cld.AddPnt(1.0, 2.0, 3.0);
    this->m_cld.AddPnt(5.0, 2.0, 3.5);
    EXPECT_FALSE(this->m_cld.GetBdry(rect));
    EXPECT_EQ(rect.xmin, 1.7e200);
    this->m_cld.ComputeTree();
    ASSERT_TRUE(this->m_cld.GetBdry(rect));
    EXPECT_DOUBLE_EQ(rect.xmin, 1.0);
    EXPECT_DOUBLE_EQ(rect.ymin, 2.0);
    EXPECT_DOUBLE_EQ(rect.zmin, 3.0);
    EXPECT_DOUBLE_EQ(rect.xmax, 5.0);
    EXPECT_DOUBLE_EQ(rect.ymax, 2.0);
    EXPECT_DOUBLE_EQ(rect.zmax, 3.5);
    this->m_cld.AddPnt(50.0, 2.0, 3.0);
    ASSERT_TRUE(this->m_cld.GetBdry(rect));
    EXPECT_DOUBLE_EQ(rect.xmax, 5.0);
    this->m_cld.ComputeTree();
    this->m_cld.GetBdry(rect);
    EXPECT_DOUBLE_EQ(rect.xmax, 50.0);
}

// Centre and half extents are whole units: an odd extent loses one at the upper end.
TYPED_TEST(CPntCld_case, GetBdry_HalvesWithTruncation_Kept)
{
    this->m_cld.Init(2);
    this->m_cld.AddPnt(0.0, 0.0, 0.0);
    this->m_cld.AddPnt(CoordFromUnits(7), CoordFromUnits(-7), CoordFromUnits(8));
    this->m_cld.ComputeTree();
    RECT_3D rect;
    this->m_cld.GetBdry(rect);
    EXPECT_EQ(rect.xmin, 0.0);
    EXPECT_EQ(rect.xmax, 6 / 10000.0);
    EXPECT_EQ(rect.ymin, -6 / 10000.0);
    EXPECT_EQ(rect.ymax, 0.0);
    EXPECT_EQ(rect.zmax, 8 / 10000.0);
}

TYPED_TEST(CPntCld_case, GetBdry_OfAnEmptyTreeIsTheOrigin)
{
    EXPECT_FALSE(this->m_cld.ComputeTree());
    RECT_3D rect;
    ASSERT_TRUE(this->m_cld.GetBdry(rect));
    EXPECT_EQ(rect.xmin, 4027580416.0); // the origin of a cloud that never had a point
    EXPECT_EQ(rect.xmax, 4027580416.0);
    EXPECT_EQ(rect.zmin, rect.zmax);
}

TYPED_TEST(CPntCld_case, Clear_KeepsOriginFlagsAndVersion)
{
    this->Fill(5);
    this->m_cld.ComputeTree();
    this->m_cld.SetModified(true);
    this->m_cld.Clear();
    EXPECT_EQ(this->m_cld.GetNumPnts(), 0);
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_EQ(this->m_cld.GetVersion(), 1);
    RECT_3D rect;
    EXPECT_FALSE(this->m_cld.GetBdry(rect));
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 1.0, 1.0));
    EXPECT_FALSE(this->m_cld.ComputeTree());
    this->m_cld.GetBdry(rect);
    EXPECT_EQ(rect.xmin, 0.0); // the origin that the first point had set
    EXPECT_TRUE(this->m_cld.Init(2));
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_TRUE(this->m_cld.AddPnt(7.0, 8.0, 9.0));
    EXPECT_EQ(this->GetX()[0], 7.0);
}

// --- a cloud without point type ----------------------------------------------------------------

TEST(CPntCld_NoType, EveryOperation_IsInert)
{
    for (const int nType : {-1, 2, 77, -2147483647})
    {
        CRecColorListener color;
        CPntCld cld(&color);
        if (nType != -1) // as it is when new
            cld.OnReadType(static_cast<enumPntCldType>(nType));
        EXPECT_FALSE(cld.Init(5));
        cld.OnReadNumPnts(5);
        EXPECT_FALSE(cld.AddPnt(1.0, 2.0, 3.0));
        EXPECT_FALSE(cld.AddPnt(1.0, 2.0, 3.0, 4, 5, 6));
        cld.OnReadPnt(1.0, 2.0, 3.0);
        cld.OnReadPnt(1.0, 2.0, 3.0, 4, 5, 6);
        cld.OnReadEnd();
        EXPECT_FALSE(cld.ComputeTree());
        cld.SelPnt(0, true);
        cld.UnSelPnts();
        cld.DelSelPnts();
        cld.SetModified(true);
        cld.SetVersion(5);
        cld.Clear();
        EXPECT_EQ(cld.GetNumPnts(), 0);
        EXPECT_FALSE(cld.IsWithColor());
        EXPECT_FALSE(cld.IsModified());
        EXPECT_EQ(cld.GetVersion(), -1);
        EXPECT_EQ(cld.GetColorListener(), nullptr);
        PNT_3D pnt;
        cld.GetPnt(0, pnt);
        EXPECT_EQ(pnt.x, 1.7e200);
        unsigned char uc = 9;
        EXPECT_FALSE(cld.GetPntColor(0, uc, uc, uc));
        EXPECT_EQ(uc, 9);
        RECT_3D rect;
        EXPECT_FALSE(cld.GetBdry(rect));
        CRecListener rec;
        cld.GetPnts(&rec);
        cld.GetPnts_Lod(&rec, 1.0);
        cld.GetPnts_Clip(&rec, {});
        cld.GetPnts_LodClip(&rec, 1.0, {}, 5);
        EXPECT_EQ(rec.GetNumPnts(), 0);
        EXPECT_TRUE(color.GetRanges().empty()); // not even the height range
        for (const enumPntCldType eType : {PntCldType_Pnt, PntCldType_PntColor})
        {
            cld.OnReadType(eType); // nothing has reached either store
            EXPECT_EQ(cld.GetVersion(), 0);
            EXPECT_FALSE(cld.IsModified());
            EXPECT_TRUE(cld.Init(1));
        }
    }
}

TEST(CPntCld_New, HasNoFile)
{
    CRecColorListener color;
    CPntCld cld(&color);
    EXPECT_EQ(static_cast<int>(cld.GetFileType()), -1);
    EXPECT_EQ(cld.GetFilePath().Compare(""), 0);
    cld.OnReadType(PntCldType_PntColor);
    EXPECT_EQ(cld.GetColorListener(), &color);
    cld.OnReadType(PntCldType_Pnt);
    EXPECT_EQ(cld.GetColorListener(), &color);
}

} // namespace
