#ifndef TESTS_OCTREE_CPLANALLOCTEST_H
#define TESTS_OCTREE_CPLANALLOCTEST_H

#include <tests/support/CTestStore.h>
#include <tests/support/FailEveryAlloc.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
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

    void FailEachOf(const TQuery& query, int nStep = 1)
    {
        CSumListener whole;
        query(&whole);
        ASSERT_GT(whole.m_nSum, 0);
        // What is left allocated is not counted: the clipper loses a few blocks of its own when it fails.
        const auto attempt = [&](CAllocPlan& plan)
        {
            CSumListener listener;
            const bool bThrough = plan.Run([&] { query(&listener); });
            EXPECT_TRUE(!bThrough || listener.m_nSum == whole.m_nSum);
        };
        EXPECT_GT(FailEveryAlloc(attempt, nStep), 3);
    }

    CNoColors m_colors;
    CTestStore<T> m_store;
};

#endif
