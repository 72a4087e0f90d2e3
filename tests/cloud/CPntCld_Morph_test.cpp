// Reduction of a cloud to its ground points, against the published filter and a removal done by hand.

#include <sample/CSampleTerrain.h>
#include <tests/analysis/ground/MorphCase.h>
#include <tests/support/CTestCld.h>

#include <algorithm>
#include <tuple>

namespace
{

using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

// Explicit instantiation may name what is private: the stores, since a host has no way to mark points
// deleted without removing them.
template <class T, COcTree<T> CPntCld::*pStore>
struct CStoreOf
{
    friend COcTree<T>& FindStore(CPntCld& cld, const T*) { return cld.*pStore; }
};
COcTree<CTruncPnt>& FindStore(CPntCld& cld, const CTruncPnt*);
COcTree<CTruncPnt_Color>& FindStore(CPntCld& cld, const CTruncPnt_Color*);
template struct CStoreOf<CTruncPnt, &CPntCld::m_cld>;
template struct CStoreOf<CTruncPnt_Color, &CPntCld::m_cldColor>;

template <class T>
COcTree<T>& GetStore(CPntCld& cld)
{
    return FindStore(cld, static_cast<const T*>(nullptr));
}

/// A point as a host reads it back.
using TPnt = std::tuple<double, double, double, int, int, int>;

TPnt ReadPnt(const CPntCld& cld, int i)
{
    PNT_3D pnt;
    cld.GetPnt(i, pnt);
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    cld.GetPntColor(i, r, g, b);
    return {pnt.x, pnt.y, pnt.z, r, g, b};
}

std::vector<TPnt> ReadPnts(const CPntCld& cld)
{
    std::vector<TPnt> vecPnts;
    for (int i = 0; i < cld.GetNumPnts(); ++i)
        vecPnts.push_back(ReadPnt(cld, i));
    return vecPnts;
}

/// What the published filter says of the points that `isLive` holds for: positions among those.
template <class F>
std::vector<int> FindGround(const CPntCld& cld, int nNumSlots, F isLive)
{
    CMorphCase morphCase; // has the parameters of the cloud object
    for (int i = 0; i < nNumSlots; ++i)
    {
        PNT_3D pnt;
        cld.GetPnt(i, pnt);
        if (isLive(i))
            morphCase.pCloud->push_back(
                {static_cast<float>(pnt.x), static_cast<float>(pnt.y), static_cast<float>(pnt.z)});
    }
    return morphCase.ExtractPublished();
}

std::vector<int> FindGround(const CPntCld& cld)
{
    return FindGround(cld, cld.GetNumPnts(), [](int) { return true; });
}

/// Leaves the listed points, ascending, by selecting all others and deleting the selection.
void KeepByHand(CPntCld& cld, const std::vector<int>& vecKept)
{
    cld.UnSelPnts();
    for (int i = 0; i < cld.GetNumPnts(); ++i)
        if (!std::binary_search(vecKept.begin(), vecKept.end(), i))
            cld.SelPnt(i, false);
    cld.DelSelPnts();
}

class CRecPercent final : public IPclProgressListener
{
public:
    void OnProgress(int nPos) override { m_vecPos.push_back(nPos); }

    std::vector<int> m_vecPos;
};

template <class T>
class CPntCld_Morph : public ::testing::Test
{
public:
    static std::vector<PNT_3D> MakeTerrain(int nNumPnts, double dOrgX = 0.0, double dOrgY = 0.0)
    {
        std::vector<PNT_3D> vecPnts;
        CSampleTerrain(nNumPnts).ForEachPnt(
            [&](const CSamplePnt& pnt)
            {
                vecPnts.emplace_back(pnt.x - CSampleTerrain::c_dOrgX + dOrgX,
                                     pnt.y - CSampleTerrain::c_dOrgY + dOrgY, pnt.z);
            });
        return vecPnts;
    }

    /// Flat ground of 10 × 10 points, one of them a mast.
    static std::vector<PNT_3D> MakeMast()
    {
        std::vector<PNT_3D> vecPnts;
        for (int i = 0; i < 100; ++i)
            vecPnts.emplace_back(i % 10, i / 10, i == 55 ? 9.0 : 0.0);
        return vecPnts;
    }

