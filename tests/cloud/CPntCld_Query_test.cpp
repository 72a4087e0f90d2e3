// The queries as a host calls them, over the list of clouds.

#include <tests/support/CTestCld.h>

#include <set>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

template <class T>
class CPntCld_Query : public ::testing::Test
{
};
TYPED_TEST_SUITE(CPntCld_Query, TBothPntTypes, CPntTypeName);

TYPED_TEST(CPntCld_Query, GetPnts_EveryPointInIndexOrder)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        CRecListener rec;
        cld->GetPnts(&rec, 64);
        EXPECT_EQ(rec.GetIndices(), cld.Scan([](const PNT_3D&) { return true; }));
        for (const CCldCadPnt& pnt : rec.GetPnts())
        {
            const PNT_3D pntStored = cld.GetPnt(pnt.m_nIndex);
            ASSERT_EQ(pnt.m_pnt.x, pntStored.x);
            ASSERT_EQ(pnt.m_pnt.y, pntStored.y);
            ASSERT_EQ(pnt.m_pnt.z, pntStored.z);
            unsigned char r = 255;
            unsigned char g = 255;
            unsigned char b = 255;
            cld->GetPntColor(pnt.m_nIndex, r, g, b);
            ASSERT_EQ(pnt.m_fR, static_cast<float>(r / 255.0));
            ASSERT_EQ(pnt.m_fG, static_cast<float>(g / 255.0));
            ASSERT_EQ(pnt.m_fB, static_cast<float>(b / 255.0));
        }
    }
}

TYPED_TEST(CPntCld_Query, WithoutPlanesOrSpacing_EveryPoint)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        const std::vector<int> vecAll = cld.Scan([](const PNT_3D&) { return true; });
        CRecListener clip;
        CRecListener lod;
        CRecListener lodClip;
        cld->GetPnts_Clip(&clip, {}, 100);
        cld->GetPnts_Lod(&lod, 0.0, 100);
        cld->GetPnts_LodClip(&lodClip, 0.0, {}, 100);
        EXPECT_EQ(clip.GetSortedIndices(), vecAll);
        EXPECT_EQ(lod.GetIndices(), clip.GetIndices());
        EXPECT_EQ(lodClip.GetIndices(), clip.GetIndices());
    }
}

// A built tree's order is the array's: leaf runs tile it in walk order.
TYPED_TEST(CPntCld_Query, GetPnts_Clip_OrderOfTheTree)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        CRecListener rec;
        cld->GetPnts_Clip(&rec, {}, 1);
        EXPECT_EQ(rec.GetIndices(), rec.GetSortedIndices());
    }
}

// A finer level of detail delivers at least as many points, and none twice.
TYPED_TEST(CPntCld_Query, GetPnts_Lod_GrowsWithDetail)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        CTestCld<TypeParam> cld(cldCase);
        int nNumBefore = 0;
        for (double dLod = 100.0; dLod > 0.00005; dLod /= 4.0)
        {
            CRecListener rec;
            cld->GetPnts_Lod(&rec, dLod, 256);
            const std::vector<int> vecIndices = rec.GetIndices();
            const std::set<int> indices(vecIndices.begin(), vecIndices.end());
            EXPECT_EQ(indices.size(), vecIndices.size());
            if (cldCase.GetName() == "far origin" && dLod <= 25.0)
            {
                EXPECT_GE(rec.GetNumPnts(), nNumBefore);
                nNumBefore = rec.GetNumPnts();
            }
        }
    }
}

TYPED_TEST(CPntCld_Query, OverloadsWithoutBatch_DeliverPointByPoint)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
    CRecListener rec;
    cld->GetPnts(&rec);
    cld->GetPnts_Lod(&rec, -1.0);
    cld->GetPnts_Clip(&rec, {});
    EXPECT_EQ(rec.GetBatches(), std::vector<int>(9, 1));
}

TYPED_TEST(CPntCld_Query, Calls_InTheirOrder)
{
    CCallLog log;
    CRecColorListener color(&log);
    CRecListener rec(&log);
    CPntCld cld(&color);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(7);
    for (int i = 0; i < 7; ++i)
        cld.AddPnt(i, i, i);
    EXPECT_EQ(log.GetText(), ""); // filling asks nothing
    cld.GetPnts(&rec, 3);
    cld.ComputeTree();
    cld.GetPnts_Clip(&rec, {}, 4);
    EXPECT_EQ(log.GetText(), "ZcccP3cccP3cP1ZccccP4cccP3");
    EXPECT_EQ(color.GetRanges()[0], std::make_pair(1.7e200, 1.7e200)); // no tree yet
    EXPECT_EQ(color.GetRanges()[1], std::make_pair(0.0, 6.0));
}

TYPED_TEST(CPntCld_Query, WithoutTree_SetZRangeOnly)
{
    CCallLog log;
    CRecColorListener color(&log);
    CRecListener rec(&log);
    CPntCld cld(&color);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    for (int nRound = 0; nRound < 3; ++nRound) // no array; points but no tree; a tree without root
    {
        cld.GetPnts_Lod(&rec, 1.0, 10);
        cld.GetPnts_Clip(&rec, {PLANE_3D(1.0, 0.0, 0.0, 0.0)}, 10);
        cld.GetPnts_LodClip(&rec, 1.0, {}, 10);
        if (nRound == 0)
            cld.Init(5);
        else
            cld.Clear();
        if (nRound == 1)
            cld.ComputeTree();
    }
    EXPECT_EQ(log.GetText(), "ZZZZZZZZZ");
}

// The caller's planes are as they were.
TYPED_TEST(CPntCld_Query, GetPnts_Clip_LeavesThePlanes)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{{500000, 4000000, 0}, {500010, 4000010, 10}});
    const std::vector<PLANE_3D> vecPlanes{PLANE_3D(1.0, 0.0, 0.0, -500005.0)};
    CRecListener rec;
    cld->GetPnts_Clip(&rec, vecPlanes, 10);
    EXPECT_EQ(rec.GetNumPnts(), 1);
    EXPECT_EQ(rec.GetPnts()[0].m_pnt.x, 500000.0);
    EXPECT_EQ(vecPlanes[0].a, 1.0);
    EXPECT_EQ(vecPlanes[0].d, -500005.0);
}

TYPED_TEST(CPntCld_Query, Queries_LeaveTheCloud)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{{0, 0, 0}, {1, 1, 1}});
    CRecListener rec;
    cld->GetPnts(&rec);
    cld->GetPnts_LodClip(&rec, 0.5, {PLANE_3D(1.0, 0.0, 0.0, 0.0)}, 3);
    EXPECT_FALSE(cld->IsModified());
    EXPECT_EQ(cld->GetVersion(), 0);
    EXPECT_EQ(cld->GetNumPnts(), 2);
}

TYPED_TEST(CPntCld_Query, Selected_IsDeliveredByEveryQuery)
{
    CTestCld<TypeParam> cld(std::vector<PNT_3D>{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
    cld->SelPnt(1, false);
    CRecListener rec;
    cld->GetPnts(&rec, 2);
    cld->GetPnts_Lod(&rec, -1.0, 2);
    cld->GetPnts_Clip(&rec, {}, 2);
    cld->GetPnts_LodClip(&rec, -1.0, {}, 2);
    ASSERT_EQ(rec.GetNumPnts(), 12);
    for (const CCldCadPnt& pnt : rec.GetPnts())
        EXPECT_EQ(pnt.m_bSel, pnt.m_nIndex == 1);
}

} // namespace
