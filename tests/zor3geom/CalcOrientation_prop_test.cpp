#include <zor3geom/CalcOrientation.h>

#include <tests/support/WholeFromDouble.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

using zor::geom::CalcOrientation;
using zor::geom::PNT_2D;

namespace
{

__extension__ typedef __int128 CWide;

struct CPlace
{
    std::int64_t x;
    std::int64_t y;

    PNT_2D ToPnt(double dScale) const
    {
        return {static_cast<double>(x) * dScale, static_cast<double>(y) * dScale};
    }
};

int Exact(const CPlace& a, const CPlace& b, const CPlace& p)
{
    const CWide n = static_cast<CWide>(b.x - a.x) * (p.y - a.y) - static_cast<CWide>(b.y - a.y) * (p.x - a.x);
    return n > 0 ? 1 : n < 0 ? -1 : 0;
}

void Compare(const CPlace& a, const CPlace& b, const CPlace& p)
{
    const int nExact = Exact(a, b, p);
    for (const double dScale : {1.0, 0.0001220703125, 1048576.0}) // powers of two change no answer
    {
        const PNT_2D pntA = a.ToPnt(dScale);
        const PNT_2D pntB = b.ToPnt(dScale);
        const PNT_2D pntP = p.ToPnt(dScale);
        ASSERT_EQ(CalcOrientation(pntA, pntB, pntP), nExact)
            << a.x << ' ' << a.y << ' ' << b.x << ' ' << b.y << ' ' << p.x << ' ' << p.y;
        ASSERT_EQ(CalcOrientation(pntB, pntA, pntP), -nExact);
        ASSERT_EQ(CalcOrientation(pntB, pntP, pntA), nExact);
    }
}

} // namespace

TEST(CalcOrientation_Prop, SameAsExactOnSmallGrids)
{
    std::mt19937 random(1);
    for (const int nSide : {1, 2, 5, 30})
    {
        std::uniform_int_distribution<int> draw(-nSide, nSide);
        for (int i = 0; i < 20000; ++i)
            ASSERT_NO_FATAL_FAILURE(Compare({draw(random), draw(random)}, {draw(random), draw(random)},
                                            {draw(random), draw(random)}));
    }
}

// Points a unit or none beside a long line: rounded products cannot tell them apart.
TEST(CalcOrientation_Prop, SameAsExactNearlyCollinear)
{
    std::mt19937_64 random(2);
    for (const std::int64_t nSpan : {1000LL, 2147483647LL, 1LL << 52})
    {
        std::uniform_int_distribution<std::int64_t> draw(-nSpan, nSpan);
        std::uniform_int_distribution<std::int64_t> drawOff(-1, 1);
        std::uniform_int_distribution<int> drawPart(0, 1000);
        for (int i = 0; i < 20000; ++i)
        {
            const CPlace a{draw(random), draw(random)};
            const CPlace b{draw(random), draw(random)};
            const int nPart = drawPart(random);
            const auto between = [&](std::int64_t from, std::int64_t to) {
                return from + static_cast<std::int64_t>(static_cast<CWide>(to - from) * nPart / 1000) +
                       drawOff(random);
            };
            ASSERT_NO_FATAL_FAILURE(Compare(a, b, {between(a.x, b.x), between(a.y, b.y)}));
        }
    }
}

// Small and large coordinates together: the differences themselves are rounded.
TEST(CalcOrientation_Prop, SameAsExactWhereDifferencesRound)
{
    std::mt19937_64 random(3);
    std::uniform_int_distribution<std::int64_t> drawFar(-(1LL << 52), 1LL << 52);
    std::uniform_int_distribution<std::int64_t> drawNear(-3, 3);
    for (int i = 0; i < 40000; ++i)
    {
        // Far places are multiples of 64, so that their doubles hold no more than 53 bits beside the near
        // ones.
        const CPlace a{drawNear(random), drawNear(random)};
        const CPlace b{drawFar(random) * 64, drawFar(random) * 64};
        const CPlace p{-b.x + drawFar(random) % 8 * 64, -b.y + drawFar(random) % 8 * 64};
        ASSERT_EQ(CalcOrientation(a.ToPnt(1.0), b.ToPnt(1.0), p.ToPnt(1.0)), Exact(a, b, p))
            << a.x << ' ' << a.y << ' ' << b.x << ' ' << b.y << ' ' << p.x << ' ' << p.y;
    }
}

// From the smallest number to the largest: products vanish and overflow.
TEST(CalcOrientation_Prop, SameAsExactForAnyFiniteNumbers)
{
    using TLimits = std::numeric_limits<double>;
    std::mt19937_64 random(4);
    std::uniform_int_distribution<int> drawExponent(-1074, 1023);
    std::uniform_int_distribution<int> drawKind(0, 9);
    std::uniform_real_distribution<double> drawShare(-1.0, 1.0);
    const std::vector<double> vecOdd{0.0, TLimits::denorm_min(), TLimits::min(), TLimits::max(), 1.0, 0.0625};
    const auto draw = [&]
    {
        const int nKind = drawKind(random);
        const double d = nKind < 6 ? vecOdd[static_cast<std::size_t>(nKind)]
                                   : std::ldexp(drawShare(random), drawExponent(random));
        return drawShare(random) < 0.0 ? -d : d;
    };
    const auto compareProducts = [](const PNT_2D& a, const PNT_2D& b, const PNT_2D& p)
    {
        const TWhole left =
            (WholeFromDouble(b.x) - WholeFromDouble(a.x)) * (WholeFromDouble(p.y) - WholeFromDouble(a.y));
        const TWhole right =
            (WholeFromDouble(b.y) - WholeFromDouble(a.y)) * (WholeFromDouble(p.x) - WholeFromDouble(a.x));
        return left.compare(right);
    };
    int nNumOnLine = 0;
    for (int i = 0; i < 20000; ++i)
    {
        const PNT_2D a(draw(), draw());
        const PNT_2D b(draw(), draw());
        const PNT_2D p = i % 4 == 0 ? PNT_2D(a.x / 2 + b.x / 2, a.y / 2 + b.y / 2) : PNT_2D(draw(), draw());
        const int nCompared = compareProducts(a, b, p);
        const int nExact = nCompared > 0 ? 1 : nCompared < 0 ? -1 : 0;
        nNumOnLine += nExact == 0 ? 1 : 0;
        ASSERT_EQ(CalcOrientation(a, b, p), nExact)
            << a.x << ' ' << a.y << ' ' << b.x << ' ' << b.y << ' ' << p.x << ' ' << p.y;
    }
    EXPECT_GT(nNumOnLine, 300);
}
