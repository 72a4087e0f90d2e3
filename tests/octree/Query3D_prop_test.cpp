// Every traversal against the slow model: points in order, records bit for bit, batches, calls, counters.

#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/CldCases.h>
#include <tests/support/RandomCld.h>
#include <zor3geom/PLANE_3D.h>

#include <cmath>

namespace
{

enum class Kind
{
    All,
    Lod,
    Clip,
    LodClip
};

constexpr Kind c_kinds[] = {Kind::All, Kind::Lod, Kind::Clip, Kind::LodClip};

std::vector<zor::geom::PLANE_3D> ToPlanes(const std::vector<Ref::CPlane>& planes)
{
    std::vector<zor::geom::PLANE_3D> vecPlanes;
    for (const Ref::CPlane& plane : planes)
        vecPlanes.emplace_back(plane.a, plane.b, plane.c, plane.d);
    return vecPlanes;
}

/// One random query: what it asks and how the host behaves, all from one seed.
struct CQuestion
{
    CQuestion(std::uint64_t nSeed, const Ref::CStore& store, bool bColor)
    {
        CRandom random(nSeed);
        dLod = MakeLod(random.Next());
        planes = MakePlanes(store.pnts, store.org, random.Next());
        host = {bColor, random.Chance(2), random.Chance(3),
                static_cast<int>(random.Chance(10) ? random.Int(-3, 0) : random.Int(1, 40))};
        if (random.Chance(5))
            host.batch = 4096;
    }

    double dLod;
    std::vector<Ref::CPlane> planes;
    Ref::CHost host;
};

template <class T>
class Query3D_prop : public ::testing::Test
{
public:
    static constexpr bool c_bColor = CPntTrait<T>::c_bColor;

    /// @return empty, or what differs.
    static std::string Diff(CTestStore<T>& store, Kind eKind, const CQuestion& question)
    {
        CCallLog log;
        CRecColorListener color(&log);
        CRecListener rec(&log);
        if (question.host.alter)
            color.SetAlter();
        if (question.host.spoil)
            rec.SetSpoil();
        store->m_pColorListener = &color;
        const int nNumLeavesBefore =
            store->m_pTree == nullptr ? 0 : store->m_pTree->m_nNumLeavesDelivered.Get();
        RunQuery(CQuery3D<T>(*store, &rec, question.host.batch), eKind, question);

        Ref::CQuery ref(store.GetRef());
        RunModel(ref, eKind, question);
        const std::string sDiff =
            Ref::DiffDelivery(store.GetRef(), ref.GetIndices(), question.host, rec, color, log);
        return sDiff.empty() ? DiffCounters(*store, eKind, ref, nNumLeavesBefore) : sDiff;
    }

private:
    static void RunQuery(const CQuery3D<T>& query, Kind eKind, const CQuestion& question)
    {
        switch (eKind)
        {
        case Kind::All:
            return query.GetPnts();
        case Kind::Lod:
            return query.GetPnts_Lod(question.dLod);
        case Kind::Clip:
            return query.GetPnts_Clip(ToPlanes(question.planes));
        case Kind::LodClip:
            return query.GetPnts_LodClip(question.dLod, ToPlanes(question.planes));
        }
    }

    static void RunModel(Ref::CQuery& ref, Kind eKind, const CQuestion& question)
    {
        switch (eKind)
        {
        case Kind::All:
            return ref.All();
        case Kind::Lod:
            return ref.Lod(question.dLod);
        case Kind::Clip:
            return ref.Clip(question.planes);
        case Kind::LodClip:
            return ref.LodClip(question.dLod, question.planes);
        }
    }

