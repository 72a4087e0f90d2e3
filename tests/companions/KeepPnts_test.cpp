// A cloud reduced to chosen points, and the ground points found without a change of the cloud.

#include <sample/CSampleTerrain.h>
#include <tests/companions/CRecipeCld.h>
#include <tests/support/CCldState.h>
#include <tests/support/CFailingAlloc.h>
#include <zor4data/FindGround.h>
#include <zor4data/KeepPnts.h>

#include <new>

namespace
{

using zor::geom::PNT_3D;

template <class T>
class KeepPnts_case : public ::testing::Test
{
public:
    KeepPnts_case()
    {
        const CSampleTerrain terrain(20000);
        m_cld.OnReadType(CPntTrait<T>::c_eType);
        m_cld.Init(static_cast<int>(terrain.GetNumPnts()));
        terrain.ForEachPnt([this](const CSamplePnt& pnt)
                           { m_cld.AddPnt(pnt.x, pnt.y, pnt.z, pnt.r, pnt.g, pnt.b); });
        m_cld.OnReadEnd();
    }

    CPntCld m_cld{nullptr};
};
TYPED_TEST_SUITE(KeepPnts_case, TBothPntTypes, CPntTypeName);

/// Counts what it is told.
class CProgress final : public IPclProgressListener
{
public:
    void OnProgress(int nPos) override { m_nLast = nPos; }
    int m_nLast = -1;
};

TYPED_TEST(KeepPnts_case, FindGroundAndKeepPnts_AsMorphByteForByte)
{
    CPntCld morphed(this->m_cld);
    morphed.Morph(nullptr);
    ASSERT_GT(morphed.GetNumPnts(), 100);
    CPntCld kept(this->m_cld);
    KeepPnts(kept, FindGround(kept, nullptr));
    EXPECT_TRUE(CCldState(kept).HasSame(CCldState(morphed)));
}

TYPED_TEST(KeepPnts_case, FindGround_LeavesTheCloudAndTellsProgress)
{
    const CCldState before(this->m_cld);
    CProgress progress;
    const std::vector<int> vecGround = FindGround(this->m_cld, &progress);
    EXPECT_TRUE(std::is_sorted(vecGround.begin(), vecGround.end()));
    EXPECT_LT(static_cast<int>(vecGround.size()), this->m_cld.GetNumPnts());
    EXPECT_EQ(progress.m_nLast, 100);
    EXPECT_TRUE(CCldState(this->m_cld) == before);
}

/// A cloud of the same points in units of `dMetres`.
template <class T>
CPntCld InUnits(const CPntCld& cld, double dMetres)
{
    CPntCld scaled(nullptr);
    scaled.OnReadType(CPntTrait<T>::c_eType);
    scaled.Init(cld.GetNumPnts());
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        PNT_3D pnt;
        cld.GetPnt(i, pnt);
        scaled.AddPnt(pnt.x / dMetres, pnt.y / dMetres, pnt.z / dMetres, 0, 0, 0);
    }
    scaled.OnReadEnd();
    return scaled;
}

TYPED_TEST(KeepPnts_case, FindGround_Scaled_AsInMetres)
{
    constexpr double c_dFoot = 0.3048;
    const auto nWanted = static_cast<int>(FindGround(this->m_cld, nullptr).size());
    const CPntCld feet = InUnits<TypeParam>(this->m_cld, c_dFoot);
    const CCldState before(feet);
    CProgress progress;
    std::vector<int> vecGround;
    ASSERT_TRUE(FindGround_Scaled(feet, {c_dFoot, c_dFoot}, &progress, vecGround));
    EXPECT_TRUE(std::is_sorted(vecGround.begin(), vecGround.end()));
    EXPECT_NEAR(static_cast<int>(vecGround.size()), nWanted, nWanted / 1000);
    EXPECT_GT(std::abs(static_cast<int>(FindGround(feet, nullptr).size()) - nWanted), nWanted / 1000);
    EXPECT_EQ(progress.m_nLast, 100);
    EXPECT_TRUE(CCldState(feet) == before);
    ASSERT_TRUE(FindGround_Scaled(feet, CGroundScale(), nullptr, vecGround));
    EXPECT_EQ(vecGround, FindGround(feet, nullptr));
}

TYPED_TEST(KeepPnts_case, FindGround_Scaled_TooWideInMetresIsFalse)
{
    std::vector<int> vecGround{7};
    EXPECT_FALSE(FindGround_Scaled(this->m_cld, {1e6, 1.0}, nullptr, vecGround));
    EXPECT_FALSE(FindGround_Scaled(this->m_cld, {1.0, 1e6}, nullptr, vecGround));
    EXPECT_EQ(vecGround, std::vector<int>{7});
}

TYPED_TEST(KeepPnts_case, Copies_KeepWhatTheyHave)
{
    const CPntCld copy(this->m_cld);
    const CCldState before(copy);
    PNT_3D pnt;
    this->m_cld.GetPnt(17, pnt);
    KeepPnts(this->m_cld, {17});
    EXPECT_EQ(this->m_cld.GetNumPnts(), 1);
    PNT_3D kept;
    this->m_cld.GetPnt(0, kept);
    EXPECT_EQ(kept.x, pnt.x);
    EXPECT_TRUE(this->m_cld.IsModified());
    EXPECT_FALSE(this->m_cld.AddPnt(1.0, 2.0, 3.0));
    EXPECT_TRUE(CCldState(copy) == before);
}

TYPED_TEST(KeepPnts_case, None_LeavesACloudWithoutPnts)
{
    KeepPnts(this->m_cld, {});
    EXPECT_EQ(this->m_cld.GetNumPnts(), 0);
    CRecListener rec;
    this->m_cld.GetPnts(&rec, 9);
    EXPECT_EQ(rec.GetNumPnts(), 0);
}

TYPED_TEST(KeepPnts_case, WithoutMemory_BadAllocAndAsItWas)
{
    const CCldState before(this->m_cld);
    const std::vector<int> vecIndices{1, 2, 3, 4};
    int nNumFailed = 0;
    for (bool bDone = false; !bDone; ++nNumFailed)
    {
        const CFailingAlloc failing(nNumFailed);
        try
        {
            KeepPnts(this->m_cld, vecIndices);
            bDone = true;
        }
        catch (const std::bad_alloc&)
        {
        }
        if (!bDone && this->m_cld.GetNumPnts() == 4)
            FAIL() << "half done";
    }
    EXPECT_GT(nNumFailed, 1);
    EXPECT_EQ(this->m_cld.GetNumPnts(), 4);
}

TEST(KeepPnts_case_noType, Nothing)
{
    CPntCld cld(nullptr);
    KeepPnts(cld, {});
    EXPECT_TRUE(FindGround(cld, nullptr).empty());
    std::vector<int> vecGround{7};
    EXPECT_TRUE(FindGround_Scaled(cld, {0.5, 0.5}, nullptr, vecGround));
    EXPECT_TRUE(vecGround.empty());
    EXPECT_EQ(cld.GetNumPnts(), 0);
}

} // namespace
