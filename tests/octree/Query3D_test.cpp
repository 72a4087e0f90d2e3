// The four traversals on small trees whose every leaf is known.

#include <octree/FindRepresentative.h>
#include <tests/support/CTestStore.h>
#include <zor3geom/PLANE_3D.h>

namespace
{

using zor::geom::PLANE_3D;

/// A store, its listeners and one log of all calls.
template <class T>
class Query3D_case : public ::testing::Test
{
public:
    void Build(const std::vector<Ref::CPnt>& pnts)
    {
        m_pStore = std::make_unique<CTestStore<T>>(pnts, std::array<float, 3>{0.0F, 0.0F, 0.0F});
        m_pStore->ComputeTree();
        (**m_pStore).m_pColorListener = &m_color;
    }

    CTestStore<T>& GetStore() { return *m_pStore; }
    CQuery3D<T> Query(int nBatch = 1) { return CQuery3D<T>(**m_pStore, &m_rec, nBatch); }
    std::vector<int> GetIndices() const { return m_rec.GetIndices(); }
    std::string GetCalls() const { return m_log.GetText(); }

    /// Edge 40000 units. Leaf 0: point 0. Inner octant 7: leaf 0 with points 1 to 10 in reach of 20000 to
    /// 29999, leaf 7 with points 11 and 12 beyond.
    void BuildTwoLevels()
    {
        std::vector<Ref::CPnt> pnts{{0, 0, 0}, {40000, 40000, 40000}, {39999, 39999, 39999}};
        for (int i = 0; i < 10; ++i)
            pnts.push_back({20000 + i, 20000, 20000});
        Build(pnts);
    }

protected:
    CCallLog m_log;
    CRecColorListener m_color{&m_log};
    CRecListener m_rec{&m_log};

private:
    std::unique_ptr<CTestStore<T>> m_pStore;
};
TYPED_TEST_SUITE(Query3D_case, TBothPntTypes, CPntTypeName);

using TIndices = std::vector<int>;

TYPED_TEST(Query3D_case, GetPnts_BatchesOfThreeOfSevenPoints)
{
    this->Build(std::vector<Ref::CPnt>(7, {1, 2, 3}));
    this->Query(3).GetPnts();
    EXPECT_EQ(this->GetCalls(), "ZcccP3cccP3cP1");
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 1, 2, 3, 4, 5, 6}));
}

TYPED_TEST(Query3D_case, EveryQuery_BatchesAndCallsInOrder)
{
    this->Build(std::vector<Ref::CPnt>(7, {1, 2, 3}));
    this->Query(3).GetPnts_Lod(-1.0);
    this->Query(3).GetPnts_Clip({});
    this->Query(3).GetPnts_LodClip(0.0, {});
    EXPECT_EQ(this->GetCalls(), "ZcccP3cccP3cP1ZcccP3cccP3cP1ZcccP3cccP3cP1");
}

TYPED_TEST(Query3D_case, FullLastBatch_IsNotFollowedByAnEmptyOne)
{
    this->Build(std::vector<Ref::CPnt>(6, {1, 2, 3}));
    this->Query(3).GetPnts();
    this->Query(6).GetPnts_Lod(-1.0);
    this->Query(2).GetPnts_Clip({});
    EXPECT_EQ(this->GetCalls(), "ZcccP3cccP3ZccccccP6ZccP2ccP2ccP2");
}

TYPED_TEST(Query3D_case, BatchBelowOne_CountsAsOne)
{
    this->Build(std::vector<Ref::CPnt>(2, {1, 2, 3}));
    this->Query(0).GetPnts();
    this->Query(-2147483647 - 1).GetPnts_Clip({});
    EXPECT_EQ(this->GetCalls(), "ZcP1cP1ZcP1cP1");
}

TYPED_TEST(Query3D_case, SetZRange_HasTheHeightsOfTheBox)
{
    this->Build({{0, 0, -20000}, {5, 5, 50000}});
    this->Query().GetPnts();
    EXPECT_EQ(this->m_color.GetRanges().at(0), std::make_pair(-2.0, 5.0));
}

TYPED_TEST(Query3D_case, AllDeleted_SetZRangeOnly)
{
    this->BuildTwoLevels();
    for (int i = 0; i < 13; ++i)
        this->GetStore().Delete(i);
    this->Query().GetPnts();
    this->Query().GetPnts_Lod(1.0);
    this->Query().GetPnts_Clip({});
    this->Query().GetPnts_LodClip(1.0, {});
    EXPECT_EQ(this->GetCalls(), "ZZZZ");
}

