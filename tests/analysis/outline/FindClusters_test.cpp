#include <analysis/outline/FindClusters.h>
#include <tests/analysis/outline/CProgressRecorder.h>
#include <tests/support/CTestStore.h>

#include <gtest/gtest.h>

namespace
{

template <class T>
class FindClusters_ : public ::testing::Test
{
public:
    /// The points in this order, and one far away after them: they fill one leaf, or lie in the order of
    /// the octants as it is.
    static CTestStore<T> Make(const std::vector<std::pair<int, int>>& vecPlaces)
    {
        std::vector<Ref::CPnt> vecPnts;
        for (const auto& place : vecPlaces)
            vecPnts.push_back({place.first, place.second, 0, 0, 0, 0});
        vecPnts.push_back({100000000, 100000000, 0, 0, 0, 0});
        CTestStore<T> store(vecPnts, {0.0F, 0.0F, 0.0F});
        store.ComputeTree();
        for (std::size_t i = 0; i < vecPnts.size(); ++i)
            EXPECT_EQ(store->m_pPnts[static_cast<std::ptrdiff_t>(i)].m_nX, vecPnts[i].x);
        return store;
    }
};
TYPED_TEST_SUITE(FindClusters_, TBothPntTypes, CPntTypeName);

} // namespace

TYPED_TEST(FindClusters_, ExactDistanceIsNear)
{
    auto store = this->Make({{0, 0}, {3000, 4000}});
    EXPECT_EQ(FindClusters(*store, nullptr, 5000.0).GetSize(0), 2);
    EXPECT_EQ(FindClusters(*store, nullptr, 4999.999).GetSize(0), 1);
}

// A point that an earlier one reached brings nobody along: 0 reaches 1; 2 is near to 1 alone, which is not
// asked, and 2 itself looks at later points only.
TYPED_TEST(FindClusters_, ReachedPntIsNotAsked_Kept)
{
    auto store = this->Make({{0, 0}, {1000, 0}, {2000, 0}});
    CClusterForest forest = FindClusters(*store, nullptr, 1500.0);
    EXPECT_EQ(forest.FindRoot(0), forest.FindRoot(1));
    EXPECT_NE(forest.FindRoot(0), forest.FindRoot(2));
}

// Two points that were not reached and reach the same later one are joined through it.
TYPED_TEST(FindClusters_, LaterPntJoins)
{
    auto store = this->Make({{0, 0}, {4000, 0}, {2000, 0}, {9000, 0}});
    CClusterForest forest = FindClusters(*store, nullptr, 2500.0);
    EXPECT_EQ(forest.FindRoot(0), 1); // 1 came last and took over
    EXPECT_EQ(forest.FindRoot(2), 1);
    EXPECT_EQ(forest.FindRoot(3), 3);
    // The same places, the shared one first: it reaches both.
    auto storeFirst = this->Make({{2000, 0}, {0, 0}, {4000, 0}});
    EXPECT_EQ(FindClusters(*storeFirst, nullptr, 2500.0).GetSize(0), 3);
}

TYPED_TEST(FindClusters_, StackedPntsAreNotNear_Kept)
{
    auto store = this->Make({{0, 0}, {0, 0}, {0, 0}, {9000, 0}, {9000, 0}});
    CClusterForest forest = FindClusters(*store, nullptr, 100.0);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(forest.GetSize(i), 1);
}

// Two stacks and a pair far off: a stack is not looked through for each of its points. By pairs this would
// take an hour.
TYPED_TEST(FindClusters_, TallStacks)
{
    std::vector<std::pair<int, int>> vecPlaces;
    for (int i = 0; i < 400000; ++i)
        vecPlaces.emplace_back(i / 200000 * 5000, 0);
    vecPlaces.emplace_back(9000000, 0);
    vecPlaces.emplace_back(9005000, 0);
    auto store = this->Make(vecPlaces);
    CClusterForest forest = FindClusters(*store, nullptr, 6000.0);
    EXPECT_EQ(forest.GetSize(forest.FindLargest()), 400000);
    CClusterForest apart = FindClusters(*store, nullptr, 4000.0);
    EXPECT_EQ(apart.GetSize(apart.FindLargest()), 1);
}

// A deleted point is nobody's neighbour, yet joins its own: 1 and 2 belong together through 0 alone.
TYPED_TEST(FindClusters_, DeletedPntJoinsItsNeighbours_Kept)
{
    auto store = this->Make({{0, 0}, {900, 900}, {900, -900}});
    ASSERT_EQ(FindClusters(*store, nullptr, 1500.0).GetSize(0), 3);
    store.Delete(0);
    CClusterForest forest = FindClusters(*store, nullptr, 1500.0);
    EXPECT_EQ(forest.FindRoot(1), 0);
    EXPECT_EQ(forest.FindRoot(2), 0);
}

TYPED_TEST(FindClusters_, DeletedPntIsNotReached)
{
    auto store = this->Make({{0, 0}, {900, 0}, {1800, 0}});
    store.Delete(1);
    CClusterForest forest = FindClusters(*store, nullptr, 1000.0);
    EXPECT_EQ(forest.FindRoot(0), 0);
    EXPECT_EQ(forest.FindRoot(2), 1); // reached by the deleted one
}

TYPED_TEST(FindClusters_, ProgressBeforeEveryPnt)
{
    std::vector<std::pair<int, int>> vecPlaces;
    for (int i = 0; i < 7; ++i)
        vecPlaces.emplace_back(i * 100, 0);
    auto store = this->Make(vecPlaces);
    CProgressRecorder progress;
    FindClusters(*store, &progress, 1.0);
    EXPECT_EQ(progress.GetPos(), (std::vector<int>{0, 12, 25, 37, 50, 62, 75, 87}));
    EXPECT_EQ(progress.GetNumOthers(), 0);
}

// A cluster each: finding the largest does not look through all clusters for every point.
TYPED_TEST(FindClusters_, ManyClusters)
{
    std::vector<std::pair<int, int>> vecPlaces;
    for (int i = 0; i < 300000; ++i)
        vecPlaces.emplace_back(i * 100, 0);
    vecPlaces.emplace_back(30000050, 0);
    vecPlaces.emplace_back(30000100, 0);
    auto store = this->Make(vecPlaces);
    CClusterForest forest = FindClusters(*store, nullptr, 60.0);
    EXPECT_EQ(forest.GetSize(forest.FindLargest()), 2);
}
