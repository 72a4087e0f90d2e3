#ifndef SUPPORT_RANDOMCLD_H
#define SUPPORT_RANDOMCLD_H

#include <tests/support/CRefQuery.h>
#include <tests/support/RefTree.h>

#include <rapidcheck.h>

#include <cstdint>
#include <iosfwd>
#include <vector>

/// A random cloud by its recipe: shape, size and seed are enough to make it again.
struct CCldRecipe
{
    int shape = 0;
    int size = 0;
    std::uint64_t seed = 0;
    bool shuffled = false;
};

std::ostream& operator<<(std::ostream& os, const CCldRecipe& recipe);

constexpr int c_nNumCldShapes = 12;

/// The points of a recipe, compact units, each with a colour of its own as far as there are colours.
std::vector<Ref::CPnt> MakePnts(const CCldRecipe& recipe);

/// Planes of many kinds, coordinate units, that have to do with the points.
std::vector<Ref::CPlane> MakePlanes(const std::vector<Ref::CPnt>& pnts, const std::array<float, 3>& org,
                                    std::uint64_t seed);

/// A level of detail: mostly useful ones, and every value that is not.
double MakeLod(std::uint64_t seed);

namespace rc
{

template <>
struct Arbitrary<CCldRecipe>
{
    static Gen<CCldRecipe> arbitrary();
};

} // namespace rc

#endif
