#ifndef TESTS_OCTREE_MAKEMARKEDSTORE_H
#define TESTS_OCTREE_MAKEMARKEDSTORE_H

#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/RandomCld.h>

#include <cstdint>
#include <vector>

/// A store with the points of the recipe about some origin, with its tree; a few are marked, mostly.
template <class T>
CTestStore<T> MakeMarkedStore(const CCldRecipe& recipe, CRandom& random)
{
    static const std::vector<float> vecOrg{0.0F, 12.34F, -500.5F, 500000.125F};
    CTestStore<T> store(MakePnts(recipe), {random.Pick(vecOrg), random.Pick(vecOrg), random.Pick(vecOrg)});
    store.ComputeTree();
    static const std::vector<int> vecOneIn{0, 0, 2, 20};
    store.Mark(random, random.Pick(vecOneIn), random.Pick(vecOneIn));
    return store;
}

/// Checks a property on so many random clouds: `void(CTestStore<T>&, CRandom&)`.
/// @param nSalt  keeps the numbers of one property apart from those of another.
template <class T, class TFn>
void CheckPropOfStores(int nNumCases, std::uint32_t nSalt, TFn check)
{
    CheckProp(nNumCases,
              [&](const CCldRecipe& recipe)
              {
                  CRandom random(recipe.seed + nSalt);
                  CTestStore<T> store = MakeMarkedStore<T>(recipe, random);
                  check(store, random);
              });
}

#endif
