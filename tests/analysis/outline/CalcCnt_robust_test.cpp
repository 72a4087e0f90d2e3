#include <analysis/outline/CalcCnt.h>
#include <tests/analysis/outline/COutlineModel.h>
#include <tests/analysis/outline/OutlineCases.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

template <class T>
class CalcCnt_Robust : public ::testing::Test
{
};
TYPED_TEST_SUITE(CalcCnt_Robust, TBothPntTypes, CPntTypeName);

constexpr std::int64_t c_nMaxLooksAtRooms = 40000000; // 200 a point

/// Gives every leaf another run of the array, as a damaged file might, and the model's leaves the same.
void ScrambleLeaves(const COcTreeNode& node, Ref::CNode& refNode, std::int32_t nNumPnts, CRandom& random)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        Ref::CChild& refChild = *refNode.child[static_cast<std::size_t>(child.GetOctant())];
        if (!child.IsLeaf())
        {
            ScrambleLeaves(child.GetNode(), *refChild.node, nNumPnts, random);
            continue;
        }
        COcTreeLeaf& leaf = child.GetLeaf();
        leaf.m_nFirst = static_cast<std::int32_t>(random.Int(0, nNumPnts - 1));
        const std::int32_t nMax = std::min(nNumPnts - leaf.m_nFirst, random.Chance(4) ? nNumPnts : 6);
        leaf.m_nCount = static_cast<std::int32_t>(random.Int(0, nMax));
        refChild.first = leaf.m_nFirst;
        refChild.count = leaf.m_nCount;
    }
}

} // namespace

// Leaves that overlap, hold foreign points, or leave points out: what is done follows the tree as it is.
TYPED_TEST(CalcCnt_Robust, ScrambledTree_SameAsModel)
{
    int nNumClosed = 0;
    for (std::uint64_t nSeed = 0; nSeed < 3600; ++nSeed)
    {
        const COutlineCase outlineCase = MakeOutlineCase(nSeed);
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
        store.ComputeTree();
        CRandom random(nSeed);
        ScrambleLeaves(*store->m_pTree->m_pRoot, *store.GetRef().tree.root, store->m_nNumPnts, random);
        const COutlineModel model(store.GetRef(), outlineCase.d);
        CRecListener rec;
        ASSERT_EQ(CalcCnt(*store, nullptr, &rec, outlineCase.d), model.IsClosed());
        ASSERT_EQ(rec.GetIndices(), model.IsClosed() ? model.GetPath() : std::vector<int>());
        nNumClosed += model.IsClosed() ? 1 : 0;
    }
    EXPECT_GT(nNumClosed, 300);
}

// The walk through a scan of rooms steps into every corner of them and back: each of its steps looks at no
// more than some hundred points and segments, where it used to look at all within ten steps and at the whole
// path.
TYPED_TEST(CalcCnt_Robust, Rooms_WorkIsBounded)
{
    const COutlineCase outlineCase = MakeRooms(1, 200000, 12.0);
    CTestStore<TypeParam> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    for (const double d : {0.05, 0.1})
    {
        CRecListener rec;
        EXPECT_NE(CalcCntWithin(*store, nullptr, &rec, d, c_nMaxLooksAtRooms), Outline_LeftOff) << d;
    }
}

// Where every point of a ring is within reach of every other, a step looks at those near by and at few
// others.
TYPED_TEST(CalcCnt_Robust, RingWithinReach_WorkIsBounded)
{
    constexpr int c_nNum = 50000;
    std::vector<Ref::CPnt> vecPnts;
    for (int i = 0; i < c_nNum; ++i)
    {
        const double a = 6.28318530717958647692 * i / c_nNum;
        vecPnts.push_back({static_cast<std::int32_t>(1.0e9 * std::cos(a)),
                           static_cast<std::int32_t>(1.0e9 * std::sin(a)), 0, 0, 0, 0});
    }
    CTestStore<TypeParam> store(vecPnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CRecListener rec;
    EXPECT_EQ(CalcCntWithin(*store, nullptr, &rec, 1.0e9, std::int64_t{500} * c_nNum), Outline_Closed);
    EXPECT_EQ(rec.GetNumPnts(), c_nNum + 1);
}

// A walk that is left off delivers nothing.
TYPED_TEST(CalcCnt_Robust, LeftOff_DeliversNothing)
{
    const COutlineCase outlineCase = MakeSerratedRing(1, 4000.0);
    CTestStore<TypeParam> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CRecListener rec;
    EXPECT_EQ(CalcCntWithin(*store, nullptr, &rec, outlineCase.d, 1000), Outline_LeftOff);
    EXPECT_EQ(rec.GetNumPnts(), 0);
}

// Thousands of corners, each with its test against the path, are a matter of milliseconds.
TYPED_TEST(CalcCnt_Robust, RaggedOutline)
{
    const COutlineCase outlineCase = MakeSerratedRing(1, 4000.0);
    CTestStore<TypeParam> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CRecListener rec;
    EXPECT_TRUE(CalcCnt(*store, nullptr, &rec, outlineCase.d));
    EXPECT_GT(rec.GetNumPnts(), 4000);
}
