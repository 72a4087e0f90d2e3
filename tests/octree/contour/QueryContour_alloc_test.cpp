// The contour queries when memory runs out, within the polygon clipper too.

#include <octree/contour/QueryContour.h>
#include <tests/octree/CPlanAllocTest.h>
#include <zor3geom/DoBoolOperation.h>

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

template <class T>
class QueryContour_alloc : public CPlanAllocTest<T>
{
};
TYPED_TEST_SUITE(QueryContour_alloc, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(QueryContour_alloc, FindPnts2D_IntCnt)
{
    const TRing ring = MakeStar(12, 50.0, 40.0);
    this->FailEachOf([&](IPntCldListener* p)
                     { CQueryContour<TypeParam>(*this->m_store, p).FindPnts2D_IntCnt(ring); });
}

// A contour that must be repaired, with holes, and large enough to be clipped down for small squares.
TYPED_TEST(QueryContour_alloc, FindPnts2D_Cnts)
{
    TRing ring = MakeStar(72, 50.0, 48.0);
    std::swap(ring[3], ring[9]); // crosses itself
    const std::vector<TRing> holes{MakeStar(5, 40.0, 6.0)};
    this->FailEachOf([&](IPntCldListener* p)
                     { CQueryContour<TypeParam>(*this->m_store, p).FindPnts2D_Cnts(ring, holes); },
                     5);
}

TEST(DoBoolOperation_alloc, BadAllocOrTheResult)
{
    using namespace zor::geom;
    const TMultiPartPolygon a{{{0, 0}, {0, 9}, {9, 9}, {9, 0}}, {{{1, 1}, {1, 2}, {2, 2}}}};
    const TMultiPartPolygon b{{{3, 3}, {20, 3}, {3, 20}, {20, 20}}, {{{5, 4}, {6, 4}, {6, 5}}}};
    std::vector<TMultiPartPolygon> whole;
    DoBoolOperation(a, b, BOOL_OP_SUB, whole);
    ASSERT_FALSE(whole.empty());
    const auto attempt = [&](CAllocPlan& plan)
    {
        std::vector<TMultiPartPolygon> parts;
        if (!plan.Run([&] { DoBoolOperation(a, b, BOOL_OP_SUB, parts); }))
            return;
        ASSERT_EQ(parts.size(), whole.size());
        for (std::size_t i = 0; i < parts.size(); ++i)
        {
            EXPECT_EQ(parts[i].outer.size(), whole[i].outer.size());
            EXPECT_EQ(parts[i].holes.size(), whole[i].holes.size());
        }
    };
    EXPECT_GT(FailEveryAlloc(attempt), 3);
}
