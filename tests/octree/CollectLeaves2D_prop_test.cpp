#include <octree/CollectLeaves2D.h>
#include <tests/analysis/outline/COutlineModel.h>
#include <tests/support/CTestStore.h>
#include <tests/support/RandomCld.h>

#include <gtest/gtest.h>

#include <cmath>

namespace
{

template <class T>
class CollectLeaves2D_Prop : public ::testing::Test
{
};
TYPED_TEST_SUITE(CollectLeaves2D_Prop, TBothPntTypes, CPntTypeName);

/// A rectangle that has to do with the points: limits on them, quarters of a unit beside them, or none.
std::array<double, 4> MakeBox(CRandom& random, const std::vector<Ref::CPnt>& pnts)
{
    static const std::vector<double> c_special = {0.0, std::nan(""), HUGE_VAL, -HUGE_VAL, 1.0e300, -1.0e300};
    std::array<double, 4> box{};
    for (std::size_t i = 0; i < box.size(); ++i)
    {
        const Ref::CPnt& pnt = random.Pick(pnts);
        box[i] = random.Chance(10)
                     ? random.Pick(c_special)
                     : (i % 2 == 0 ? pnt.x : pnt.y) + static_cast<double>(random.Int(-8, 8)) / 4.0;
    }
    return box;
}

} // namespace

// Turned inside out or not, the leaves found are those of the model, in its order, with their squares.
TYPED_TEST(CollectLeaves2D_Prop, SameAsModel)
{
    for (std::uint64_t nSeed = 0; nSeed < 600; ++nSeed)
    {
        SCOPED_TRACE(nSeed);
        CCldRecipe recipe;
        recipe.shape = static_cast<int>(nSeed % c_nNumCldShapes);
        recipe.size = 1 + static_cast<int>(nSeed % 397);
        recipe.seed = nSeed;
        CTestStore<TypeParam> store(MakePnts(recipe), {0.0F, 0.0F, 0.0F});
        store.ComputeTree();
        CRandom random(nSeed);
        for (int i = 0; i < 20 && !store.GetRef().pnts.empty(); ++i)
        {
            const std::array<double, 4> box = MakeBox(random, store.GetRef().pnts);
            const zor::geom::TPlanBox<double> rect{box[0], box[1], box[2], box[3]};
            std::vector<std::pair<int, int>> vecLeaves;
            CollectLeaves2D(*store->m_pTree, rect,
                            [&](const COcTreeLeaf& leaf, const CPlanSquare& square)
                            {
                                EXPECT_TRUE(RoundInwards(rect).Meets(square.GetBox()));
                                vecLeaves.emplace_back(leaf.m_nFirst, leaf.m_nCount);
                            });
            ASSERT_EQ(vecLeaves, COutlineModel::CollectLeaves(store.GetRef().tree, box))
                << box[0] << ' ' << box[1] << ' ' << box[2] << ' ' << box[3];
        }
    }
}

// Nothing but the tree decides: without a root there is nothing to collect.
TEST(CollectLeaves2D, WithoutRoot)
{
    CollectLeaves2D(COcTreeIndex(), {-1.0, -1.0, 1.0, 1.0},
                    [](const COcTreeLeaf&, const CPlanSquare&) { ADD_FAILURE(); });
}
