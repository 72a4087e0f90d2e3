// The rules of the build one by one, and its laws.

#include <octree/BuildTree.h>
#include <octree/WalkAll.h>
#include <sample/CSampleTerrain.h>
#include <tests/support/CRandom.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CldCases.h>

#include <algorithm>
#include <memory>
#include <numeric>

namespace
{

constexpr std::array<float, 3> c_org{0.0F, 0.0F, 0.0F};

/// Leaves of a tree in walk order, each with its depth.
struct CLeafAt
{
    int nDepth;
    std::int32_t nCount;
    std::int32_t nFirst;
};

void ListLeaves(const COcTreeNode& node, int nDepth, std::vector<CLeafAt>& vecLeaves)
{
    for (const COcTreeChild child : node.GetChildren())
    {
        if (child.IsLeaf())
            vecLeaves.push_back({nDepth + 1, child.GetLeaf().m_nCount, child.GetLeaf().m_nFirst});
        else
            ListLeaves(child.GetNode(), nDepth + 1, vecLeaves);
    }
}

template <class T>
class BuildTree_case : public ::testing::Test
{
public:
    /// Builds the tree of a cube of edge `nEdge` with `nCount` points in its uppermost octant and one in
    /// its lowest. @return the root.
    COcTreeNode& BuildOneOctant(int nCount, int nEdge)
    {
        CRandom random(1);
        std::vector<Ref::CPnt> pnts{{0, 0, 0}, {nEdge, nEdge, nEdge}};
        const auto coord = [&] { return static_cast<std::int32_t>(random.Int(nEdge / 2, nEdge)); };
        for (int i = 1; i < nCount; ++i)
            pnts.push_back({coord(), coord(), coord()});
        return Build(pnts);
    }

    COcTreeNode& Build(const std::vector<Ref::CPnt>& pnts)
    {
        m_pStore = std::make_unique<CTestStore<T>>(pnts, c_org);
        EXPECT_TRUE((**m_pStore).ComputeTree());
        return *(**m_pStore).m_pTree->m_pRoot;
    }

