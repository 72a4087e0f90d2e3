// Points in polygons when memory runs out, and how often memory is asked for.

#include <octree/contour/QueryPolygons.h>
#include <tests/octree/CPlanAllocTest.h>

using zor::geom::TMultiPartPolygon;

namespace
{

const std::vector<TMultiPartPolygon>& GetPolygons()
{
    static const std::vector<TMultiPartPolygon> vecPolygons{
        {MakeStar(72, 50.0, 48.0), {MakeStar(5, 40.0, 6.0)}}, {MakeStar(8, 10.0, 20.0), {}}};
    return vecPolygons;
}

template <class T>
class FindPntsInPolygons_alloc : public CPlanAllocTest<T>
{
};
TYPED_TEST_SUITE(FindPntsInPolygons_alloc, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(FindPntsInPolygons_alloc, WithOctree_BadAllocOrTheResult)
{
    this->FailEachOf([&](IPntCldListener* p) { QueryPolygons(*this->m_store, p, GetPolygons(), true, 7); });
}

TYPED_TEST(FindPntsInPolygons_alloc, WithoutOctree_BadAllocOrTheResult)
{
    this->m_store->m_pTree = nullptr;
    this->FailEachOf([&](IPntCldListener* p) { QueryPolygons(*this->m_store, p, GetPolygons(), false, 7); });
}

TYPED_TEST(FindPntsInPolygons_alloc, PntsTakeNoMemory)
{
    CRandom random(3);
    std::vector<Ref::CPnt> pnts(50000);
    for (Ref::CPnt& pnt : pnts)
        pnt = {static_cast<std::int32_t>(random.Int(0, 1000000)),
               static_cast<std::int32_t>(random.Int(0, 1000000)), 0};
    CTestStore<TypeParam> store(pnts, {0.0F, 0.0F, 0.0F});
    store.ComputeTree();
    store->m_pColorListener = &this->m_colors;
    for (const bool bOutside : {false, true})
    {
        CSumListener listener;
        const std::int64_t nBefore = CFailingAlloc::GetNumAllocs();
        QueryPolygons(*store, &listener, GetPolygons(), bOutside, 100);
        EXPECT_LT(CFailingAlloc::GetNumAllocs() - nBefore, 100);
        EXPECT_GT(listener.m_nSum, 0U);
    }
}
