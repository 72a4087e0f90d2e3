// The plan-view queries against their plain model, and against a full scan where that says the same.

#include <octree/Query2D.h>
#include <tests/support/CRefQuery2D.h>
#include <tests/support/CTestStore.h>
#include <tests/support/CheckProp.h>
#include <tests/support/CldCases.h>
#include <tests/support/RandomCld.h>

#include <cmath>

using zor::geom::PNT_2D;

namespace
{

/// Rings that have to do with the points: random, jagged, on the lattice of the tree's squares, through
/// points of the cloud, crossing themselves, with repeated points and spikes, without area.
class CRingMaker
{
public:
    CRingMaker(const Ref::Store& store, std::uint64_t nSeed) : m_store(store), m_random(nSeed)
    {
        const Ref::Cube& cube = store.tree.cube;
        m_dX = ToX(cube.x);
        m_dY = ToY(cube.y);
        m_dHalf = static_cast<double>(cube.edge) / 20000.0;
    }

    std::vector<PNT_2D> Make()
    {
        std::vector<PNT_2D> ring;
        switch (m_random.Int(0, 6))
        {
        case 0:
            ring = MakeStar(static_cast<int>(m_random.Int(3, 12)));
            break;
        case 1:
            ring = MakeStar(static_cast<int>(m_random.Int(50, 300)));
            break;
        case 2:
            ring = MakeOnSquares();
            break;
        case 3:
            ring = MakeThroughPnts();
            break;
        case 4:
            for (int i = 0; i < 7; ++i)
                ring.push_back(Anywhere());
            break;
        case 5:
            ring = MakeBox();
            break;
        default:
            ring = {Anywhere(), Anywhere()};
            break;
        }
        return Spoil(ring);
    }

private:
    double ToX(std::int64_t n) const
    {
        return static_cast<double>(n) / 10000.0 + static_cast<double>(m_store.org[0]);
    }
    double ToY(std::int64_t n) const
    {
        return static_cast<double>(n) / 10000.0 + static_cast<double>(m_store.org[1]);
    }

    PNT_2D Anywhere()
    {
        return {m_dX + (m_random.Unit() - 0.5) * 3.0 * m_dHalf,
                m_dY + (m_random.Unit() - 0.5) * 3.0 * m_dHalf};
    }

    std::vector<PNT_2D> MakeStar(int nNum)
    {
        const PNT_2D centre = Anywhere();
        const double dJag = m_random.Unit();
        const double dSize = m_dHalf * m_random.Unit() * 1.5;
        std::vector<PNT_2D> ring;
        for (int i = 0; i < nNum; ++i)
        {
            const double dAngle = 6.283185307179586 * i / nNum;
            const double dRadius = dSize * (1.0 - dJag * m_random.Unit());
            ring.emplace_back(centre.x + dRadius * std::cos(dAngle), centre.y + dRadius * std::sin(dAngle));
        }
        return ring;
    }

    /// Corners at the corners and centres of squares of the tree.
    std::vector<PNT_2D> MakeOnSquares()
    {
        std::vector<PNT_2D> ring;
        for (std::int64_t i = m_random.Int(3, 6); i > 0; --i)
        {
            Ref::Cube cube = m_store.tree.cube;
            for (std::int64_t nLevel = m_random.Int(0, 5); nLevel > 0; --nLevel)
                cube = Ref::ChildCube(cube, static_cast<int>(m_random.Int(0, 7)));
            ring.emplace_back(ToX(cube.x + m_random.Int(-1, 1) * (cube.edge / 2)),
                              ToY(cube.y + m_random.Int(-1, 1) * (cube.edge / 2)));
        }
        return ring;
    }

    std::vector<PNT_2D> MakeThroughPnts()
    {
        std::vector<PNT_2D> ring;
        for (std::int64_t i = m_random.Int(3, 8); i > 0 && !m_store.pnts.empty(); --i)
        {
            const Ref::Pnt& pnt = m_random.Pick(m_store.pnts);
            ring.emplace_back(ToX(pnt.x), ToY(pnt.y));
        }
        return ring;
    }

    std::vector<PNT_2D> MakeBox()
    {
        const PNT_2D a = Anywhere();
        const PNT_2D b = Anywhere();
        return {a, PNT_2D(a.x, b.y), b, PNT_2D(b.x, a.y)};
    }