    COcTree<T>& GetStore() { return **m_pStore; }

private:
    std::unique_ptr<CTestStore<T>> m_pStore;
};

TYPED_TEST_SUITE(BuildTree_case, TBothPntTypes, CPntTypeName);

TYPED_TEST(BuildTree_case, Octant_OfTenPointsIsALeaf)
{
    EXPECT_EQ(this->BuildOneOctant(10, 1000).m_ucLeaf, 0x81);
    EXPECT_EQ(this->BuildOneOctant(10, 1001).m_ucLeaf, 0x81);
    EXPECT_EQ(this->BuildOneOctant(10, 100000000).m_ucLeaf, 0x81);
}

TYPED_TEST(BuildTree_case, Octant_OfElevenPointsIsALeafInASmallParentOnly)
{
    EXPECT_EQ(this->BuildOneOctant(11, 1000).m_ucLeaf, 0x81);
    EXPECT_EQ(this->BuildOneOctant(11, 1001).m_ucLeaf, 0x01);
    EXPECT_EQ(this->BuildOneOctant(11, 1001).m_ucExist, 0x81);
}

TYPED_TEST(BuildTree_case, Octant_Of999PointsIsALeafInASmallParentOnly)
{
    EXPECT_EQ(this->BuildOneOctant(999, 1000).m_ucLeaf, 0x81);
    EXPECT_EQ(this->BuildOneOctant(999, 1001).m_ucLeaf, 0x01);
}

TYPED_TEST(BuildTree_case, Octant_Of1000PointsIsDividedWhateverTheEdge)
{
    EXPECT_EQ(this->BuildOneOctant(1000, 1000).m_ucLeaf, 0x01);
    EXPECT_EQ(this->BuildOneOctant(1000, 20).m_ucLeaf, 0x01);
    EXPECT_EQ(this->BuildOneOctant(1000, 1001).m_ucLeaf, 0x01);
}

TYPED_TEST(BuildTree_case, SmallCube_Of999PointsIsOneLeafAnOctant)
{
    CRandom random(3);
    std::vector<Ref::CPnt> pnts{{0, 0, 0}, {1000, 1000, 1000}};
    const auto coord = [&] { return static_cast<std::int32_t>(random.Int(0, 1000)); };
    while (pnts.size() < 999)
        pnts.push_back({coord(), coord(), coord()});
    const COcTreeNode& root = this->Build(pnts);
    EXPECT_EQ(root.m_ucExist, 0xFF);
    EXPECT_EQ(root.m_ucLeaf, 0xFF);
}

TYPED_TEST(BuildTree_case, EqualPoints_EndInOneLeafBelowDepth20)
{
    const COcTreeNode& root = this->Build(std::vector<Ref::CPnt>(5000, {17, -4, 99}));
    std::vector<CLeafAt> vecLeaves;
    ListLeaves(root, 0, vecLeaves);
    ASSERT_EQ(vecLeaves.size(), 1U);
    EXPECT_EQ(vecLeaves[0].nDepth, 21);
    EXPECT_EQ(vecLeaves[0].nCount, 5000);
    const COcTreeNode* pNode = &root;
    for (int nDepth = 0; nDepth < 20; ++nDepth)
    {
        EXPECT_EQ(pNode->m_ucExist, 0x80); // on the splitting planes: always the upper octant
        EXPECT_EQ(pNode->m_ucLeaf, 0x00);
        pNode = &(*pNode->GetChildren().begin()).GetNode();
    }
    EXPECT_EQ(pNode->m_ucLeaf, 0x80);
}

// Equal records at the end are looked for from there to the beginning of the array, and no farther: what
// stands before it may be like them.
TYPED_TEST(BuildTree_case, EqualPoints_AreLookedForInTheArrayOnly)
{
    std::vector<TypeParam> vecPnts(3000);
    for (TypeParam& pnt : vecPnts)
        pnt.m_nX = pnt.m_nY = pnt.m_nZ = 17;
    const COcTreeIndex tree = BuildTree(vecPnts.data() + 1000, 2000);
    std::vector<CLeafAt> vecLeaves;
    ListLeaves(*tree.m_pRoot, 0, vecLeaves);
    ASSERT_EQ(vecLeaves.size(), 1U);
    EXPECT_EQ(vecLeaves[0].nFirst, 0);
    EXPECT_EQ(vecLeaves[0].nCount, 2000);
    EXPECT_EQ(tree.m_nCentreX, 17);
    // Nothing stands before this one: the address sanitizer sees who reads there.
    const std::unique_ptr<TypeParam[]> pAlone(new TypeParam[2000]);
    std::copy_n(vecPnts.begin(), 2000, pAlone.get());
    EXPECT_EQ(BuildTree(pAlone.get(), 2000).m_nCentreX, 17);
}

TYPED_TEST(BuildTree_case, PointOnASplittingPlane_LiesAbove)
{
    EXPECT_EQ(this->Build({{-10, 0, 0}, {10, 0, 0}, {0, 0, 0}}).m_ucExist, 0x88);
    EXPECT_EQ(this->Build({{-10, -10, -10}, {0, -1, -1}, {10, 10, 10}}).m_ucExist, 0x91);
    EXPECT_EQ(this->Build({{-10, -10, -10}, {-1, 0, -1}, {10, 10, 10}}).m_ucExist, 0x85);
    EXPECT_EQ(this->Build({{-10, -10, -10}, {-1, -1, 0}, {10, 10, 10}}).m_ucExist, 0x83);
}

// Octant 4 × (x upper) + 2 × (y upper) + (z upper); runs in octant order.
TYPED_TEST(BuildTree_case, Octants_HaveTheirNumbers)
{
    std::vector<Ref::CPnt> pnts;
    for (int k = 7; k >= 0; --k)
        pnts.push_back({(k & 4) != 0 ? 5 : -5, (k & 2) != 0 ? 5 : -5, (k & 1) != 0 ? 5 : -5});
    const COcTreeNode& root = this->Build(pnts);
    int nNumSeen = 0;
    for (const COcTreeChild child : root.GetChildren())
    {
        const int k = child.GetOctant();
        EXPECT_EQ(k, nNumSeen++);
        EXPECT_EQ(child.GetLeaf().m_nFirst, k);
        EXPECT_EQ(this->GetStore().m_pPnts[k].m_nX > 0, (k & 4) != 0);
        EXPECT_EQ(this->GetStore().m_pPnts[k].m_nY > 0, (k & 2) != 0);
        EXPECT_EQ(this->GetStore().m_pPnts[k].m_nZ > 0, (k & 1) != 0);
    }
    EXPECT_EQ(nNumSeen, 8);
}

// The exchanges of the partition, seen in the order of a leaf above the plane.
TYPED_TEST(BuildTree_case, Partition_ExchangesWithTheFirstAbove)
{
    this->Build({{10, 0, 0}, {11, 0, 0}, {-1, 0, 0}, {12, 0, 0}, {-12, 0, 0}, {13, 0, 0}});
    std::vector<int> vecX;
    for (int i = 0; i < 6; ++i)
        vecX.push_back(this->GetStore().m_pPnts[i].m_nX);
    EXPECT_EQ(vecX, (std::vector<int>{-1, -12, 10, 12, 11, 13}));
}

TYPED_TEST(BuildTree_case, Box_TruncatesTheCentre)
{
    this->Build({{-3, -10, 0}, {0, 3, 7}});
    const COcTreeIndex& tree = *this->GetStore().m_pTree;
    EXPECT_EQ(tree.m_nCentreX, -1);
    EXPECT_EQ(tree.m_nCentreY, -3);
    EXPECT_EQ(tree.m_nCentreZ, 3);
    EXPECT_EQ(tree.m_nExtentX, 3);
    EXPECT_EQ(tree.m_nExtentY, 13);
    EXPECT_EQ(tree.m_nExtentZ, 7);
    EXPECT_EQ(tree.m_nEdge, 13);
}

TYPED_TEST(BuildTree_case, Box_ExtentSaturates)
{
    this->Build({{-2147483647 - 1, 0, 0}, {2147483647, 1, 1}});
    const COcTreeIndex& tree = *this->GetStore().m_pTree;
    EXPECT_EQ(tree.m_nCentreX, 0); // -0.5 truncated
    EXPECT_EQ(tree.m_nExtentX, 2147483647);
    EXPECT_EQ(tree.m_nEdge, 2147483647);
}

TYPED_TEST(BuildTree_case, ComputeTree_OfNothingIsFalseAndLeavesAnIndexWithoutRoot)
{
    COcTree<TypeParam> store(nullptr);
    EXPECT_FALSE(store.ComputeTree());
    ASSERT_NE(store.m_pTree, nullptr);
    EXPECT_EQ(store.m_pTree->m_pRoot, nullptr);
    EXPECT_EQ(store.m_pTree->m_nEdge, 0);
    EXPECT_EQ(store.m_pTree->m_nLeafSize, 8);
    EXPECT_EQ(store.m_pTree->m_nNodeSize, 16);
    store.Init(0);
    EXPECT_FALSE(store.ComputeTree());
    EXPECT_EQ(store.m_pTree->m_pRoot, nullptr);
}

// Marks stay where they are while the points move: they are to be made after the build.
TYPED_TEST(BuildTree_case, ComputeTree_LeavesTheMarks_Kept)
{
    CTestStore<TypeParam> store({{10, 0, 0}, {-10, 0, 0}, {5, 5, 5}}, c_org);
    store->SelPnt(0, false);
    store->ComputeTree();
    EXPECT_TRUE(store->IsSelected(0));
    EXPECT_EQ(store->m_pPnts[0].m_nX, -10);
}

/// Every inner node's runs tile one run of the array in octant order; the masks agree with the runs; no
/// leaf is empty. @return the end of the run.
std::int32_t CheckLaws(const COcTreeNode& node, std::int32_t nFirst, int nDepth)
{
    EXPECT_LE(nDepth, 20);
    EXPECT_NE(node.m_ucExist, 0);
    EXPECT_EQ(node.m_ucLeaf & ~node.m_ucExist, 0);
    for (const COcTreeChild child : node.GetChildren())
    {
        if (!child.IsLeaf())
        {
            nFirst = CheckLaws(child.GetNode(), nFirst, nDepth + 1);
            continue;
        }
        EXPECT_EQ(child.GetLeaf().m_nFirst, nFirst);
        EXPECT_GT(child.GetLeaf().m_nCount, 0);
        nFirst += child.GetLeaf().m_nCount;
    }
    return nFirst;
}

TYPED_TEST(BuildTree_case, LeafRuns_TileTheArray)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        if (cldCase.GetPnts().empty())
            continue;
        std::vector<Ref::CPnt> pnts;
        for (const zor::geom::PNT_3D& pnt : cldCase.GetPnts())
            pnts.push_back(
                {Ref::ToCompact(pnt.x, 0.0F), Ref::ToCompact(pnt.y, 0.0F), Ref::ToCompact(pnt.z, 0.0F)});
        EXPECT_EQ(CheckLaws(this->Build(pnts), 0, 0), static_cast<std::int32_t>(pnts.size()));
    }
}

TYPED_TEST(BuildTree_case, Memory_AtMostFourBytesAPointOfTerrain)
{
    const CSampleTerrain terrain(300000);
    std::vector<Ref::CPnt> pnts;
    terrain.ForEachPnt(
        [&](const CSamplePnt& pnt)
        {
            pnts.push_back({Ref::ToCompact(pnt.x, 500000.0F), Ref::ToCompact(pnt.y, 4000000.0F),
                            Ref::ToCompact(pnt.z, 0.0F)});
        });
    this->Build(pnts);
    EXPECT_LE(this->GetStore().m_pTree->m_arena.GetNumBytes(), 4U * pnts.size());
}

TYPED_TEST(BuildTree_case, Memory_SmallTreesTakeLittle)
{
    this->Build({{0, 0, 0}});
    EXPECT_LE(this->GetStore().m_pTree->m_arena.GetNumBytes(), 512U);
}

} // namespace
