#ifndef TESTS_OCTREE_CPLANALLOCTEST_H
#define TESTS_OCTREE_CPLANALLOCTEST_H

#include <tests/support/CNoColors.h>
#include <tests/support/CSumListener.h>
#include <tests/support/CTestStore.h>
#include <tests/support/FailEveryAlloc.h>
#include <zor3geom/PNT_2D.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

/// A ring of so many corners, every other one nearer to its centre.
inline std::vector<zor::geom::PNT_2D> MakeStar(int nNum, double dCentre, double dSize)
{
    std::vector<zor::geom::PNT_2D> ring;
    for (int i = 0; i < nNum; ++i)
    {
        const double dAngle = 6.283185307179586 * i / nNum;
        const double dRadius = dSize * (i % 2 == 0 ? 1.0 : 0.6);
        ring.emplace_back(dCentre + dRadius * std::cos(dAngle), dCentre + dRadius * std::sin(dAngle));
    }
    return ring;
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

    void FailEachOf(const TQuery& query, int nStep = 1)
    {
        CSumListener whole;
        query(&whole);
        ASSERT_GT(whole.m_nSum, 0U);
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
