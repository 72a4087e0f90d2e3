// Copies share points, marks and octree, and go away in any order.

#include <tests/support/CTestCld.h>

#include <memory>

namespace
{

using zor::geom::PNT_3D;
using zor::geom::RECT_3D;

template <class T>
class CPntCld_Copy : public ::testing::Test
{
public:
    static std::unique_ptr<CPntCld> Make(int nNumPnts, ICldColorListener* pColor)
    {
        auto pCld = std::make_unique<CPntCld>(pColor);
        pCld->OnReadType(CPntTrait<T>::c_eType);
        pCld->Init(nNumPnts);
        for (int i = 0; i < nNumPnts; ++i)
            pCld->AddPnt((i * 37) % 100, (i * 11) % 50, i % 7, 1, 2, 3);
        return pCld;
    }

    static std::vector<CCldCadPnt> Query(const CPntCld& cld)
    {
        CRecListener rec;
        cld.GetPnts_Clip(&rec, {}, 16);
        return rec.GetPnts();
    }

    /// Delivers the tree's points: does each have the coordinates that the array has at its index?
    static void CheckConsistent(const CPntCld& cld, int nNumPnts)
    {
        const std::vector<CCldCadPnt> vecPnts = Query(cld);
        EXPECT_EQ(static_cast<int>(vecPnts.size()), nNumPnts);
        for (const CCldCadPnt& rec : vecPnts)
        {
            PNT_3D pnt;
            cld.GetPnt(rec.m_nIndex, pnt);
            EXPECT_EQ(rec.m_pnt.x, pnt.x);
            EXPECT_EQ(rec.m_pnt.z, pnt.z);
        }
    }

    static bool IsSelected(const CPntCld& cld, int nIndex)
    {
        CRecListener rec;
        cld.GetPnts(&rec, 100);
        return rec.GetPnts()[static_cast<std::size_t>(nIndex)].m_bSel;
    }