TYPED_TEST(Query3D_case, GetPnts_IndexOrderWithoutTheDeleted)
{
    this->BuildTwoLevels();
    this->GetStore().Delete(0);
    this->GetStore().Delete(5);
    this->GetStore().Select(7);
    this->Query(100).GetPnts();
    EXPECT_EQ(this->GetIndices(), (TIndices{1, 2, 3, 4, 6, 7, 8, 9, 10, 11, 12}));
    for (const CCldCadPnt& pnt : this->m_rec.GetPnts())
        EXPECT_EQ(pnt.m_bSel, pnt.m_nIndex == 7);
}

// The limit is met by equality only: below the root's it is never met.
TYPED_TEST(Query3D_case, Lod_LargerThanTheTreeGivesEverything_Kept)
{
    this->BuildTwoLevels();
    this->GetStore().Delete(3);
    this->Query(100).GetPnts_Lod(1000.0);
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TYPED_TEST(Query3D_case, LodClip_LargerThanTheTreeGivesOnePointALeaf_Kept)
{
    this->BuildTwoLevels();
    this->GetStore().Delete(1);
    this->Query(100).GetPnts_LodClip(1000.0, {});
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 2, 11}));
}

// Edge 2 units: a spacing that were taken as one unit would thin these points.
TYPED_TEST(Query3D_case, Lod_NotAboveZeroOrNotANumberIsNoThinning)
{
    std::vector<Ref::CPnt> pnts(12, {2, 2, 2});
    pnts.push_back({0, 0, 0});
    this->Build(pnts);
    for (const double dLod : {0.0, -0.0, -1.0, -1e300, -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()})
    {
        CRecListener rec;
        CQuery3D<TypeParam>(*this->GetStore(), &rec, 5).GetPnts_Lod(dLod);
        EXPECT_EQ(rec.GetNumPnts(), 13) << dLod;
        CQuery3D<TypeParam>(*this->GetStore(), &rec, 5).GetPnts_LodClip(dLod, {});
        EXPECT_EQ(rec.GetNumPnts(), 26) << dLod;
    }
    this->Query().GetPnts_Lod(1.0 / 10000.0);
    EXPECT_EQ(this->GetIndices().size(), 2U); // it would
}

// Edge 40000 is 2^16 rounded up: 6.5536 units and up to 13.1 lie at depth 0.
TYPED_TEST(Query3D_case, Lod_AtDepthZeroIsOneRepresentative)
{
    this->BuildTwoLevels();
    this->Query().GetPnts_Lod(6.5536);
    EXPECT_EQ(this->GetCalls(), "ZcP1");
    EXPECT_EQ(this->GetIndices(), (TIndices{0}));
    this->Query().GetPnts_LodClip(13.1, {});
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 0}));
}

TYPED_TEST(Query3D_case, Lod_AtDepthOneGivesOnePointAChild)
{
    this->BuildTwoLevels();
    this->GetStore().Delete(1);
    this->Query().GetPnts_Lod(3.2768);
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 2}));
}

// Leaves above the limit give all of their points, those at the limit one.
TYPED_TEST(Query3D_case, Lod_AtDepthTwoGivesTheUpperLeafWhole)
{
    this->BuildTwoLevels();
    this->Query().GetPnts_Lod(1.6384);
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 1, 11}));
    this->Query(100).GetPnts_Lod(0.8192);
    EXPECT_EQ(this->GetIndices().size(), 3U + 13U);
}

// The first leaf ends the search, and where it has no live point no other is tried.
TYPED_TEST(Query3D_case, Representative_DeletedInItsLeafIsSkipped_Kept)
{
    this->BuildTwoLevels();
    this->GetStore().Delete(0);
    this->Query().GetPnts_Lod(6.5536);
    EXPECT_EQ(this->GetCalls(), "Z");
}

// The combined query looks farther when there is no representative.
TYPED_TEST(Query3D_case, LodClip_WithoutRepresentativeGoesOnToTheChildren_Kept)
{
    this->BuildTwoLevels();
    this->GetStore().Delete(0);
    this->Query().GetPnts_LodClip(6.5536, {});
    EXPECT_EQ(this->GetIndices(), (TIndices{1, 11}));
}

/// Two inner octants, 0 and 7, each with a leaf 0 of ten points and a leaf 7 of two.
template <class T>
void BuildTwoInner(Query3D_case<T>& test)
{
    std::vector<Ref::CPnt> pnts;
    for (const int nAt : {0, 20000})
    {
        for (int i = 0; i < 10; ++i)
            pnts.push_back({nAt + i, nAt, nAt});
        pnts.push_back({nAt + 15000, nAt + 15000, nAt + 15000});
        const int nLast = nAt == 0 ? 15001 : 40000;
        pnts.push_back({nLast, nLast, nLast});
    }
    test.Build(pnts);
}

