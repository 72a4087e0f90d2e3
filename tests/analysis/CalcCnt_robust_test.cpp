#include <analysis/CalcCnt.h>
#include <tests/analysis/OutlineCases.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

namespace
{

template <class T>
class CalcCnt_Robust : public ::testing::Test
{
};
TYPED_TEST_SUITE(CalcCnt_Robust, BothPntTypes, PntTypeName);

/// Gives every leaf another run of the array, as a damaged file might.
void ScrambleLeaves(const COcTreeNode& node, std::int32_t nNumPnts, CRandom& random)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        if (!child.IsLeaf())
        {
            ScrambleLeaves(child.GetNode(), nNumPnts, random);
            continue;
        }
        COcTreeLeaf& leaf = child.GetLeaf();
        leaf.m_nFirst = static_cast<std::int32_t>(random.Int(0, nNumPnts - 1));
        leaf.m_nCount = static_cast<std::int32_t>(random.Int(0, nNumPnts - leaf.m_nFirst));
    }
}

} // namespace

// Leaves that overlap, hold foreign points, or leave points out: some answer, and a closed outline if any.
TYPED_TEST(CalcCnt_Robust, ScrambledTree)
{
    for (std::uint64_t nSeed = 0; nSeed < 2400; ++nSeed)
    {
        const COutlineCase outlineCase = MakeOutlineCase(nSeed);
        SCOPED_TRACE(outlineCase.sName);
        CTestStore<TypeParam> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
        store.ComputeTree();
        CRandom random(nSeed);
        ScrambleLeaves(*store->m_pTree->m_pRoot, store->m_nNumPnts, random);
        CRecListener rec;
        if (!CalcCnt(*store, nullptr, &rec, outlineCase.d))
            continue;
        ASSERT_GE(rec.GetNumPnts(), 4);
        EXPECT_EQ(rec.GetIndices().front(), rec.GetIndices().back());
    }
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
