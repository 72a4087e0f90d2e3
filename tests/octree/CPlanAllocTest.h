#ifndef TESTS_OCTREE_CPLANALLOCTEST_H
#define TESTS_OCTREE_CPLANALLOCTEST_H

#include <tests/support/CFailingAlloc.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <new>
#include <vector>

/// A host without colours.
class CNoColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

/// Sums up what it is given: a host that does not allocate.
class CSumListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_nSum += pPnts[i].m_nIndex + 1;
    }

    std::int64_t m_nSum = 0;
};

/// Fails the first allocation of `operation`, the second, and so on, until it gets through. Each time it
/// either throws std::bad_alloc or has its result: `check` looks at it. What is left allocated is not
/// counted: the clipper loses a few blocks of its own when it fails.
inline void FailEach(const std::function<void()>& operation, const std::function<void()>& check)
{
    int nNumGood = 0;
    int nNumThrown = 0;
    for (bool bFailed = true; bFailed; ++nNumGood)
    {
        SCOPED_TRACE(nNumGood);
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        bool bThrown = false;
        try
        {
            const CFailingAlloc failing(nNumGood);
            operation();
        }
        catch (const std::bad_alloc&)
        {
            bThrown = true;
        }
        bFailed = bThrown || CFailingAlloc::GetNumAllocs() - nBefore >= nNumGood;
        nNumThrown += bThrown ? 1 : 0;
        if (!bThrown)
            check();
        if (::testing::Test::HasFailure() || nNumGood > 20000)
            break;
    }
    EXPECT_GT(nNumThrown, 3);
    EXPECT_LT(nNumGood, 20000);
}

/// Queries in plan view while memory runs out, on a store of a few hundred points.
template <class T>
class CPlanAllocTest : public ::testing::Test
{
public:
    using TQuery = std::function<void(IPntCldListener*)>;

    CPlanAllocTest() : m_store(MakePnts(), {0.0F, 0.0F, 0.0F})
    {
        m_store.ComputeTree();
        m_store->m_pColorListener = &m_colors;
    }

    static std::vector<Ref::CPnt> MakePnts()
    {
        CRandom random(1);
        std::vector<Ref::CPnt> pnts(700);
        for (Ref::CPnt& pnt : pnts)
            pnt = {static_cast<std::int32_t>(random.Int(0, 1000000)),
                   static_cast<std::int32_t>(random.Int(0, 1000000)), 0};
        return pnts;
    }

    void FailEachOf(const TQuery& query)
    {
        CSumListener whole;
        query(&whole);
        ASSERT_GT(whole.m_nSum, 0);
        CSumListener listener;
        FailEach(
            [&]
            {
                listener.m_nSum = 0;
                query(&listener);
            },
            [&] { ASSERT_EQ(listener.m_nSum, whole.m_nSum); });
    }

    CNoColors m_colors;
    CTestStore<T> m_store;
};

#endif
