// The plan-view queries when memory runs out.

#include <octree/Query2D.h>
#include <tests/octree/CPlanAllocTest.h>

namespace
{

template <class T>
class Query2D_alloc : public CPlanAllocTest<T>
{
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