    CRecColorListener m_color;
};
TYPED_TEST_SUITE(CPntCld_Copy, TBothPntTypes, CPntTypeName);

TYPED_TEST(CPntCld_Copy, Destruction_InAnyOrder)
{
    for (const bool bOriginalFirst : {true, false})
    {
        auto pOriginal = this->Make(500, &this->m_color);
        pOriginal->ComputeTree();
        auto pCopy = std::make_unique<CPntCld>(*pOriginal);
        auto pCopyOfCopy = std::make_unique<CPntCld>(*pCopy);
        pCopy.reset();
        (bOriginalFirst ? pOriginal : pCopyOfCopy).reset();
        this->CheckConsistent(bOriginalFirst ? *pCopyOfCopy : *pOriginal, 500);
    }
}

TYPED_TEST(CPntCld_Copy, Clear_LeavesTheOther)
{
    auto pOriginal = this->Make(500, &this->m_color);
    pOriginal->ComputeTree();
    const CPntCld copy(*pOriginal);
    pOriginal->Clear();
    EXPECT_EQ(pOriginal->GetNumPnts(), 0);
    EXPECT_EQ(copy.GetNumPnts(), 500);
    EXPECT_TRUE(pOriginal->Init(3));
    pOriginal->AddPnt(1e4, 1e4, 1e4);
    this->CheckConsistent(copy, 500);
}

TYPED_TEST(CPntCld_Copy, Copy_TakesEverything)
{
    auto pOriginal = this->Make(20, &this->m_color);
    pOriginal->ReadFromFile(nullptr, static_cast<enumPntCldFile>(9), zor::String("a/path"));
    pOriginal->SetModified(true);
    pOriginal->SetVersion(12);
    const CPntCld copy(*pOriginal);
    EXPECT_EQ(copy.IsWithColor(), CPntTrait<TypeParam>::c_bColor);
    EXPECT_EQ(copy.GetNumPnts(), 20);
    EXPECT_EQ(copy.GetColorListener(), &this->m_color);
    EXPECT_EQ(static_cast<int>(copy.GetFileType()), 9);
    EXPECT_EQ(copy.GetFilePath().Compare("a/path"), 0);
    EXPECT_TRUE(copy.IsModified());
    EXPECT_EQ(copy.GetVersion(), 12);
}

// Counters and flags are each copy's own.
TYPED_TEST(CPntCld_Copy, SetModified_IsTheCopysOwn)
{
    auto pOriginal = this->Make(20, &this->m_color);
    CPntCld copy(*pOriginal);
    copy.SetModified(true);
    EXPECT_FALSE(pOriginal->IsModified());
    EXPECT_EQ(pOriginal->GetVersion(), 0);
}

TYPED_TEST(CPntCld_Copy, Selection_IsSeenByBoth)
{
    auto pOriginal = this->Make(20, &this->m_color);
    CPntCld copy(*pOriginal);
    copy.SelPnt(7, false);
    EXPECT_TRUE(this->IsSelected(*pOriginal, 7));
    pOriginal->UnSelPnts();
    EXPECT_FALSE(this->IsSelected(copy, 7));
}

TYPED_TEST(CPntCld_Copy, Points_AddedToOneAreInBothArrays)
{
    CPntCld original(&this->m_color);
    original.OnReadType(CPntTrait<TypeParam>::c_eType);
    original.Init(2);
    CPntCld copy(original);
    original.AddPnt(0.0, 0.0, 0.0);
    original.AddPnt(5.0, 5.0, 5.0);
    copy.AddPnt(0.0, 0.0, 0.0); // the copy counts its own slots: the same first one
    PNT_3D pnt;
    copy.GetPnt(1, pnt);
    EXPECT_EQ(pnt.x, 5.0);
}

// The array that both share is reordered: both must have the tree that goes with it.
TYPED_TEST(CPntCld_Copy, Rebuild_IsSeenByBoth)
{
    CPntCld original(&this->m_color);
    original.OnReadType(CPntTrait<TypeParam>::c_eType);
    original.Init(400);
    for (int i = 0; i < 200; ++i)
        original.AddPnt(i % 20, i / 20, i % 3);
    original.ComputeTree();
    CPntCld copy(original);
    for (int i = 0; i < 200; ++i)
        original.AddPnt(500.0 - i * 2, i * 3, 40.0 + i);
    original.ComputeTree();
    RECT_3D rect;
    RECT_3D rectCopy;
    ASSERT_TRUE(original.GetBdry(rect));
    ASSERT_TRUE(copy.GetBdry(rectCopy));
    EXPECT_EQ(rect.xmax, rectCopy.xmax);
    EXPECT_EQ(rect.zmax, rectCopy.zmax);
    this->CheckConsistent(original, 400);
    this->CheckConsistent(copy, 400);
}

// A tree without a root belongs to no array: copies that share it may fill arrays of their own.
TYPED_TEST(CPntCld_Copy, Rebuild_OfAnEmptyTreeSeparates)
{
    CPntCld a(&this->m_color);
    a.OnReadType(CPntTrait<TypeParam>::c_eType);
    EXPECT_FALSE(a.ComputeTree());
    CPntCld b(a);
    ASSERT_TRUE(a.Init(5));
    for (int i = 0; i < 5; ++i)
        a.AddPnt(i, i, i);
    EXPECT_TRUE(a.ComputeTree());
    this->CheckConsistent(a, 5);
    this->CheckConsistent(b, 0);
    ASSERT_TRUE(b.Init(1));
    b.AddPnt(9.0, 9.0, 9.0);
    this->CheckConsistent(b, 0);
    EXPECT_TRUE(b.ComputeTree());
    this->CheckConsistent(b, 1);
    this->CheckConsistent(a, 5);
}

TYPED_TEST(CPntCld_Copy, Compaction_Separates)
{
    auto pOriginal = this->Make(300, &this->m_color);
    pOriginal->ComputeTree();
    CPntCld copy(*pOriginal);
    for (int i = 0; i < 100; ++i)
        pOriginal->SelPnt(i, false);
    pOriginal->DelSelPnts();
    EXPECT_EQ(pOriginal->GetNumPnts(), 200);
    EXPECT_EQ(copy.GetNumPnts(), 300);
    this->CheckConsistent(*pOriginal, 200);
    this->CheckConsistent(copy, 300);
    EXPECT_FALSE(copy.IsModified());
    copy.UnSelPnts();
    pOriginal->SelPnt(3, false);
    EXPECT_FALSE(this->IsSelected(copy, 3));
}

// Whatever is asked: all points are there still, counted, delivered and saved.
TYPED_TEST(CPntCld_Copy, Deletion_IsTheCopysOwn)
{
    auto pOriginal = this->Make(300, &this->m_color);
    pOriginal->ComputeTree();
    CPntCld copy(*pOriginal);
    const CPntCld third(copy);
    for (int i = 0; i < 300; i += 3)
        copy.SelPnt(i, false);
    copy.DelSelPnts();
    EXPECT_EQ(copy.GetNumPnts(), 200);
    for (const CPntCld* const pCld : {&third, static_cast<const CPntCld*>(pOriginal.get())})
    {
        EXPECT_EQ(pCld->GetNumPnts(), 300);
        EXPECT_EQ(pCld->GetNumPnts2D(-1e6, -1e6, 1e6, 1e6), 300);
        CRecListener rec;
        pCld->GetPnts(&rec, 7);
        EXPECT_EQ(rec.GetNumPnts(), 300);
        CRecListener recLod;
        pCld->GetPnts_Lod(&recLod, 0.0, 7);
        EXPECT_EQ(recLod.GetNumPnts(), 300);
        EXPECT_FALSE(pCld->IsModified());
    }
    pOriginal->DelSelPnts(); // the selection is still there
    EXPECT_EQ(pOriginal->GetNumPnts(), 200);
}

// In the store, where marks can be made by themselves: a copy counts what it delivers.
TYPED_TEST(CPntCld_Copy, DeletionMarks_AreTheCopysOwn)
{
    COcTree<TypeParam> store(&this->m_color);
    store.Init(20);
    store.MarkDeleted(1);
    COcTree<TypeParam> copy(store);
    copy.MarkDeleted(7);
    store.MarkDeleted(9);
    EXPECT_EQ(store.GetNumPnts(), 18);
    EXPECT_EQ(copy.GetNumPnts(), 18);
    for (int i = 0; i < 20; ++i)
    {
        EXPECT_EQ(store.IsDeleted(i), i == 1 || i == 9) << i;
        EXPECT_EQ(copy.IsDeleted(i), i == 1 || i == 7) << i;
    }
    copy.SelPnt(3, false); // unlike the selection
    EXPECT_TRUE(store.IsSelected(3));
}

// Removing duplicates marks none of them in the copy, which keeps all points.
TYPED_TEST(CPntCld_Copy, OnReadEnd_LeavesTheCopysMarks)
{
    CPntCld original(&this->m_color);
    original.OnReadType(CPntTrait<TypeParam>::c_eType);
    original.Init(30);
    for (int i = 0; i < 30; ++i)
        original.AddPnt(i % 5, 0.0, 0.0);
    const CPntCld copy(original);
    original.OnReadEnd();
    EXPECT_EQ(original.GetNumPnts(), 5);
    EXPECT_EQ(copy.GetNumPnts(), 30);
    CRecListener rec;
    copy.GetPnts(&rec, 100);
    EXPECT_EQ(rec.GetNumPnts(), 30);
}

TYPED_TEST(CPntCld_Copy, Assignment_ReleasesWhatWasThereAndShares)
{
    auto pOriginal = this->Make(300, &this->m_color);
    pOriginal->ComputeTree();
    auto pTarget = this->Make(40, nullptr);
    *pTarget = *pOriginal;
    EXPECT_EQ(pTarget->GetColorListener(), &this->m_color);
    pTarget->SelPnt(1, false);
    EXPECT_TRUE(this->IsSelected(*pOriginal, 1));
    pOriginal.reset();
    this->CheckConsistent(*pTarget, 300);
}

TYPED_TEST(CPntCld_Copy, SelfAssignment_ChangesNothing)
{
    auto pCld = this->Make(300, &this->m_color);
    pCld->ReadFromFile(nullptr, static_cast<enumPntCldFile>(9), zor::String("path"));
    pCld->ComputeTree();
    const CPntCld& self = *pCld;
    *pCld = self;
    EXPECT_EQ(pCld->GetFilePath().Compare("path"), 0);
    this->CheckConsistent(*pCld, 300);
}

} // namespace
