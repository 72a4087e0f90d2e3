#include <tests/support/RandomCld.h>

#include <tests/support/CRandom.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

namespace
{

constexpr std::int32_t c_nMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t c_nMax = std::numeric_limits<std::int32_t>::max();

std::int32_t Saturate(std::int64_t n)
{
    return static_cast<std::int32_t>(
        std::clamp(n, static_cast<std::int64_t>(c_nMin), static_cast<std::int64_t>(c_nMax)));
}

/// One coordinate range a cloud: of any order of magnitude, anywhere in the span.
struct CRange
{
    std::int64_t nMin;
    std::int64_t nMax;

    explicit CRange(CRandom& random)
    {
        const std::int64_t nSize = random.Int(0, (std::int64_t{1} << random.Int(0, 32)) - 1);
        nMin = random.Chance(2) ? -nSize / 2 : random.Int(c_nMin, c_nMax);
        nMax = nMin + nSize;
    }

    std::int32_t Get(CRandom& random) const { return Saturate(random.Int(nMin, nMax)); }
};

std::int32_t Extreme(CRandom& random)
{
    static const std::vector<std::int32_t> vecValues{c_nMin, c_nMin + 1, -500,       -1,    0,
                                                     1,      499,        c_nMax - 1, c_nMax};
    return random.Pick(vecValues);
}

/// Half the distance to a corner with each step: as deep a tree as can be.
std::int32_t Nested(CRandom& random)
{
    const std::int64_t nSize = std::int64_t{1} << random.Int(0, 31);
    return Saturate(c_nMin + random.Int(0, nSize));
}

std::vector<Ref::CPnt> Boxes(CRandom& random, int nSize)
{
    const CRange x(random);
    const CRange y(random);
    const CRange z(random);
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < nSize; ++i)
        pnts.push_back({x.Get(random), y.Get(random), z.Get(random)});
    return pnts;
}

/// A few centres with points around them, each group of its own width.
std::vector<Ref::CPnt> Clusters(CRandom& random, int nSize)
{
    const CRange range(random);
    std::vector<Ref::CPnt> pnts;
    while (static_cast<int>(pnts.size()) < nSize)
    {
        const Ref::CPnt centre{range.Get(random), range.Get(random), range.Get(random)};
        const std::int64_t nWidth = std::int64_t{1} << random.Int(0, 14);
        for (std::int64_t n = random.Int(1, 1 + nSize / 2); n > 0 && static_cast<int>(pnts.size()) < nSize;
             --n)
            pnts.push_back({Saturate(centre.x + random.Int(-nWidth, nWidth)),
                            Saturate(centre.y + random.Int(-nWidth, nWidth)),
                            Saturate(centre.z + random.Int(-nWidth, nWidth))});
    }
    return pnts;
}

/// Rows of a scanner: neighbours in the array are neighbours on the ground.
std::vector<Ref::CPnt> ScanLines(CRandom& random, int nSize)
{
    const int nRow = std::max(1, static_cast<int>(std::sqrt(static_cast<double>(nSize))));
    const std::int64_t nStep = random.Int(1, 20000);
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < nSize; ++i)
    {
        const int nAlong = (i / nRow) % 2 == 0 ? i % nRow : nRow - 1 - i % nRow;
        pnts.push_back({Saturate(nAlong * nStep), Saturate(i / nRow * nStep),
                        Saturate(random.Int(0, 3) * random.Int(0, nStep))});
    }
    return pnts;
}

template <class Coord>
std::vector<Ref::CPnt> Each(int nSize, Coord coord)
{
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < nSize; ++i)
    {
        const std::int32_t x = coord();
        const std::int32_t y = coord();
        pnts.push_back({x, y, coord()});
    }
    return pnts;
}

/// A cube of edge about 1000 units, the limit below which large leaves are allowed.
std::vector<Ref::CPnt> Threshold(CRandom& random, int nSize)
{
    const std::int64_t nEdge = random.Int(990, 1010);
    std::vector<Ref::CPnt> pnts = Each(nSize, [&] { return Saturate(random.Int(0, nEdge)); });
    pnts.push_back({0, 0, 0});
    pnts.push_back({Saturate(nEdge), Saturate(nEdge / 2), Saturate(nEdge)});
    return pnts;
}

/// Points stacked at few plan positions.
std::vector<Ref::CPnt> Stacked(CRandom& random, int nSize)
{
    const std::int64_t nEdge = random.Int(0, 30);
    const std::int64_t nHeight = std::int64_t{1} << random.Int(0, 16);
    std::vector<Ref::CPnt> pnts;
    for (int i = 0; i < nSize; ++i)
        pnts.push_back({Saturate(random.Int(0, nEdge)), Saturate(random.Int(0, nEdge)),
                        Saturate(random.Int(0, nHeight))});
    return pnts;
}

std::vector<Ref::CPnt> MakeShape(CRandom& random, int nShape, int nSize)
{
    const std::int64_t nLattice = random.Int(1, 12);
    const std::int64_t nScale = std::int64_t{1} << random.Int(0, 27);
    const CRange range(random);
    switch (nShape)
    {
    case 0:
    case 1:
        return Boxes(random, nSize);
    case 2:
    case 3:
        return Clusters(random, nSize);
    case 4:
        return ScanLines(random, nSize);
    case 5:
        return Each(nSize, [&] { return Extreme(random); });
    case 6:
        return Each(nSize, [&] { return Nested(random); });
    case 7:
        return Each(nSize, [&] { return Saturate(random.Int(-nLattice, nLattice) * nScale); });
    case 8:
        return Threshold(random, nSize);
    case 9:
        return Stacked(random, nSize);
    case 10:
        return Each(nSize, [&] { return range.Get(random); });
    default: // few places, and far from them one more
        return Each(nSize, [&] { return random.Chance(50) ? Extreme(random) : Saturate(random.Int(0, 1)); });
    }
}

