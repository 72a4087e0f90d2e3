// The plan-view queries when memory runs out, within the polygon clipper too.

#include <octree/Query2D.h>
#include <octree/contour/QueryContour.h>
#include <tests/support/CFailingAlloc.h>
#include <tests/support/CTestStore.h>
#include <zor3geom/DoBoolOperation.h>

#include <cmath>
#include <functional>

using zor::geom::PNT_2D;

// GEOS loses some of its own blocks when memory runs out within it: that is told to the leak sanitizer, which
// asks for this function by its name.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libgeos";
}

namespace
{

using TRing = std::vector<PNT_2D>;

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

TRing MakeStar(int nNum, double dCentre, double dSize)
{
    TRing ring;
    for (int i = 0; i < nNum; ++i)
    {
        const double dAngle = 6.283185307179586 * i / nNum;
        const double dRadius = dSize * (i % 2 == 0 ? 1.0 : 0.6);
        ring.emplace_back(dCentre + dRadius * std::cos(dAngle), dCentre + dRadius * std::sin(dAngle));
    }
    return ring;
}

/// Fails the first allocation of `operation`, the second, and so on, until it gets through. Each time it
/// either throws std::bad_alloc or has its result: `check` looks at it. What is left allocated is not
/// counted: the clipper loses a few blocks of its own when it fails.
void FailEach(const std::function<void()>& operation, const std::function<void()>& check)
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

template <class T>
class Query2D_alloc : public ::testing::Test
{
public:
    using TQuery = std::function<void(IPntCldListener*)>;

    Query2D_alloc() : m_store(MakePnts(), {0.0F, 0.0F, 0.0F})
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
TYPED_TEST_SUITE(Query2D_alloc, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(Query2D_alloc, GetPnts2D)
{
    this->FailEachOf([this](IPntCldListener* p)
                     { CQuery2D<TypeParam>(*this->m_store, p).GetPnts2D(10, 10, 40, 50); });
}

TYPED_TEST(Query2D_alloc, FindPnts2D_NearLine)
{
    this->FailEachOf(
        [this](IPntCldListener* p) {
            CQuery2D<TypeParam>(*this->m_store, p).FindPnts2D_NearLine({5, 5}, {60, 80}, 9, true, true);
        });
}

TYPED_TEST(Query2D_alloc, FindPnts2D_IntCnt)
{
    const TRing ring = MakeStar(12, 50.0, 40.0);
    this->FailEachOf([&](IPntCldListener* p)
                     { CQueryContour<TypeParam>(*this->m_store, p).FindPnts2D_IntCnt(ring); });
}

// A contour that must be repaired, with holes, and large enough to be clipped down for small squares.
TYPED_TEST(Query2D_alloc, FindPnts2D_Cnts)
{
    TRing ring = MakeStar(72, 50.0, 48.0);
    std::swap(ring[3], ring[9]); // crosses itself
    const std::vector<TRing> holes{MakeStar(5, 40.0, 6.0)};
    this->FailEachOf([&](IPntCldListener* p)
                     { CQueryContour<TypeParam>(*this->m_store, p).FindPnts2D_Cnts(ring, holes); });
}

TEST(DoBoolOperation_alloc, BadAllocOrTheResult)
{
    using namespace zor::geom;
    const TMultiPartPolygon a{{{0, 0}, {0, 9}, {9, 9}, {9, 0}}, {{{1, 1}, {1, 2}, {2, 2}}}};
    const TMultiPartPolygon b{{{3, 3}, {20, 3}, {3, 20}, {20, 20}}, {{{5, 4}, {6, 4}, {6, 5}}}};
    std::vector<TMultiPartPolygon> whole;
    DoBoolOperation(a, b, BOOL_OP_SUB, whole);
    ASSERT_FALSE(whole.empty());
    std::vector<TMultiPartPolygon> parts;
    FailEach([&] { DoBoolOperation(a, b, BOOL_OP_SUB, parts); },
             [&]
             {
                 ASSERT_EQ(parts.size(), whole.size());
                 for (std::size_t i = 0; i < parts.size(); ++i)
                 {
                     EXPECT_EQ(parts[i].outer.size(), whole[i].outer.size());
                     EXPECT_EQ(parts[i].holes.size(), whole[i].holes.size());
                 }
             });
}
