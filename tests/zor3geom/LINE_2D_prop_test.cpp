#include <zor3geom/LINE_2D.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

using zor::geom::LINE_2D;

namespace
{

__extension__ typedef __int128 CWide;

struct CSegment
{
    std::int64_t ax;
    std::int64_t ay;
    std::int64_t bx;
    std::int64_t by;

    LINE_2D ToLine(double dScale) const
    {
        return {static_cast<double>(ax) * dScale, static_cast<double>(ay) * dScale,
                static_cast<double>(bx) * dScale, static_cast<double>(by) * dScale};
    }
};

int Side(const CSegment& s, std::int64_t x, std::int64_t y)
{
    const CWide n =
        static_cast<CWide>(s.bx - s.ax) * (y - s.ay) - static_cast<CWide>(s.by - s.ay) * (x - s.ax);
    return n > 0 ? 1 : n < 0 ? -1 : 0;
}

bool Holds(const CSegment& s, std::int64_t x, std::int64_t y)
{
    return Side(s, x, y) == 0 && std::min(s.ax, s.bx) <= x && x <= std::max(s.ax, s.bx) &&
           std::min(s.ay, s.by) <= y && y <= std::max(s.ay, s.by);
}

/// Exact: a true crossing, or an end of one on the other.
bool Meet(const CSegment& s, const CSegment& t)
{
    if (Side(s, t.ax, t.ay) * Side(s, t.bx, t.by) < 0 && Side(t, s.ax, s.ay) * Side(t, s.bx, s.by) < 0)
        return true;
    return Holds(s, t.ax, t.ay) || Holds(s, t.bx, t.by) || Holds(t, s.ax, s.ay) || Holds(t, s.bx, s.by);
}

void Compare(const CSegment& s, const CSegment& t)
{
    const bool bMeet = Meet(s, t);
    // A power of two changes no answer: the differences stay exact.
    for (const double dScale : {1.0, 0.0009765625, 1048576.0})
    {
        const LINE_2D a = s.ToLine(dScale);
        const LINE_2D b = t.ToLine(dScale);
        const LINE_2D aBack(a.x2, a.y2, a.x1, a.y1);
        ASSERT_EQ(a.intersect(b), bMeet) << s.ax << ' ' << s.ay << ' ' << s.bx << ' ' << s.by << " | " << t.ax
                                         << ' ' << t.ay << ' ' << t.bx << ' ' << t.by;
        ASSERT_EQ(b.intersect(a), bMeet);
        ASSERT_EQ(aBack.intersect(b), bMeet);
        ASSERT_EQ(b.intersect(aBack), bMeet);
    }
}

} // namespace

TEST(LINE_2D_Prop, intersect_SameAsExactOnSmallGrids)
{
    std::mt19937 random(1);
    for (const int nSide : {1, 2, 3, 5, 20})
    {
        std::uniform_int_distribution<int> draw(-nSide, nSide);
        for (int i = 0; i < 40000; ++i)
            ASSERT_NO_FATAL_FAILURE(Compare({draw(random), draw(random), draw(random), draw(random)},
                                            {draw(random), draw(random), draw(random), draw(random)}));
    }
}

// Long segments, and others that end a unit or so beside them.
TEST(LINE_2D_Prop, intersect_SameAsExactNearlyCollinear)
{
    std::mt19937_64 random(2);
    for (const std::int64_t nSpan : {1000LL, 2147483647LL, 1LL << 50})
    {
        std::uniform_int_distribution<std::int64_t> draw(-nSpan, nSpan);
        std::uniform_int_distribution<std::int64_t> drawOff(-1, 1);
        std::uniform_int_distribution<int> drawPart(0, 1000);
        for (int i = 0; i < 40000; ++i)
        {
            const CSegment s{draw(random), draw(random), draw(random), draw(random)};
            const auto beside = [&](std::int64_t a, std::int64_t b, int nPart)
            {
                return std::clamp(a + static_cast<std::int64_t>(static_cast<CWide>(b - a) * nPart / 1000) +
                                      drawOff(random),
                                  -nSpan, nSpan);
            };
            const int n1 = drawPart(random);
            const int n2 = drawPart(random);
            ASSERT_NO_FATAL_FAILURE(
                Compare(s, {beside(s.ax, s.bx, n1), beside(s.ay, s.by, n1), draw(random), draw(random)}));
            ASSERT_NO_FATAL_FAILURE(Compare(s, {beside(s.ax, s.bx, n1), beside(s.ay, s.by, n1),
                                                beside(s.ax, s.bx, n2), beside(s.ay, s.by, n2)}));
        }
    }
}
