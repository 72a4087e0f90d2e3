// The calls that a visitor of the whole tree sees.

#include <octree/WalkAll.h>

#include <octree/IOcTreeListener.h>
#include <tests/support/CTestStore.h>

namespace
{

template <class T>
class CRecVisitor final : public IOcTreeListener<T>
{
public:
    void OnPnt(std::int32_t nIndex) override { m_sCalls += std::to_string(nIndex) + " "; }
    void OnLeafEnd() override { m_sCalls += "| "; }
    void GetPnt(std::int32_t, T&) const override { ADD_FAILURE(); }
    bool IsDeleted(std::int32_t) const override
    {
        ADD_FAILURE(); // the walk shows deleted points too
        return false;
    }

    std::string m_sCalls;
};

template <class T>
class WalkAll_case : public ::testing::Test
{
};
TYPED_TEST_SUITE(WalkAll_case, TBothPntTypes, CPntTypeName);

TYPED_TEST(WalkAll_case, Visitor_SeesPointsLeafByLeaf)
{
    // Octant 0: one point. Octant 7: twelve, in octants of its own.
    std::vector<Ref::CPnt> pnts{{0, 0, 0}, {8000, 8000, 8000}, {4000, 4000, 4000}};
    for (int i = 0; i < 10; ++i)
        pnts.push_back({7000 + i, 5000, 5000});
    CTestStore<TypeParam> store(pnts, {});
    store.ComputeTree();
    store->MarkDeleted(3);
    CRecVisitor<TypeParam> visitor;
    WalkAll(*store->m_pTree, visitor);
    EXPECT_EQ(visitor.m_sCalls, "0 | 1 | 2 3 4 5 6 7 8 9 10 11 | 12 | ");
}

TYPED_TEST(WalkAll_case, Visitor_SeesNothingOfATreeWithoutRoot)
{
    CTestStore<TypeParam> store({}, {});
    store.ComputeTree();
    CRecVisitor<TypeParam> visitor;
    WalkAll(*store->m_pTree, visitor);
    EXPECT_EQ(visitor.m_sCalls, "");
}

} // namespace
