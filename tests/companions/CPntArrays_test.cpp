// A cloud's arrays are what its queries tell, and outlive whatever becomes of it.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CTestCld.h>
#include <tests/support/CheckProp.h>
#include <zor4data/CPntArrays.h>

#include <cstring>
#include <memory>
#include <optional>

namespace
{

using zor::geom::PNT_3D;

bool IsSet(const unsigned char* pBits, int nIndex)
{
    return ((pBits[nIndex / 8] >> (nIndex % 8)) & 1) != 0;
}

PNT_3D ReadPnt(const CPntArrays& arrays, int nIndex)
{
    std::int32_t an[3];
    std::memcpy(an, arrays.pPnts + static_cast<std::ptrdiff_t>(nIndex) * arrays.nStride, sizeof an);
    return {an[0] / 10000.0 + static_cast<double>(arrays.fOrgX),
            an[1] / 10000.0 + static_cast<double>(arrays.fOrgY),
            an[2] / 10000.0 + static_cast<double>(arrays.fOrgZ)};
}

/// Points about half of which share their place in plan with another.
std::vector<PNT_3D> MakePnts(int nNum)
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < nNum; ++i)
        vecPnts.emplace_back(500000.0 + (i * 37) % 100, 4000000.0 + (i * 11) % 25, i % 7);
    return vecPnts;
}

template <class T>
class CPntArrays_case : public ::testing::Test
{
public:
    static std::unique_ptr<CPntCld> Make(int nNum)
    {
        auto pCld = std::make_unique<CPntCld>(nullptr);
        pCld->OnReadType(CPntTrait<T>::c_eType);
        pCld->Init(nNum);
        for (const PNT_3D& pnt : MakePnts(nNum))
            pCld->AddPnt(pnt.x, pnt.y, pnt.z, 1, 2, 3);
        return pCld;
    }

    static std::vector<unsigned char> CopyBytes(const CPntArrays& arrays)
    {
        return {arrays.pPnts, arrays.pPnts + static_cast<std::ptrdiff_t>(arrays.nNumPnts) * arrays.nStride};
    }

    static std::vector<PNT_3D> ReadSorted(const CPntArrays& arrays)
    {
        std::vector<PNT_3D> vecPnts;
        for (int i = 0; i < arrays.nNumPnts; ++i)
            vecPnts.push_back(ReadPnt(arrays, i));
        std::sort(vecPnts.begin(), vecPnts.end(),
                  [](const PNT_3D& a, const PNT_3D& b) {
                      return a.x != b.x ? a.x < b.x : a.y != b.y ? a.y < b.y : a.z < b.z;
                  });
        return vecPnts;
    }
};
TYPED_TEST_SUITE(CPntArrays_case, TBothPntTypes, CPntTypeName);

TYPED_TEST(CPntArrays_case, Fields_SayWhatTheCloudIs)
{
    const auto pCld = this->Make(1000);
    const CPntArrays arrays = GetPntArrays(*pCld);
    const bool bColor = CPntTrait<TypeParam>::c_bColor;
    EXPECT_EQ(arrays.nStride, bColor ? 16 : 12);
    EXPECT_EQ(arrays.bColor, bColor);
    EXPECT_EQ(arrays.nNumPnts, 1000);
    EXPECT_EQ(arrays.fOrgX, 500000.0F);
    EXPECT_EQ(arrays.fOrgY, 4000000.0F);
    EXPECT_EQ(arrays.fOrgZ, 0.0F);
}

// No copy: two views show the same memory, and a selection made later is seen in both.
TYPED_TEST(CPntArrays_case, Memory_IsTheCloudsOwn)
{
    const auto pCld = this->Make(100);
    const CPntArrays a = GetPntArrays(*pCld);
    const CPntArrays b = GetPntArrays(*pCld);
    EXPECT_EQ(a.pPnts, b.pPnts);
    EXPECT_EQ(a.pSelBits, b.pSelBits);
    EXPECT_EQ(a.pDelBits, b.pDelBits);
    EXPECT_FALSE(IsSet(a.pSelBits, 77));
    pCld->SelPnt(77, false);
    EXPECT_TRUE(IsSet(a.pSelBits, 77));
    EXPECT_TRUE(IsSet(b.pSelBits, 77));
    pCld->UnSelPnts();
    EXPECT_FALSE(IsSet(a.pSelBits, 77));
}