    /// Makes it closed, turned round, with a repeated point, a spike, or a coordinate that is no number.
    std::vector<PNT_2D> Spoil(std::vector<PNT_2D> ring)
    {
        if (ring.empty())
            return ring;
        if (m_random.Chance(3))
            std::reverse(ring.begin(), ring.end());
        if (m_random.Chance(4))
            ring.push_back(ring.front());
        if (m_random.Chance(6))
            ring.insert(ring.begin() + 1, ring.front());
        if (m_random.Chance(8))
            ring.insert(ring.begin() + 1, {Anywhere(), ring.front()});
        if (m_random.Chance(60))
            ring[0].x = std::nan("");
        return ring;
    }

    const Ref::Store& m_store;
    CRandom m_random;
    double m_dX;
    double m_dY;
    double m_dHalf;
};

template <class T>
class Query2D_prop : public ::testing::Test
{
public:
    static CTestStore<T> MakeStore(const CldRecipe& recipe, CRandom& random)
    {
        static const std::vector<float> vecOrg{0.0F, 12.34F, -500.5F, 500000.125F};
        CTestStore<T> store(MakePnts(recipe),
                            {random.Pick(vecOrg), random.Pick(vecOrg), random.Pick(vecOrg)});
        store.ComputeTree();
        static const std::vector<int> vecOneIn{0, 0, 2, 20};
        store.Mark(random, random.Pick(vecOneIn), random.Pick(vecOneIn));
        return store;
    }
};

TYPED_TEST_SUITE(Query2D_prop, BothPntTypes);

TYPED_TEST(Query2D_prop, Contours_SameAsModel)
{
    using Suite = Query2D_prop<TypeParam>;
    CheckProp(1500,
              [](const CldRecipe& recipe)
              {
                  CRandom random(recipe.seed + 7);
                  CTestStore<TypeParam> store = Suite::MakeStore(recipe, random);
                  const std::uint64_t nSeed = random.Next();
                  CRingMaker maker(store.GetRef(), nSeed);
                  const std::vector<PNT_2D> outer = maker.Make();
                  std::vector<std::vector<PNT_2D>> holes;
                  for (std::int64_t i = random.Int(0, 2); i > 0; --i)
                      holes.push_back(maker.Make());

                  CRecListener rec;
                  Ref::CQuery2D ref(store.GetRef());
                  const bool bIntCnt = random.Chance(3);
                  if (bIntCnt)
                  {
                      CQuery2D<TypeParam>(*store, &rec).FindPnts2D_IntCnt(outer);
                      ref.IntCnt(outer);
                  }
                  else
                  {
                      CQuery2D<TypeParam>(*store, &rec).FindPnts2D_Cnts(outer, holes);
                      ref.Cnts(outer, holes);
                  }
                  if (rec.GetIndices() != ref.GetIndices())
                      RC_LOG() << "ring seed " << nSeed << (bIntCnt ? " IntCnt" : " Cnts") << ", holes "
                               << holes.size() << ", corners " << outer.size() << ": " << rec.GetNumPnts()
                               << " delivered, " << ref.GetIndices().size() << " wanted\n";
                  RC_ASSERT(rec.GetIndices() == ref.GetIndices());
              });
}

TYPED_TEST(Query2D_prop, FindPnts2D_NearLine_EndsSameAsModel)
{
    using Suite = Query2D_prop<TypeParam>;
    CheckProp(
        300,
        [](const CldRecipe& recipe)
        {
            CRandom random(recipe.seed + 9);
            CTestStore<TypeParam> store = Suite::MakeStore(recipe, random);
            if (store.GetRef().pnts.empty())
                return;
            const Ref::Pnt& pnt = random.Pick(store.GetRef().pnts);
            // Half a unit inwards, so that truncation gives the point's own offset.
            const auto toCoord = [](std::int32_t n, float org)
            { return (n + (n < 0 ? -0.5 : 0.5)) / 10000.0 + static_cast<double>(org); };
            const PNT_2D place(toCoord(pnt.x, store->m_fOrgX), toCoord(pnt.y, store->m_fOrgY));
            CRecListener rec;
            CQuery2D<TypeParam>(*store, &rec).FindPnts2D_NearLine(place, PNT_2D(1e7, 1e7), 0.0, true, false);
            const int nFound = Ref::CQuery2D(store.GetRef())
                                   .FindExact(Ref::ToCompact(place.x, store->m_fOrgX),
                                              Ref::ToCompact(place.y, store->m_fOrgY));
            RC_ASSERT(rec.GetIndices() == (nFound == -1 ? std::vector<int>{} : std::vector<int>{nFound}));
        });
}

} // namespace