// Without a leaf among the children the last inner child is taken, not the first.
TYPED_TEST(Query3D_case, Representative_OfTheLastInnerChild_Kept)
{
    BuildTwoInner(*this);
    const COcTreeNode& root = *this->GetStore()->m_pTree->m_pRoot;
    ASSERT_EQ(root.m_ucExist, 0x81);
    ASSERT_EQ(root.m_ucLeaf, 0x00);
    EXPECT_EQ(FindRepresentative(root)->m_nFirst, 12);
    this->Query().GetPnts_Lod(6.5536);
    EXPECT_EQ(this->GetIndices(), (TIndices{12}));
}

// A node that a file has without children stands for nothing.
TYPED_TEST(Query3D_case, Representative_OfANodeWithoutChildrenIsNone)
{
    BuildTwoInner(*this);
    COcTreeNode& last = this->GetStore()->m_pTree->m_pRoot->GetChildren().GetLast().GetNode();
    last.m_ucExist = 0;
    last.m_ucLeaf = 0;
    EXPECT_EQ(FindRepresentative(last), nullptr);
    this->Query().GetPnts_Lod(6.5536); // of the root: its last child has none
    EXPECT_EQ(this->GetCalls(), "Z");
    this->Query(100).GetPnts_Lod(3.2768);
    EXPECT_EQ(this->GetIndices(), (TIndices{0}));
    this->Query(100).GetPnts_LodClip(6.5536, {}); // goes on to the children
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 0, 10}));
    this->Query(100).GetPnts_LodClip(3.2768, {});
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 0, 10, 0}));
}

TYPED_TEST(Query3D_case, Clip_WithoutPlanesIsTheTreesOrder)
{
    BuildTwoInner(*this);
    this->GetStore().Delete(4);
    this->Query(100).GetPnts_Clip({});
    EXPECT_EQ(this->GetIndices().size(), 23U);
    EXPECT_EQ(this->GetStore()->m_pTree->m_nNumPntsDelivered.Get(), 23);
    EXPECT_EQ(this->GetStore()->m_pTree->m_nNumLeavesDelivered.Get(), 4);
}

// A point on a plane is not in front of it, nor is a cube that touches it.
TYPED_TEST(Query3D_case, Clip_PointOnThePlaneIsKept)
{
    this->Build({{0, 0, 0}, {10000, 10000, 10000}, {10000, 0, 0}});
    this->Query().GetPnts_Clip({PLANE_3D(1.0, 0.0, 0.0, -1.0)});
    EXPECT_EQ(this->GetIndices().size(), 3U);
    this->Query().GetPnts_Clip({PLANE_3D(-1.0, 0.0, 0.0, 1.0)});
    EXPECT_EQ(this->GetIndices().size(), 5U);
    this->Query().GetPnts_Clip({PLANE_3D(1.0, 0.0, 0.0, 0.0)});
    EXPECT_EQ(this->GetIndices().size(), 6U);
}

// The root cube reaches from 0 to 10000 and touches the plane from the front: not all corners are in
// front, so its points are looked at.
TYPED_TEST(Query3D_case, Clip_CubeTouchingThePlaneFromTheFrontIsNotOutside)
{
    this->Build({{0, 0, 0}, {10000, 10000, 10000}});
    this->Query().GetPnts_Clip({PLANE_3D(1.0, 0.0, 0.0, 0.0)});
    EXPECT_EQ(this->GetIndices(), (TIndices{0}));
}

// The order of the planes decides nothing, and those that found the leaf inside are not asked again: a
// plane that is not a number keeps everything.
TYPED_TEST(Query3D_case, Clip_RejectsWhatAnyPlaneHasInFront)
{
    this->BuildTwoLevels();
    const double dNan = std::numeric_limits<double>::quiet_NaN();
    const PLANE_3D left(-1.0, 0.0, 0.0, 2.0005);  // keeps x >= 2.0005
    const PLANE_3D right(1.0, 0.0, 0.0, -2.0008); // keeps x <= 2.0008
    this->Query(100).GetPnts_Clip({left, right, PLANE_3D(dNan, 0.0, 0.0, 1.0)});
    const TIndices vecKept = this->GetIndices();
    EXPECT_EQ(vecKept.size(), 4U);
    this->Query(100).GetPnts_Clip({right, left});
    EXPECT_EQ(this->GetIndices().size(), 8U);
}

// A leaf whose nominal cube lies inside is delivered untested, though a point lies outside that cube: the
// edge 40001 is halved with truncation, and the last point is one unit beyond.
TYPED_TEST(Query3D_case, Clip_DecidesByNominalCubes_Kept)
{
    this->Build({{0, 0, 0}, {40001, 40001, 40001}});
    const COcTreeCube root = this->GetStore()->m_pTree->GetRootCube();
    ASSERT_EQ(root.nX + root.GetHalfEdge(), 40000);
    this->Query().GetPnts_Clip({PLANE_3D(1.0, 0.0, 0.0, -4.00005)}); // has x = 4.0001 in front
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 1}));
}