TYPED_TEST(CPntArrays_case, Arrays_OutliveClearAndDestruction)
{
    for (const bool bDestroy : {false, true})
    {
        auto pCld = this->Make(1000);
        pCld->SelPnt(3, false);
        const CPntArrays arrays = GetPntArrays(*pCld);
        const std::vector<unsigned char> vecBytes = this->CopyBytes(arrays);
        if (bDestroy)
            pCld.reset();
        else
            pCld->Clear();
        EXPECT_EQ(this->CopyBytes(arrays), vecBytes);
        EXPECT_TRUE(IsSet(arrays.pSelBits, 3));
        EXPECT_FALSE(IsSet(arrays.pDelBits, 3));
    }
}

TYPED_TEST(CPntArrays_case, Arrays_OutliveACompactionAsTheyWere)
{
    const auto pCld = this->Make(1000);
    pCld->ComputeTree();
    for (int i = 0; i < 1000; i += 3)
        pCld->SelPnt(i, false);
    const CPntArrays before = GetPntArrays(*pCld);
    const std::vector<unsigned char> vecBytes = this->CopyBytes(before);
    pCld->DelSelPnts();
    EXPECT_EQ(this->CopyBytes(before), vecBytes);
    EXPECT_TRUE(IsSet(before.pSelBits, 999));
    EXPECT_FALSE(IsSet(before.pDelBits, 999));
    const CPntArrays after = GetPntArrays(*pCld);
    EXPECT_NE(after.pPnts, before.pPnts);
    EXPECT_EQ(after.nNumPnts, pCld->GetNumPnts());
    EXPECT_FALSE(IsSet(after.pSelBits, 0));
}

// A build reorders the points in place; the marks stay where they are.
TYPED_TEST(CPntArrays_case, Build_ReordersTheSamePoints)
{
    const auto pCld = this->Make(1000);
    pCld->SelPnt(5, false);
    const CPntArrays arrays = GetPntArrays(*pCld);
    const std::vector<unsigned char> vecBytes = this->CopyBytes(arrays);
    const std::vector<PNT_3D> vecPnts = this->ReadSorted(arrays);
    pCld->ComputeTree();
    EXPECT_NE(this->CopyBytes(arrays), vecBytes);
    EXPECT_TRUE(IsSet(arrays.pSelBits, 5));
    const std::vector<PNT_3D> vecAfter = this->ReadSorted(arrays);
    for (std::size_t i = 0; i < vecPnts.size(); ++i)
        EXPECT_EQ(vecAfter[i].x + vecAfter[i].y + vecAfter[i].z, vecPnts[i].x + vecPnts[i].y + vecPnts[i].z);
    EXPECT_EQ(GetPntArrays(*pCld).pPnts, arrays.pPnts);
}

// The end of reading builds in place and then compacts: what was there keeps all its points, none marked.
TYPED_TEST(CPntArrays_case, EndOfReading_LeavesAllPoints)
{
    const auto pCld = this->Make(1000);
    const CPntArrays arrays = GetPntArrays(*pCld);
    const std::vector<PNT_3D> vecPnts = this->ReadSorted(arrays);
    pCld->OnReadEnd();
    ASSERT_LT(pCld->GetNumPnts(), 1000);
    EXPECT_EQ(this->ReadSorted(arrays).size(), vecPnts.size());
    for (int i = 0; i < arrays.nNumPnts; ++i)
        EXPECT_FALSE(IsSet(arrays.pDelBits, i));
    EXPECT_NE(GetPntArrays(*pCld).pPnts, arrays.pPnts);
}