    static void ExpectAsByHand(const std::vector<PNT_3D>& vecPnts)
    {
        CTestCld<T> cld(vecPnts);
        CTestCld<T> byHand(vecPnts);
        ASSERT_EQ(ReadPnts(*cld), ReadPnts(*byHand));
        const std::vector<int> vecGround = FindGround(*cld);
        ASSERT_TRUE(std::is_sorted(vecGround.begin(), vecGround.end()));
        ASSERT_GT(vecGround.size(), 0U);
        ASSERT_LT(vecGround.size(), vecPnts.size());
        cld->Morph(nullptr);
        KeepByHand(*byHand, vecGround);
        EXPECT_EQ(ReadPnts(*cld), ReadPnts(*byHand));

        CRecListener rec; // the octree is the one over what is left
        CRecListener recByHand;
        cld->GetPnts_Clip(&rec, {}, 100);
        byHand->GetPnts_Clip(&recByHand, {}, 100);
        EXPECT_EQ(rec.GetIndices(), recByHand.GetIndices());
        EXPECT_EQ(rec.GetPnts().size(), vecGround.size());
        RECT_3D box;
        RECT_3D boxByHand;
        ASSERT_TRUE(cld->GetBdry(box));
        ASSERT_TRUE(byHand->GetBdry(boxByHand));
        EXPECT_EQ(box.zmax, boxByHand.zmax);
        EXPECT_EQ(box.xmin, boxByHand.xmin);
    }
};
TYPED_TEST_SUITE(CPntCld_Morph, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(CPntCld_Morph, Morph_KeepsWhatThePublishedFilterKeeps)
{
    this->ExpectAsByHand(this->MakeTerrain(4000));
}

TYPED_TEST(CPntCld_Morph, Morph_FarFromTheOriginToo)
{
    this->ExpectAsByHand(this->MakeTerrain(4000, 500000.0, 4.0e6)); // y in steps of 1/4
}

TYPED_TEST(CPntCld_Morph, Morph_ColoursFollowTheirPoints)
{
    const std::vector<PNT_3D> vecPnts = this->MakeMast();
    CTestCld<TypeParam> cld(vecPnts);
    std::vector<TPnt> vecExpected;
    for (const TPnt& pnt : ReadPnts(*cld))
        if (std::get<2>(pnt) < 1.0)
            vecExpected.push_back(pnt);
    cld->Morph(nullptr);
    std::vector<TPnt> vecKept = ReadPnts(*cld);
    std::sort(vecKept.begin(), vecKept.end());
    std::sort(vecExpected.begin(), vecExpected.end());
    EXPECT_EQ(vecKept, vecExpected);
    EXPECT_EQ(vecKept.size(), 99U);
    unsigned char r = 0;
    EXPECT_EQ(cld->GetPntColor(0, r, r, r), CPntTrait<TypeParam>::c_bColor);
}

TYPED_TEST(CPntCld_Morph, Morph_ClearsSelectionAndClosesTheCloud)
{
    CTestCld<TypeParam> cld(this->MakeMast());
    for (int i = 0; i < 100; i += 2)
        cld->SelPnt(i, false);
    cld->Morph(nullptr);
    CRecListener rec;
    cld->GetPnts(&rec, 50);
    EXPECT_EQ(rec.GetNumPnts(), 99);
    for (const CCldCadPnt& pnt : rec.GetPnts())
        EXPECT_FALSE(pnt.m_bSel);
    EXPECT_FALSE(cld->AddPnt(1.0, 2.0, 3.0));
    cld->DelSelPnts(); // nothing is selected
    EXPECT_EQ(cld->GetNumPnts(), 99);
}

TYPED_TEST(CPntCld_Morph, Morph_MarksModifiedOnce)
{
    CTestCld<TypeParam> cld(this->MakeMast());
    const int nVersion = cld->GetVersion();
    EXPECT_FALSE(cld->IsModified());
    cld->Morph(nullptr);
    EXPECT_TRUE(cld->IsModified());
    EXPECT_EQ(cld->GetVersion(), nVersion + 1);
    cld->Morph(nullptr); // nothing more to remove, and modified already
    EXPECT_EQ(cld->GetNumPnts(), 99);
    EXPECT_EQ(cld->GetVersion(), nVersion + 1);
    cld->SetModified(false);
    cld->Morph(nullptr);
    EXPECT_EQ(cld->GetVersion(), nVersion + 2);
}

TYPED_TEST(CPntCld_Morph, Morph_EmptyStaysEmpty)
{
    for (const bool bInit : {false, true})
    {
        CRecColorListener colors;
        CPntCld cld(&colors);
        cld.OnReadType(CPntTrait<TypeParam>::c_eType);
        if (bInit)
            cld.Init(0);
        CRecPercent progress;
        cld.Morph(&progress);
        EXPECT_EQ(cld.GetNumPnts(), 0);
        EXPECT_TRUE(cld.IsModified());
        RECT_3D box;
        EXPECT_TRUE(cld.GetBdry(box)); // an octree without a root
        EXPECT_EQ(progress.m_vecPos.size(), 101U);
    }
}

TYPED_TEST(CPntCld_Morph, Morph_OnePointIsGround)
{
    CTestCld<TypeParam> cld({PNT_3D(500000.5, 4.0e6, -7.0)});
    const std::vector<TPnt> vecBefore = ReadPnts(*cld);
    cld->Morph(nullptr);
    EXPECT_EQ(ReadPnts(*cld), vecBefore);
}

TEST(CPntCld_MorphAny, Morph_UntypedIsLeftAlone)
{
    CRecColorListener colors;
    CPntCld cld(&colors);
    CRecPercent progress;
    cld.Morph(&progress);
    cld.Morph(nullptr);
    EXPECT_EQ(cld.GetNumPnts(), 0);
    EXPECT_FALSE(cld.IsModified());
    EXPECT_EQ(cld.GetVersion(), -1);
    EXPECT_EQ(progress.m_vecPos.back(), 100);
    cld.OnReadType(PntCldType_Pnt); // its stores as well
    EXPECT_FALSE(cld.IsModified());
    EXPECT_EQ(cld.GetVersion(), 0);
    EXPECT_TRUE(cld.Init(1));
}

// The filter counts live points only, and what it lists is taken as indices of all: with points marked and
// not yet removed others are kept than are ground, marked ones among them.
TYPED_TEST(CPntCld_Morph, Morph_PositionsAmongTheLiveAreIndicesOfAll_Kept)
{
    CTestCld<TypeParam> cld(this->MakeTerrain(3000));
    COcTree<TypeParam>& store = GetStore<TypeParam>(*cld);
    const auto isLive = [](int i) { return i % 3 != 1; };
    for (int i = 0; i < 3000; ++i)
        if (!isLive(i))
            store.MarkDeleted(i);
    ASSERT_EQ(cld->GetNumPnts(), 2000);
    const std::vector<int> vecGround = FindGround(*cld, 3000, isLive);
    ASSERT_LT(vecGround.size(), 2000U);
    std::vector<TPnt> vecExpected;
    int nNumMarked = 0;
    for (const int i : vecGround)
    {
        vecExpected.push_back(ReadPnt(*cld, i));
        nNumMarked += isLive(i) ? 0 : 1;
    }
    ASSERT_GT(nNumMarked, 0);
    cld->Morph(nullptr);
    std::vector<TPnt> vecKept = ReadPnts(*cld);
    std::sort(vecKept.begin(), vecKept.end());
    std::sort(vecExpected.begin(), vecExpected.end());
    EXPECT_EQ(vecKept, vecExpected); // no mark is left: all are counted
}

TEST(CPntCld_MorphAny, Morph_TellsEveryPercent)
{
    CTestCld<CTruncPnt> cld(CPntCld_Morph<CTruncPnt>::MakeTerrain(100000));
    CRecPercent progress;
    cld->Morph(&progress);
    ASSERT_FALSE(progress.m_vecPos.empty());
    EXPECT_EQ(progress.m_vecPos.front(), 0);
    EXPECT_EQ(progress.m_vecPos.back(), 100);
    EXPECT_TRUE(std::is_sorted(progress.m_vecPos.begin(), progress.m_vecPos.end()));
    for (int n = 0; n <= 100; ++n)
        EXPECT_EQ(std::count(progress.m_vecPos.begin(), progress.m_vecPos.end(), n), 1) << n;
}
