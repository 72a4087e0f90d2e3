#ifndef TESTS_OCTREE_CPLANTEST_H
#define TESTS_OCTREE_CPLANTEST_H

#include <tests/support/CTestStore.h>
#include <zor3geom/PNT_2D.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

/// Points anywhere in a square, flat; the corners of the square among them, so that it is the root's.
inline std::vector<Ref::CPnt> MakePlanPnts(int nNumPnts, std::int32_t nEdge)
{
    CRandom random(11);
    std::vector<Ref::CPnt> pnts{{0, 0, 0}, {nEdge, 0, 0}, {0, nEdge, 0}, {nEdge, nEdge, 0}};
    while (static_cast<int>(pnts.size()) < nNumPnts)
        pnts.push_back({static_cast<std::int32_t>(random.Int(0, nEdge)),
                        static_cast<std::int32_t>(random.Int(0, nEdge)), 0});
    return pnts;
}

/// Tests in plan view, each with a store of its own.
template <class T>
class CPlanTest : public ::testing::Test
{
public:
    /// 4000 points over 2000 × 2000 units: squares far larger than the liberty taken near corners.
    CPlanTest() : m_store(MakePlanPnts(4000, 20000000), {0.0F, 0.0F, 0.0F}) { m_store.ComputeTree(); }

    zor::geom::PNT_2D GetPlace(int i) const
    {
        const Ref::CPnt& pnt = m_store.GetRef().pnts[static_cast<std::size_t>(i)];
        return {pnt.x / 10000.0, pnt.y / 10000.0};
    }

    /// Live points for which a condition on their place holds.
    template <class F>
    std::vector<int> Scan(F isWanted) const
    {
        std::vector<int> vecIndices;
        for (int i = 0; i < static_cast<int>(m_store.GetRef().pnts.size()); ++i)
            if (!m_store.GetRef().deleted[static_cast<std::size_t>(i)] && isWanted(GetPlace(i)))
                vecIndices.push_back(i);
        return vecIndices;
    }

    CTestStore<T> m_store;
};

#endif