TYPED_TEST(CPntArrays_case, NewFilling_HasArraysOfItsOwn)
{
    const auto pCld = this->Make(100);
    const CPntArrays arrays = GetPntArrays(*pCld);
    const std::vector<unsigned char> vecBytes = this->CopyBytes(arrays);
    pCld->Clear();
    pCld->Init(50);
    pCld->AddPnt(1.0, 2.0, 3.0);
    EXPECT_EQ(this->CopyBytes(arrays), vecBytes);
    EXPECT_EQ(arrays.fOrgX, 500000.0F);
    EXPECT_EQ(GetPntArrays(*pCld).fOrgX, 1.0F);
}

// The arrays go away with the last that holds them, cloud or owner.
TYPED_TEST(CPntArrays_case, Owner_IsSharedNotCounted)
{
    auto pCld = this->Make(100);
    std::shared_ptr<const void> pOwner = GetPntArrays(*pCld).pOwner;
    const std::weak_ptr<const void> pWatch = pOwner;
    const unsigned char* const pPnts = GetPntArrays(*pCld).pPnts;
    pCld.reset();
    EXPECT_FALSE(pWatch.expired());
    EXPECT_EQ(pPnts[4] | pPnts[5], 0); // y of the first point is the origin's
    pOwner.reset();
    EXPECT_TRUE(pWatch.expired());
}

TYPED_TEST(CPntArrays_case, WithoutPoints_NoArrays)
{
    CPntCld cld(nullptr);
    const CPntArrays none = GetPntArrays(cld);
    EXPECT_EQ(none.nStride, 0);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    for (int i = 0; i < 2; ++i)
    {
        const CPntArrays arrays = GetPntArrays(cld);
        EXPECT_EQ(arrays.pOwner, nullptr);
        EXPECT_EQ(arrays.pPnts, nullptr);
        EXPECT_EQ(arrays.pSelBits, nullptr);
        EXPECT_EQ(arrays.nNumPnts, 0);
        EXPECT_EQ(arrays.nStride, CPntTrait<TypeParam>::c_bColor ? 16 : 12);
        cld.Init(10);
        cld.Clear();
    }
    cld.Init(0);
    EXPECT_NE(GetPntArrays(cld).pOwner, nullptr);
    EXPECT_EQ(GetPntArrays(cld).nNumPnts, 0);
}

/// @return empty, or what of a point differs from what the queries deliver.
std::string DiffPnt(const CPntCld& cld, const CPntArrays& arrays, const CCldCadPnt& rec)
{
    const int i = rec.m_nIndex;
    const PNT_3D pnt = ReadPnt(arrays, i);
    if (pnt.x != rec.m_pnt.x || pnt.y != rec.m_pnt.y || pnt.z != rec.m_pnt.z)
        return "coordinates";
    if (IsSet(arrays.pSelBits, i) != rec.m_bSel)
        return "selection";
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    const unsigned char* const pColor = arrays.pPnts + static_cast<std::ptrdiff_t>(i) * arrays.nStride + 12;
    if (cld.GetPntColor(i, r, g, b) && (pColor[0] != r || pColor[1] != g || pColor[2] != b))
        return "colour";
    return "";
}

TYPED_TEST(CPntArrays_case, Arrays_SameAsAFullScan)
{
    CheckProp(300,
              [](const CCldRecipe& recipe)
              {
                  CRecipeCld<TypeParam> cld(recipe, recipe.seed % 2 == 0);
                  static const std::vector<int> vecOneIn{0, 1, 2, 9};
                  cld.Delete(cld.GetRandom().Pick(vecOneIn));
                  for (int i = 0; i < cld->GetNumPnts(); i += 3)
                      cld->SelPnt(i, false);
                  const CPntArrays arrays = GetPntArrays(*cld);
                  CRecListener rec;
                  cld->GetPnts(&rec, 64);
                  std::vector<bool> vecDelivered(static_cast<std::size_t>(arrays.nNumPnts));
                  for (const CCldCadPnt& pnt : rec.GetPnts())
                  {
                      vecDelivered[static_cast<std::size_t>(pnt.m_nIndex)] = true;
                      RC_ASSERT(DiffPnt(*cld, arrays, pnt) == "");
                  }
                  for (int i = 0; i < arrays.nNumPnts; ++i)
                      RC_ASSERT(vecDelivered[static_cast<std::size_t>(i)] != IsSet(arrays.pDelBits, i));
              });
}

} // namespace