/// A normal: along an axis, diagonal, any, of any length, zero.
void SetNormal(Ref::CPlane& plane, CRandom& random)
{
    const std::int64_t nKind = random.Int(0, 9);
    const double dSign = random.Chance(2) ? 1.0 : -1.0;
    plane = {0.0, 0.0, 0.0, 0.0};
    if (nKind < 3)
        (nKind == 0 ? plane.a : nKind == 1 ? plane.b : plane.c) = dSign;
    else if (nKind == 3)
        plane = {dSign, random.Chance(2) ? 1.0 : -1.0, random.Chance(2) ? 1.0 : 0.0, 0.0};
    else if (nKind < 9)
        plane = {random.Unit() * 2.0 - 1.0, random.Unit() * 2.0 - 1.0, random.Unit() * 2.0 - 1.0, 0.0};
    if (random.Chance(5))
    {
        const double dLength = std::ldexp(1.0, static_cast<int>(random.Int(-40, 40)));
        plane = {plane.a * dLength, plane.b * dLength, plane.c * dLength, 0.0};
    }
}

void Spoil(Ref::CPlane& plane, CRandom& random)
{
    static const std::vector<double> vecValues{std::numeric_limits<double>::quiet_NaN(),
                                               std::numeric_limits<double>::infinity(),
                                               -std::numeric_limits<double>::infinity(),
                                               1e308,
                                               -1e308,
                                               1e300,
                                               5e-324,
                                               -0.0,
                                               0.0};
    for (double* const pCoef : {&plane.a, &plane.b, &plane.c, &plane.d})
        if (random.Chance(2))
            *pCoef = random.Pick(vecValues);
}

} // namespace

std::ostream& operator<<(std::ostream& os, const CCldRecipe& recipe)
{
    return os << "{shape " << recipe.shape << ", size " << recipe.size << ", seed " << recipe.seed
              << (recipe.shuffled ? ", shuffled}" : "}");
}

std::vector<Ref::CPnt> MakePnts(const CCldRecipe& recipe)
{
    CRandom random(recipe.seed);
    std::vector<Ref::CPnt> pnts = MakeShape(random, recipe.shape, recipe.size);
    for (std::size_t i = 0; recipe.shuffled && i + 1 < pnts.size(); ++i)
        std::swap(pnts[i], pnts[static_cast<std::size_t>(random.Int(
                               static_cast<std::int64_t>(i), static_cast<std::int64_t>(pnts.size()) - 1))]);
    for (std::size_t i = 0; i < pnts.size(); ++i)
    {
        pnts[i].r = static_cast<std::uint8_t>(i);
        pnts[i].g = static_cast<std::uint8_t>(i >> 8U);
        pnts[i].b = static_cast<std::uint8_t>(random.Int(0, 255));
    }
    return pnts;
}

std::vector<Ref::CPlane> MakePlanes(const std::vector<Ref::CPnt>& pnts, const std::array<float, 3>& org,
                                    std::uint64_t seed)
{
    CRandom random(seed);
    std::vector<Ref::CPlane> planes(
        static_cast<std::size_t>(random.Chance(20) ? random.Int(65, 150) : random.Int(0, 6)));
    for (Ref::CPlane& plane : planes)
    {
        SetNormal(plane, random);
        if (!pnts.empty())
        {
            const Ref::CPnt& pnt = random.Pick(pnts);
            plane.d = -(plane.a * (pnt.x / 10000.0 + static_cast<double>(org[0])) +
                        plane.b * (pnt.y / 10000.0 + static_cast<double>(org[1])) +
                        plane.c * (pnt.z / 10000.0 + static_cast<double>(org[2])));
        }
        if (random.Chance(4))
            plane.d += (random.Unit() - 0.5) * 4.0;
        if (random.Chance(15))
            Spoil(plane, random);
    }
    return planes;
}

double MakeLod(std::uint64_t seed)
{
    static const std::vector<double> vecOdd{0.0,
                                            -0.0,
                                            -1.0,
                                            5e-324,
                                            1e-300,
                                            1e300,
                                            1e308,
                                            std::numeric_limits<double>::infinity(),
                                            -std::numeric_limits<double>::infinity(),
                                            std::numeric_limits<double>::quiet_NaN()};
    CRandom random(seed);
    if (random.Chance(8))
        return random.Pick(vecOdd);
    const double dPower = std::ldexp(1.0, static_cast<int>(random.Int(-2, 34)));
    return (random.Chance(2) ? dPower : dPower * (1.0 + random.Unit())) / 10000.0;
}

rc::Gen<CCldRecipe> rc::Arbitrary<CCldRecipe>::arbitrary()
{
    const auto size = gen::weightedOneOf<int>(
        {{8, gen::inRange(0, 60)}, {3, gen::inRange(0, 1300)}, {1, gen::inRange(900, 6000)}});
    return gen::build<CCldRecipe>(gen::set(&CCldRecipe::shape, gen::inRange(0, c_nNumCldShapes)),
                                  gen::set(&CCldRecipe::size, size),
                                  gen::set(&CCldRecipe::seed, gen::inRange<std::uint64_t>(0, 1000000000)),
                                  gen::set(&CCldRecipe::shuffled, gen::arbitrary<bool>()));
}