// A node at the limit gives its point before any plane is looked at.
TYPED_TEST(Query3D_case, LodClip_NodeAtTheLimitIsNotTested_Kept)
{
    BuildTwoInner(*this);
    const PLANE_3D keepsLower(1.0, 0.0, 0.0, -1.0); // x <= 1: octant 7 lies wholly in front
    this->Query().GetPnts_Clip({keepsLower});
    EXPECT_EQ(this->GetIndices().size(), 10U);
    this->Query().GetPnts_LodClip(3.2768, {keepsLower});
    EXPECT_EQ(this->GetIndices().size(), 12U);
    EXPECT_EQ(this->GetIndices().back(), 12);
    this->Query().GetPnts_LodClip(6.5536, {PLANE_3D(0.0, 0.0, 0.0, 1.0)}); // everything is in front
    EXPECT_EQ(this->GetIndices().size(), 13U);
}

// A leaf that gives one point gives it untested beyond its cube.
TYPED_TEST(Query3D_case, LodClip_PointOfALeafIsNotTested_Kept)
{
    this->BuildTwoLevels();
    const PLANE_3D plane(1.0, 0.0, 0.0, -2.5); // straddles leaf 7.0 (x from 2 to 3), drops leaf 7.7
    this->Query().GetPnts_LodClip(1.6384, {plane});
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 1}));
    const PLANE_3D reverse(-1.0, 0.0, 0.0, 2.5); // has points 1 to 10 in front, not their whole cube
    this->Query().GetPnts_LodClip(1.6384, {reverse});
    EXPECT_EQ(this->GetIndices(), (TIndices{0, 1, 1, 11}));
}

// The record of a point without colour starts from what it held in the batch before.
TYPED_TEST(Query3D_case, Records_AreNotResetBetweenBatches_Kept)
{
    this->Build(std::vector<Ref::CPnt>(3, {1, 2, 3, 51, 51, 51}));
    this->m_rec.SetSpoil();
    this->Query(2).GetPnts();
    const bool bColor = CPntTrait<TypeParam>::c_bColor;
    EXPECT_EQ(this->m_color.GetEntries()[0].r, bColor ? 0.2F : 1.0F);
    EXPECT_EQ(this->m_color.GetEntries()[1].g, bColor ? 0.2F : 1.0F);
    EXPECT_EQ(this->m_color.GetEntries()[2].r, bColor ? 0.2F : 0.125F);
    EXPECT_EQ(this->m_color.GetEntries()[2].b, bColor ? 0.2F : 0.375F);
}

// The level-of-detail query resets the counter of points twice and that of leaves never.
TYPED_TEST(Query3D_case, Lod_Counters_Kept)
{
    this->BuildTwoLevels();
    this->Query().GetPnts_Clip({});
    EXPECT_EQ(this->GetStore()->m_pTree->m_nNumLeavesDelivered.Get(), 3);
    this->Query().GetPnts_Lod(-1.0);
    EXPECT_EQ(this->GetStore()->m_pTree->m_nNumPntsDelivered.Get(), 0);
    EXPECT_EQ(this->GetStore()->m_pTree->m_nNumLeavesDelivered.Get(), 6);
}

/// Looks at the tree's counters while points are delivered.
class CCounterWatch final : public IPntCldListener
{
public:
    explicit CCounterWatch(const COcTreeIndex& tree) : m_tree(tree) {}

    void OnPnts(int, CCldCadPnt*) override
    {
        m_bChanged |= m_tree.m_nNumPntsDelivered.Get() != 0 || m_tree.m_nNumLeavesDelivered.Get() != 0;
    }

    bool HasChanged() const { return m_bChanged; }

private:
    const COcTreeIndex& m_tree;
    bool m_bChanged = false;
};

// Queries on several threads share the counters: each adds its sums once, when it has delivered everything.
TYPED_TEST(Query3D_case, Counters_AreAddedOnceAtTheEnd)
{
    this->BuildTwoLevels();
    this->Query().GetPnts_Clip({}); // leaves counts behind, which the next query resets first
    const COcTreeIndex& tree = *this->GetStore()->m_pTree;
    const int nNumPnts = tree.m_nNumPntsDelivered.Get();
    ASSERT_GT(nNumPnts, 0);
    CCounterWatch watch(tree);
    const CQuery3D<TypeParam> query(*this->GetStore(), &watch, 1);
    query.GetPnts_Clip({});
    query.GetPnts_LodClip(0.0001, {});
    EXPECT_FALSE(watch.HasChanged());
    EXPECT_EQ(tree.m_nNumPntsDelivered.Get(), nNumPnts);
}

} // namespace
