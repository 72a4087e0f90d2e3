// At every level each point belongs to exactly one cube, and it is that of its node in the octree.

#include <octree/COcTreeIndex.h>
#include <tests/companions/CRecipeCld.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <zor4data/CRootCube.h>

#include <cstring>

namespace
{

constexpr int c_nDeepest = 31;

struct CPosition
{
    std::int32_t nI = 0;
    std::int32_t nJ = 0;
    std::int32_t nK = 0;

    CPosition GetChild(int k) const
    {
        return {nI * 2 + ((k >> 2) & 1), nJ * 2 + ((k >> 1) & 1), nK * 2 + (k & 1)};
    }
};

bool Holds(const CLevelCube& cube, const std::array<std::int32_t, 3>& pnt)
{
    return cube.nMinX <= pnt[0] && pnt[0] < cube.nEndX && cube.nMinY <= pnt[1] && pnt[1] < cube.nEndY &&
           cube.nMinZ <= pnt[2] && pnt[2] < cube.nEndZ;
}

/// Follows a point down the levels. @return the first level at which its cube does not fall into eight of
/// which exactly one holds it, 32 for none. So no other cube of the level holds it, either: all lie in
/// others' parts.
int FindLevelWithoutOne(const CRootCube& root, const std::array<std::int32_t, 3>& pnt)
{
    CPosition position;
    for (int nLevel = 1; nLevel <= c_nDeepest; ++nLevel)
    {
        CLevelCube parent{};
        GetLevelCube(root, nLevel - 1, position.nI, position.nJ, position.nK, parent);
        CPosition found;
        int nNumHolding = 0;
        for (int k = 0; k < 8; ++k)
        {
            const CPosition child = position.GetChild(k);
            CLevelCube cube{};
            if (!GetLevelCube(root, nLevel, child.nI, child.nJ, child.nK, cube))
                return nLevel;
            if (cube.nMinX < parent.nMinX || cube.nEndX > parent.nEndX || cube.nMinY < parent.nMinY ||
                cube.nEndY > parent.nEndY || cube.nMinZ < parent.nMinZ || cube.nEndZ > parent.nEndZ)
                return nLevel;
            if (!Holds(cube, pnt))
                continue;
            found = child;
            ++nNumHolding;
        }
        if (nNumHolding != 1)
            return nLevel;
        position = found;
    }
    return c_nDeepest + 1;
}

template <class T>
class CRootCube_prop : public ::testing::Test
{
public:
    static std::array<std::int32_t, 3> ReadOffsets(const CPntArrays& arrays, int nIndex)
    {
        std::array<std::int32_t, 3> an{};
        std::memcpy(an.data(), arrays.pPnts + static_cast<std::ptrdiff_t>(nIndex) * arrays.nStride, 12);
        return an;
    }

    /// @return whether the points of every leaf, and with them of every node, belong to the node's cube.
    static bool HoldsTree(const COcTree<T>& store, const CRootCube& root, const COcTreeNode& node, int nLevel,
                          const CPosition& position)
    {
        for (const COcTreeChild child : node.GetChildren())
        {
            const CPosition at = position.GetChild(child.GetOctant());
            if (child.IsLeaf() ? !HoldsLeaf(store, root, child.GetLeaf(), nLevel + 1, at)
                               : !HoldsTree(store, root, child.GetNode(), nLevel + 1, at))
                return false;
        }
        return true;
    }

private:
    static bool HoldsLeaf(const COcTree<T>& store, const CRootCube& root, const COcTreeLeaf& leaf, int nLevel,
                          const CPosition& at)
    {
        CLevelCube cube{};
        if (!GetLevelCube(root, nLevel, at.nI, at.nJ, at.nK, cube))
            return false;
        for (std::int32_t i = leaf.m_nFirst; i < leaf.m_nFirst + leaf.m_nCount; ++i)
        {
            const T& rec = store.m_pPnts[i];
            if (!Holds(cube, {rec.m_nX, rec.m_nY, rec.m_nZ}))
                return false;
        }
        return true;
    }
};
TYPED_TEST_SUITE(CRootCube_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(CRootCube_prop, Levels_PartitionThePoints)
{
    CheckProp(300,
              [](const CCldRecipe& recipe)
              {
                  CRecipeCld<TypeParam> cld(recipe);
                  CRootCube root{};
                  RC_ASSERT(GetRootCube(*cld, root));
                  const CPntArrays arrays = GetPntArrays(*cld);
                  const int nStep = 1 + arrays.nNumPnts / 200;
                  for (int i = 0; i < arrays.nNumPnts; i += nStep)
                      RC_ASSERT(FindLevelWithoutOne(root, TestFixture::ReadOffsets(arrays, i)) ==
                                c_nDeepest + 1);
              });
}

TYPED_TEST(CRootCube_prop, Levels_AreTheOctrees)
{
    CheckProp(300,
              [](const CCldRecipe& recipe)
              {
                  CTestStore<TypeParam> store(MakePnts(recipe), {0.0F, 0.0F, 0.0F});
                  store.ComputeTree();
                  const COcTreeIndex& tree = *store->m_pTree;
                  const CRootCube root{
                      tree.m_nCentreX, tree.m_nCentreY, tree.m_nCentreZ, tree.m_nEdge, 0.0F, 0.0F, 0.0F};
                  if (tree.m_pRoot != nullptr)
                      RC_ASSERT(TestFixture::HoldsTree(*store, root, *tree.m_pRoot, 0, {}));
              });
}

} // namespace
