// The build against a slow model: the whole reordered array, every mask, run, centre and edge.

#include <octree/BuildTree.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/CldCases.h>
#include <tests/support/DiffTree.h>
#include <tests/support/RandomCld.h>

namespace
{

constexpr std::array<float, 3> c_org{0.0F, 0.0F, 0.0F};

template <class T>
class BuildTree_prop : public ::testing::Test
{
public:
    /// @return empty, or what differs.
    static std::string Diff(const std::vector<Ref::CPnt>& pnts)
    {
        CTestStore<T> store(pnts, c_org);
        store.ComputeTree();
        const std::string sDiff = DiffTree(*store->m_pTree, store.GetRef().tree);
        if (!sDiff.empty())
            return sDiff;
        return store.GetPnts() == store.GetRef().pnts ? "" : "order of the array differs";
    }
};

TYPED_TEST_SUITE(BuildTree_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(BuildTree_prop, BuildTree_SameAsModel)
{
    using TSuite = BuildTree_prop<TypeParam>;
    CheckProp(2500, [](const CCldRecipe& recipe) { RC_ASSERT(TSuite::Diff(MakePnts(recipe)) == ""); });
}

// Small clouds of few values: every coincidence of points and planes.
TYPED_TEST(BuildTree_prop, BuildTree_SmallLattices)
{
    using TSuite = BuildTree_prop<TypeParam>;
    CheckProp(3000,
              []
              {
                  const int nScale = *rc::gen::element(1, 2, 3, 125, 500, 1000, 100000);
                  const auto coords = *rc::gen::container<std::vector<int>>(rc::gen::inRange(-4, 5));
                  std::vector<Ref::CPnt> pnts;
                  for (std::size_t i = 0; i + 2 < coords.size(); ++i) // each value serves all three axes
                      pnts.push_back({coords[i] * nScale, coords[i + 1] * nScale, coords[i + 2] * nScale,
                                      static_cast<std::uint8_t>(i)});
                  RC_ASSERT(TSuite::Diff(pnts) == "");
              });
}

// Slots that were announced and never filled are equal records behind the others: a long tail of them is
// moved as a whole, and everything must come out as if record by record.
TYPED_TEST(BuildTree_prop, BuildTree_EqualRecordsAtTheEnd_SameAsModel)
{
    using TSuite = BuildTree_prop<TypeParam>;
    CheckProp(400,
              [](const CCldRecipe& recipe)
              {
                  std::vector<Ref::CPnt> pnts = MakePnts(recipe);
                  const int nCoord = *rc::gen::element(0, 0, 1, -1, 400, -100000, 2147483647);
                  const Ref::CPnt tail{nCoord, *rc::gen::element(0, nCoord), -nCoord / 2};
                  const int nNumTail = *rc::gen::element(998, 999, 1000, 1001, 1007, 2500, 4001);
                  pnts.insert(pnts.end(), static_cast<std::size_t>(nNumTail), tail);
                  RC_ASSERT(TSuite::Diff(pnts) == "");
              });
}

// Building again what has been built moves nothing.
TYPED_TEST(BuildTree_prop, BuildTree_TwiceIsOnce)
{
    CheckProp(300,
              [](const CCldRecipe& recipe)
              {
                  CTestStore<TypeParam> store(MakePnts(recipe), c_org);
                  store.ComputeTree();
                  const auto pnts = store.GetPnts();
                  store->ComputeTree();
                  RC_ASSERT(store.GetPnts() == pnts);
                  RC_ASSERT(DiffTree(*store->m_pTree, store.GetRef().tree) == "");
              });
}

TYPED_TEST(BuildTree_prop, BuildTree_SameAsModelOnEveryCase)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        std::vector<Ref::CPnt> pnts;
        for (const zor::geom::PNT_3D& pnt : cldCase.GetPnts())
            pnts.push_back({Ref::ToCompact(pnt.x, 0.0F), Ref::ToCompact(pnt.y, 0.0F),
                            Ref::ToCompact(pnt.z, 0.0F), static_cast<std::uint8_t>(pnts.size())});
        EXPECT_EQ(TestFixture::Diff(pnts), "");
    }
}

} // namespace
