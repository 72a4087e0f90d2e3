// The partition makes the exchanges of the model, record for record.

#include <octree/Partition.h>
#include <tests/support/CPntTrait.h>
#include <tests/support/CRandom.h>
#include <tests/support/CheckProp.h>
#include <tests/support/RandomCld.h>

namespace
{

template <class T>
class Partition_prop : public ::testing::Test
{
public:
    template <int Axis>
    static void Run(const std::vector<Ref::CPnt>& pntsGiven, std::int32_t nPlane)
    {
        std::vector<Ref::CPnt> pnts;
        std::vector<T> recs;
        for (const Ref::CPnt& pnt : pntsGiven)
        {
            recs.push_back(CPntTrait<T>::Make(pnt));
            pnts.push_back(CPntTrait<T>::Read(recs.back()));
        }
        const std::int32_t nNumBelow =
            PartitionPnts<Axis>(recs.data(), static_cast<std::int32_t>(recs.size()), nPlane);
        RC_ASSERT(nNumBelow == Ref::Partition(pnts, 0, static_cast<int>(pnts.size()), Axis, nPlane));
        for (std::size_t i = 0; i < recs.size(); ++i)
            RC_ASSERT(CPntTrait<T>::Read(recs[i]) == pnts[i]);
    }
};

TYPED_TEST_SUITE(Partition_prop, TBothPntTypes, CPntTypeName);

TYPED_TEST(Partition_prop, PartitionPnts_SameAsModel)
{
    using TSuite = Partition_prop<TypeParam>;
    CheckProp(1500,
              [](const CCldRecipe& recipe)
              {
                  const std::vector<Ref::CPnt> pnts = MakePnts(recipe);
                  CRandom random(recipe.seed);
                  const Ref::CPnt plane = pnts.empty() ? Ref::CPnt() : random.Pick(pnts);
                  TSuite::template Run<0>(pnts, plane.x);
                  TSuite::template Run<1>(pnts, plane.y);
                  TSuite::template Run<2>(pnts, plane.z);
              });
}

// Sides given one by one: every pattern around the ends of the blocks that are looked at together.
TYPED_TEST(Partition_prop, PartitionPnts_AnyPatternOfSides)
{
    using TSuite = Partition_prop<TypeParam>;
    CheckProp(1500,
              []
              {
                  const auto sides = *rc::gen::container<std::vector<bool>>(
                      *rc::gen::inRange<std::size_t>(0, 300), rc::gen::arbitrary<bool>());
                  const int nNumFirst = *rc::gen::inRange(0, 200); // so many below before the pattern begins
                  std::vector<Ref::CPnt> pnts(static_cast<std::size_t>(nNumFirst), Ref::CPnt{-1, -1, -1});
                  for (const bool bAbove : sides)
                      pnts.push_back(bAbove ? Ref::CPnt{0, 0, 0} : Ref::CPnt{-2, -2, -2});
                  for (std::size_t i = 0; i < pnts.size(); ++i)
                  {
                      pnts[i].r = static_cast<std::uint8_t>(i);
                      pnts[i].g = static_cast<std::uint8_t>(i >> 8U);
                  }
                  TSuite::template Run<0>(pnts, 0);
                  TSuite::template Run<1>(pnts, 0);
                  TSuite::template Run<2>(pnts, 0);
              });
}

} // namespace
