// Duplicates in plan view, leaf by leaf.

#include <octree/CDuplicateOcTreeListener.h>

#include <octree/WalkAll.h>
#include <tests/support/CTestStore.h>

#include <chrono>

namespace
{

template <class T>
class CDuplicate_case : public ::testing::Test
{
public:
    /// @return deleted positions after a search over a tree of the points.
    static std::vector<int> Find(CTestStore<T>& store)
    {
        store.ComputeTree();
        CDuplicateOcTreeListener<T> listener(*store);
        WalkAll(*store->m_pTree, listener);
        std::vector<int> vecDeleted;
        for (int i = 0; i < store->m_nNumPnts; ++i)
            if (store->IsDeleted(i))
                vecDeleted.push_back(i);
        return vecDeleted;
    }
};
TYPED_TEST_SUITE(CDuplicate_case, TBothPntTypes, CPntTypeName);

// Heights are not compared, and the first in the leaf's order stays.
TYPED_TEST(CDuplicate_case, SamePlace_FirstStaysWhateverTheHeight_Kept)
{
    CTestStore<TypeParam> store({{0, 0, 900}, {0, 0, 800}, {0, 0, 950}, {100, 0, 600}}, {});
    EXPECT_EQ(this->Find(store), (std::vector<int>{1, 2}));
    EXPECT_EQ(store->m_pPnts[0].m_nZ, 900);
    EXPECT_TRUE(store->m_bHasDel);
    EXPECT_TRUE(store->m_bModified);
    EXPECT_EQ(store->m_nVersion, 1);
}

// The same pair in two leaves stays.
TYPED_TEST(CDuplicate_case, SamePlaceInTwoLeaves_BothStay_Kept)
{
    CTestStore<TypeParam> store({{0, 0, 0}, {0, 0, 1000}, {50, 0, 500}}, {});
    EXPECT_EQ(this->Find(store), std::vector<int>());
    EXPECT_FALSE(store->m_bHasDel);
    EXPECT_FALSE(store->m_bModified);
    EXPECT_EQ(store->m_nVersion, 0);
}

TYPED_TEST(CDuplicate_case, OneCoordinateEqual_IsNoDuplicate)
{
    CTestStore<TypeParam> store({{7, 1, 0}, {7, 2, 0}, {8, 1, 0}, {1, 7, 0}}, {});
    EXPECT_EQ(this->Find(store), std::vector<int>());
}

TYPED_TEST(CDuplicate_case, Visitor_AsksNoPointAndHasNoneDeleted)
{
    CTestStore<TypeParam> store({{1, 2, 3}}, {});
    store->MarkDeleted(0);
    CDuplicateOcTreeListener<TypeParam> listener(*store);
    EXPECT_FALSE(listener.IsDeleted(0));
    TypeParam pnt = CPntTrait<TypeParam>::Make({9, 9, 9, 9, 9, 9});
    listener.GetPnt(0, pnt);
    EXPECT_EQ(pnt.m_nX, 9);
}

// A leaf can be as large as the cloud: the search must not compare every pair. A hundred times more points
// would take ten thousand times longer by pairs.
TYPED_TEST(CDuplicate_case, LargeLeaf_NearLinear)
{
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < 300000; ++i)
        pnts.push_back({0, 0, 0});
    CTestStore<TypeParam> stacked(pnts, {});
    EXPECT_EQ(this->Find(stacked).size(), pnts.size() - 1);
}

// All different, and all in one leaf, which the visitor is told of directly.
TYPED_TEST(CDuplicate_case, LargeLeafOfDifferentPoints_NearLinear)
{
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < 300000; ++i)
        pnts.push_back({i % 547 * 1024, i / 547 * 65536, 0});
    CTestStore<TypeParam> store(pnts, {});
    CDuplicateOcTreeListener<TypeParam> listener(*store);
    for (int i = 0; i < store->m_nNumPnts; ++i)
        listener.OnPnt(i);
    const auto begin = std::chrono::steady_clock::now();
    listener.OnLeafEnd();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_FALSE(store->m_bHasDel);
    EXPECT_LT(seconds.count(), 20.0); // by pairs: minutes
}

} // namespace