    static std::string DiffCounters(const COcTree<T>& store, Kind eKind, const Ref::CQuery& ref,
                                    int nNumLeavesBefore)
    {
        if (store.m_pTree == nullptr || store.m_pTree->m_pRoot == nullptr || eKind == Kind::All)
            return "";
        // The level-of-detail query leaves the points at 0 and goes on counting the leaves.
        const bool bLod = eKind == Kind::Lod;
        if (store.m_pTree->m_nNumPntsDelivered.Get() != (bLod ? 0 : ref.GetPntCounter()))
            return "counter of points differs";
        if (store.m_pTree->m_nNumLeavesDelivered.Get() !=
            ref.GetLeafCounter() + (bLod ? nNumLeavesBefore : 0))
            return "counter of leaves differs";
        return "";
    }
};

TYPED_TEST_SUITE(Query3D_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(Query3D_prop, Traversals_SameAsModel)
{
    using TSuite = Query3D_prop<TypeParam>;
    CheckProp(1200,
              [](const CCldRecipe& recipe)
              {
                  CRandom random(recipe.seed + 1);
                  static const std::vector<float> vecOrg{0.0F, 12.34F, -500.5F, 500000.125F};
                  CTestStore<TypeParam> store(
                      MakePnts(recipe), {random.Pick(vecOrg), random.Pick(vecOrg), random.Pick(vecOrg)});
                  store.ComputeTree();
                  static const std::vector<int> vecOneIn{0, 0, 1, 2, 3, 20};
                  store.Mark(random, random.Pick(vecOneIn), random.Pick(vecOneIn));
                  for (int i = 0; i < 3; ++i)
                  {
                      const std::uint64_t nSeed = *rc::gen::inRange<std::uint64_t>(0, 1000000000);
                      const CQuestion question(nSeed, store.GetRef(), TSuite::c_bColor);
                      for (const Kind eKind : c_kinds)
                          RC_ASSERT(TSuite::Diff(store, eKind, question) == "");
                  }
              });
}

// Small clouds, all levels of detail that are powers of two: every depth limit, every representative.
TYPED_TEST(Query3D_prop, Traversals_EveryDepthLimit)
{
    using TSuite = Query3D_prop<TypeParam>;
    CheckProp(150,
              [](const CCldRecipe& recipe)
              {
                  CRandom random(recipe.seed + 2);
                  CTestStore<TypeParam> store(MakePnts(recipe), {0.0F, 0.0F, 0.0F});
                  store.ComputeTree();
                  store.Mark(random, static_cast<int>(random.Int(1, 4)), 0);
                  CQuestion question(recipe.seed, store.GetRef(), TSuite::c_bColor);
                  for (int nPower = -2; nPower < 34; ++nPower)
                  {
                      question.dLod = std::ldexp(1.0, nPower) / 10000.0;
                      RC_ASSERT(TSuite::Diff(store, Kind::Lod, question) == "");
                      RC_ASSERT(TSuite::Diff(store, Kind::LodClip, question) == "");
                  }
              });
}

// Without a tree the whole-cloud query delivers, the others do not.
TYPED_TEST(Query3D_prop, Traversals_WithoutTree)
{
    using TSuite = Query3D_prop<TypeParam>;
    CheckProp(100,
              [](const CCldRecipe& recipe)
              {
                  CTestStore<TypeParam> store(MakePnts(recipe), {1.0F, 2.0F, 3.0F});
                  const CQuestion question(recipe.seed, store.GetRef(), TSuite::c_bColor);
                  for (const Kind eKind : c_kinds)
                      RC_ASSERT(TSuite::Diff(store, eKind, question) == "");
              });
}

TYPED_TEST(Query3D_prop, Traversals_SameAsModelOnEveryCase)
{
    for (const CCldCase& cldCase : AllCldCases())
    {
        SCOPED_TRACE(cldCase.GetName());
        std::vector<Ref::CPnt> pnts;
        for (const zor::geom::PNT_3D& pnt : cldCase.GetPnts())
            pnts.push_back({Ref::ToCompact(pnt.x, 0.0F), Ref::ToCompact(pnt.y, 0.0F),
                            Ref::ToCompact(pnt.z, 0.0F), static_cast<std::uint8_t>(pnts.size())});
        CTestStore<TypeParam> store(pnts, {0.0F, 0.0F, 0.0F});
        store.ComputeTree();
        for (std::uint64_t nSeed = 0; nSeed < 20; ++nSeed)
        {
            const CQuestion question(nSeed, store.GetRef(), TestFixture::c_bColor);
            for (const Kind eKind : c_kinds)
                EXPECT_EQ(TestFixture::Diff(store, eKind, question), "") << "seed " << nSeed;
        }
    }
}

// Without any tree: what lies clearly behind all planes is delivered, what lies clearly in front of one is
// not. Clearly: farther than the truncation of cubes can shift them.
TYPED_TEST(Query3D_prop, Clip_SameAsScanAwayFromThePlanes)
{
    CheckProp(
        400,
        [](const CCldRecipe& recipe)
        {
            constexpr double c_dNear = 100.0 / 10000.0;
            std::vector<Ref::CPnt> pnts = MakePnts(recipe);
            for (Ref::CPnt& pnt : pnts) // beyond the int32 range the cubes do not reach the cloud's ends
                pnt = {pnt.x / 2, pnt.y / 2, pnt.z / 2};
            CTestStore<TypeParam> store(pnts, {0.0F, 0.0F, 0.0F});
            store.ComputeTree();
            CRandom random(recipe.seed);
            std::vector<zor::geom::PLANE_3D> planes;
            for (std::int64_t n = random.Int(1, 4); n > 0 && !store.GetRef().pnts.empty(); --n)
            {
                const Ref::CPnt& pnt = random.Pick(store.GetRef().pnts);
                const double a = random.Unit() - 0.5;
                const double b = random.Unit() - 0.5;
                const double c = random.Unit() - 0.5;
                const double dLength = std::sqrt(a * a + b * b + c * c) + 1e-9;
                planes.emplace_back(a / dLength, b / dLength, c / dLength,
                                    -(a * pnt.x + b * pnt.y + c * pnt.z) / 10000.0 / dLength);
            }
            CRecListener rec;
            CQuery3D<TypeParam>(*store, &rec, 64).GetPnts_Clip(planes);
            std::vector<bool> vecDelivered(store.GetRef().pnts.size());
            for (const int i : rec.GetIndices())
                vecDelivered[static_cast<std::size_t>(i)] = true;
            for (std::size_t i = 0; i < vecDelivered.size(); ++i)
            {
                const Ref::CPnt& pnt = store.GetRef().pnts[i];
                double dFront = -1e300;
                for (const auto& plane : planes)
                    dFront = std::max(
                        dFront, (plane.a * pnt.x + plane.b * pnt.y + plane.c * pnt.z) / 10000.0 + plane.d);
                if (std::fabs(dFront) > c_dNear)
                    RC_ASSERT(vecDelivered[i] == (dFront < 0.0));
            }
        });
}

} // namespace
