// The duplicate search against comparing every pair.

#include <octree/CDuplicateOcTreeListener.h>

#include <octree/WalkAll.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/RandomCld.h>

namespace
{

template <class T>
class CDuplicate_prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(CDuplicate_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(CDuplicate_prop, FindDuplicates_SameAsEveryPair)
{
    CheckProp(1500,
              [](const CCldRecipe& recipe)
              {
                  CTestStore<TypeParam> store(MakePnts(recipe), {});
                  store.ComputeTree();
                  CDuplicateOcTreeListener<TypeParam> listener(*store);
                  WalkAll(*store->m_pTree, listener);
                  std::vector<int> vecDeleted;
                  for (int i = 0; i < store->m_nNumPnts; ++i)
                      if (store->IsDeleted(i))
                          vecDeleted.push_back(i);
                  RC_ASSERT(vecDeleted == Ref::FindDuplicates(store.GetRef().pnts, store.GetRef().tree));
                  RC_ASSERT(store->m_bHasDel == !vecDeleted.empty());
              });
}

// One leaf of any size with places that repeat, around the size from which the search goes another way.
TYPED_TEST(CDuplicate_prop, FindDuplicates_OfOneLeaf)
{
    CheckProp(1500,
              []
              {
                  const int nRange = *rc::gen::element(2, 4, 8, 40);
                  const auto places = *rc::gen::container<std::vector<std::pair<int, int>>>(
                      *rc::gen::inRange<std::size_t>(0, 80),
                      rc::gen::pair(rc::gen::inRange(-nRange, nRange), rc::gen::inRange(-2, 2)));
                  std::vector<Ref::CPnt> pnts;
                  for (const auto& place : places)
                      pnts.push_back({place.first, place.second, static_cast<int>(pnts.size())});
                  CTestStore<TypeParam> store(pnts, {});
                  CDuplicateOcTreeListener<TypeParam> listener(*store);
                  for (int i = 0; i < store->m_nNumPnts; ++i)
                      listener.OnPnt(i);
                  listener.OnLeafEnd();
                  for (std::size_t b = 0; b < pnts.size(); ++b)
                  {
                      bool bHasEarlier = false;
                      for (std::size_t a = 0; a < b; ++a)
                          bHasEarlier |= pnts[a].x == pnts[b].x && pnts[a].y == pnts[b].y;
                      RC_ASSERT(store->IsDeleted(static_cast<std::int32_t>(b)) == bHasEarlier);
                  }
              });
}

} // namespace
