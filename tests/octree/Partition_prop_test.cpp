// The partition makes the exchanges of the model, record for record.

#include <octree/Partition.h>
#include <tests/support/CRandom.h>
#include <tests/support/CheckProp.h>
#include <tests/support/PntTrait.h>
#include <tests/support/RandomCld.h>

namespace
{

template <class T>
class Partition_prop : public ::testing::Test
{
public:
    template <int Axis>
    static void Run(const std::vector<Ref::Pnt>& pntsGiven, std::int32_t nPlane)
    {
        std::vector<Ref::Pnt> pnts;
        std::vector<T> recs;
        for (const Ref::Pnt& pnt : pntsGiven)
        {
            recs.push_back(PntTrait<T>::Make(pnt));
            pnts.push_back(PntTrait<T>::Read(recs.back()));
        }
        const std::int32_t nNumBelow =
            PartitionPnts<Axis>(recs.data(), static_cast<std::int32_t>(recs.size()), nPlane);
        RC_ASSERT(nNumBelow == Ref::Partition(pnts, 0, static_cast<int>(pnts.size()), Axis, nPlane));
        for (std::size_t i = 0; i < recs.size(); ++i)
            RC_ASSERT(PntTrait<T>::Read(recs[i]) == pnts[i]);
    }
};

TYPED_TEST_SUITE(Partition_prop, BothPntTypes, PntTypeName);

TYPED_TEST(Partition_prop, PartitionPnts_SameAsModel)
{
    using Suite = Partition_prop<TypeParam>;
    CheckProp(1500,
              [](const CldRecipe& recipe)
              {
                  const std::vector<Ref::Pnt> pnts = MakePnts(recipe);
                  CRandom random(recipe.seed);
                  const Ref::Pnt plane = pnts.empty() ? Ref::Pnt() : random.Pick(pnts);
                  Suite::template Run<0>(pnts, plane.x);
                  Suite::template Run<1>(pnts, plane.y);
                  Suite::template Run<2>(pnts, plane.z);
              });
}

// Sides given one by one: every pattern around the ends of the blocks that are looked at together.
TYPED_TEST(Partition_prop, PartitionPnts_AnyPatternOfSides)
{
    using Suite = Partition_prop<TypeParam>;
    CheckProp(1500,
              []
              {
                  const auto sides = *rc::gen::container<std::vector<bool>>(
                      *rc::gen::inRange<std::size_t>(0, 300), rc::gen::arbitrary<bool>());
                  const int nNumFirst = *rc::gen::inRange(0, 200); // so many below before the pattern begins
                  std::vector<Ref::Pnt> pnts(static_cast<std::size_t>(nNumFirst), Ref::Pnt{-1, -1, -1});
                  for (const bool bAbove : sides)
                      pnts.push_back(bAbove ? Ref::Pnt{0, 0, 0} : Ref::Pnt{-2, -2, -2});
                  for (std::size_t i = 0; i < pnts.size(); ++i)
                  {
                      pnts[i].r = static_cast<std::uint8_t>(i);
                      pnts[i].g = static_cast<std::uint8_t>(i >> 8U);
                  }
                  Suite::template Run<0>(pnts, 0);
                  Suite::template Run<1>(pnts, 0);
                  Suite::template Run<2>(pnts, 0);
              });
}

} // namespace
