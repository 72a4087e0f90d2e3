// The outline when memory runs out, and how much it takes.

#include <analysis/outline/CalcCnt.h>
#include <tests/analysis/outline/OutlineCases.h>
#include <tests/support/CFailingAlloc.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

namespace
{

/// Records nothing: a host that does not allocate.
class CCountListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt*) override { m_nNumPnts += nNumPnts; }

    int m_nNumPnts = 0;
};

class CNoColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
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
    int nNumFailures = 0;
    for (bool bDone = false; !bDone; nNumFailures += bDone ? 0 : 1)
    {
        CCountListener listener;
        const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
        try
        {
            const CFailingAlloc failing(nNumFailures);
            EXPECT_TRUE(CalcCnt(*store, nullptr, &listener, outlineCase.d));
            bDone = true;
            EXPECT_GT(listener.m_nNumPnts, 300);
        }
        catch (const std::bad_alloc&)
        {
            EXPECT_EQ(listener.m_nNumPnts, 0);
        }
        EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive);
        ASSERT_LT(nNumFailures, 1000);
    }
    EXPECT_GT(nNumFailures, 10);
}
