// The outline when memory runs out, and how much it takes.

#include <analysis/outline/CalcCnt.h>
#include <tests/analysis/outline/OutlineCases.h>
#include <tests/support/CNoColors.h>
#include <tests/support/CTestStore.h>
#include <tests/support/FailEveryAlloc.h>

#include <gtest/gtest.h>

namespace
{

/// Records nothing: a host that does not allocate.
class CCountListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        m_nNumPnts += nNumPnts;
        for (int i = 0; i < nNumPnts; ++i)
            m_nSum = m_nSum * 31 + static_cast<std::uint64_t>(pPnts[i].m_nIndex);
    }

    int m_nNumPnts = 0;
    std::uint64_t m_nSum = 0; ///< of the indices, in their order
};

template <class T>
class CalcCnt_alloc : public ::testing::Test
{
};
TYPED_TEST_SUITE(CalcCnt_alloc, TBothPntTypes, CPntTypeName);

} // namespace

// Nothing is delivered before all memory has been had, and nothing is left behind.
TYPED_TEST(CalcCnt_alloc, EveryFailure_DeliversNothing)
{
    const COutlineCase outlineCase = MakeSerratedRing(1, 300.0);
    CTestStore<TypeParam> store(outlineCase.vecPnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    CNoColors colors;
    store->m_pColorListener = &colors;
    CCountListener whole;
    EXPECT_TRUE(CalcCnt(*store, nullptr, &whole, outlineCase.d));
    EXPECT_GT(whole.m_nNumPnts, 300);
    const auto attempt = [&](CAllocPlan& plan)
    {
        CCountListener listener;
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        const bool bThrough =
            plan.Run([&] { EXPECT_TRUE(CalcCnt(*store, nullptr, &listener, outlineCase.d)); });
        EXPECT_EQ(listener.m_nNumPnts, bThrough ? whole.m_nNumPnts : 0);
        EXPECT_EQ(listener.m_nSum, bThrough ? whole.m_nSum : 0U);
        EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive);
    };
    EXPECT_GT(FailEveryAlloc(attempt), 10);
}
