// Queries when memory runs out, and how much they allocate.

#include <tests/support/CNoColors.h>
#include <tests/support/CTestStore.h>
#include <tests/support/FailEveryAlloc.h>

#include <functional>

namespace
{

/// Records nothing: a host that does not allocate.
class CCountListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        if (m_nNumPnts == 0)
            m_nNumAllocsAtFirst = CFailingAlloc::GetNumAllocs();
        m_nNumPnts += nNumPnts;
        for (int i = 0; i < nNumPnts; ++i)
            m_nSum = m_nSum * 31 + static_cast<std::uint64_t>(pPnts[i].m_nIndex);
        m_nNumAllocsAtLast = CFailingAlloc::GetNumAllocs();
    }

    int m_nNumPnts = 0;
    std::uint64_t m_nSum = 0; ///< of the indices, in their order
    std::int64_t m_nNumAllocsAtFirst = 0;
    std::int64_t m_nNumAllocsAtLast = 0;
};

/// First in the tree's order some batches of points anywhere; then a dense group, deep in the tree.
std::vector<Ref::CPnt> MakePnts()
{
    CRandom random(1);
    std::vector<Ref::CPnt> pnts;
    const auto add = [&](int nNumPnts, int nMin, int nMax)
    {
        const auto coord = [&] { return static_cast<std::int32_t>(random.Int(nMin, nMax)); };
        for (int i = 0; i < nNumPnts; ++i)
            pnts.push_back({coord(), coord(), coord()});
    };
    add(4000, -20000, 20000);
    add(5000, 4990, 5010);
    return pnts;
}

std::vector<zor::geom::PLANE_3D> OverlappingPlanes(int nNumPlanes)
{
    std::vector<zor::geom::PLANE_3D> vecPlanes;
    for (int i = 0; i < nNumPlanes; ++i) // all through the dense group, all straddling the same cubes
        vecPlanes.emplace_back(1.0, 1e-7 * i, -1e-7 * i, 1e-6 * i - 0.5);
    return vecPlanes;
}

template <class T>
class Query3D_alloc : public ::testing::Test
{
public:
    using TQuery = std::function<void(IPntCldListener*)>;

    Query3D_alloc() : m_store(MakePnts(), {0.0F, 0.0F, 0.0F})
    {
        m_store.ComputeTree();
        m_store->m_pColorListener = &m_colors;
        m_dLod = m_store->m_pTree->m_nEdge / 10000.0 / 64.0;
        m_vecPlanes = OverlappingPlanes(40);
        m_vecPlanes.emplace_back(0.0, 0.0, 1.0, -1e6);
        m_vecQueries = {[this](IPntCldListener* p) { CQuery3D<T>(*m_store, p, 64).GetPnts(); },
                        [this](IPntCldListener* p) { CQuery3D<T>(*m_store, p, 64).GetPnts_Lod(m_dLod); },
                        [this](IPntCldListener* p)
                        { CQuery3D<T>(*m_store, p, 64).GetPnts_Clip(m_vecPlanes); },
                        [this](IPntCldListener* p)
                        { CQuery3D<T>(*m_store, p, 64).GetPnts_LodClip(m_dLod, m_vecPlanes); }};
    }

    CNoColors m_colors;
    CTestStore<T> m_store;
    double m_dLod = 0.0;
    std::vector<zor::geom::PLANE_3D> m_vecPlanes;
    std::vector<TQuery> m_vecQueries;
};
TYPED_TEST_SUITE(Query3D_alloc, TBothPntTypes, CPntTypeName);

TYPED_TEST(Query3D_alloc, EveryFailure_LeavesNothingBehind)
{
    const std::vector<Ref::CPnt> pntsBefore = this->m_store.GetPnts();
    for (std::size_t nQuery = 0; nQuery < this->m_vecQueries.size(); ++nQuery)
    {
        SCOPED_TRACE(nQuery);
        CCountListener whole;
        this->m_vecQueries[nQuery](&whole);
        const auto attempt = [&](CAllocPlan& plan)
        {
            CCountListener listener;
            const std::int64_t nNumLive = CFailingAlloc::GetNumLive();
            if (plan.Run([&] { this->m_vecQueries[nQuery](&listener); }))
            {
                EXPECT_EQ(listener.m_nNumPnts, whole.m_nNumPnts);
                EXPECT_EQ(listener.m_nSum, whole.m_nSum);
            }
            EXPECT_EQ(CFailingAlloc::GetNumLive(), nNumLive);
        };
        EXPECT_GT(FailEveryAlloc(attempt), 0);
    }
    EXPECT_EQ(this->m_store.GetPnts(), pntsBefore);
}

// From the first batch on a query allocates nothing, whatever the number of points and the depth.
TYPED_TEST(Query3D_alloc, Batches_AllocateNothing)
{
    for (std::size_t nQuery = 0; nQuery < this->m_vecQueries.size(); ++nQuery)
    {
        CCountListener listener;
        this->m_vecQueries[nQuery](&listener);
        EXPECT_GT(listener.m_nNumPnts, 64) << nQuery;
        EXPECT_EQ(listener.m_nNumAllocsAtFirst, listener.m_nNumAllocsAtLast) << nQuery;
    }
}

} // namespace
