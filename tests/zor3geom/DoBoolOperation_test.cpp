#include <zor3geom/DoBoolOperation.h>
#include <zor3geom/IsPntInsidePolygon.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

using namespace zor::geom;

namespace
{

using TRing = std::vector<PNT_2D>;
using TParts = std::vector<TMultiPartPolygon>;

TRing Square(double x, double y, double dEdge)
{
    return {{x, y}, {x, y + dEdge}, {x + dEdge, y + dEdge}, {x + dEdge, y}};
}

TParts Subtract(const TMultiPartPolygon& a, const TMultiPartPolygon& b)
{
    TParts parts(3); // what was in it is dropped
    DoBoolOperation(a, b, BOOL_OP_SUB, parts);
    return parts;
}

double CalcArea(const TRing& ring)
{
    double dTwice = 0.0;
    for (std::size_t i = 0, k = ring.size() - 1; i < ring.size(); k = i++)
        dTwice += ring[k].x * ring[i].y - ring[i].x * ring[k].y;
    return std::fabs(dTwice) / 2.0;
}

double CalcArea(const TParts& parts)
{
    double dArea = 0.0;
    for (const TMultiPartPolygon& part : parts)
    {
        dArea += CalcArea(part.outer);
        for (const TRing& hole : part.holes)
            dArea -= CalcArea(hole);
    }
    return dArea;
}

std::string ToText(const TMultiPartPolygon& polygon)
{
    std::string sText;
    const auto add = [&](const TRing& ring)
    {
        for (const PNT_2D& pnt : ring)
            sText += std::to_string(pnt.x) + ' ' + std::to_string(pnt.y) + ", ";
        sText += "| ";
    };
    add(polygon.outer);
    for (const TRing& hole : polygon.holes)
        add(hole);
    return sText;
}

} // namespace

TEST(DoBoolOperation, Sub_NothingCutAway)
{
    const TParts parts = Subtract({Square(0, 0, 4), {}}, {Square(10, 10, 4), {}});
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].outer.size(), 4U); // the closing point is not repeated
    EXPECT_TRUE(parts[0].holes.empty());
    EXPECT_EQ(CalcArea(parts), 16.0);
}

TEST(DoBoolOperation, Sub_NothingLeft)
{
    EXPECT_TRUE(Subtract({Square(0, 0, 4), {}}, {Square(-1, -1, 6), {}}).empty());
    EXPECT_TRUE(Subtract({Square(0, 0, 4), {}}, {Square(0, 0, 4), {}}).empty());
}

TEST(DoBoolOperation, Sub_PartsAndHoles)
{
    EXPECT_EQ(CalcArea(Subtract({Square(0, 0, 4), {}}, {Square(2, 2, 4), {}})), 12.0);
    const TParts hole = Subtract({Square(0, 0, 4), {}}, {Square(1, 1, 2), {}});
    ASSERT_EQ(hole.size(), 1U);
    ASSERT_EQ(hole[0].holes.size(), 1U);
    EXPECT_EQ(hole[0].holes[0].size(), 4U);
    EXPECT_EQ(CalcArea(hole), 12.0);
    EXPECT_EQ(Subtract({Square(0, 0, 4), {}}, {{{1, -1}, {2, -1}, {2, 5}, {1, 5}}, {}}).size(), 2U);
}

TEST(DoBoolOperation, Sub_HolesOfTheSecondStay)
{
    const TParts parts =
        Subtract({Square(0, 0, 10), {}}, {Square(0, 0, 10), {Square(2, 2, 3), Square(6, 6, 1)}});
    EXPECT_EQ(parts.size(), 2U);
    EXPECT_EQ(CalcArea(parts), 10.0);
    // Holes that touch each other, touch the outer ring, overlap, lie outside, cover everything.
    const TMultiPartPolygon whole{Square(0, 0, 10), {}};
    EXPECT_EQ(CalcArea(Subtract(whole, {Square(0, 0, 10), {Square(2, 2, 2), Square(4, 4, 2)}})), 8.0);
    EXPECT_EQ(CalcArea(Subtract(whole, {Square(0, 0, 10), {Square(0, 2, 2)}})), 4.0);
    EXPECT_EQ(CalcArea(Subtract(whole, {Square(0, 0, 10), {Square(2, 2, 2), Square(3, 3, 2)}})), 7.0);
    EXPECT_EQ(CalcArea(Subtract(whole, {Square(0, 0, 10), {Square(20, 2, 2)}})), 0.0);
    EXPECT_EQ(CalcArea(Subtract(whole, {Square(0, 0, 10), {Square(-1, -1, 12)}})), 100.0);
}

TEST(DoBoolOperation, Sub_EitherWayRoundClosedOrNot)
{
    TRing ring = {{1, 1}, {1, 3}, {3, 3}, {3, 1}};
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(CalcArea(Subtract({Square(0, 0, 4), {}}, {ring, {}})), 12.0);
        TRing closed = ring;
        closed.push_back(ring[0]);
        closed.insert(closed.begin() + 1, 2, ring[0]);
        EXPECT_EQ(CalcArea(Subtract({Square(0, 0, 4), {}}, {closed, {}})), 12.0);
        ring = TRing(ring.rbegin(), ring.rend());
    }
}

TEST(DoBoolOperation, Sub_SelfCrossingByOddEvenRule)
{
    // A bow tie, and a square run through with a smaller one inside.
    EXPECT_EQ(CalcArea(Subtract({Square(0, 0, 4), {}}, {{{0, 0}, {4, 4}, {4, 0}, {0, 4}}, {}})), 8.0);
    EXPECT_EQ(CalcArea(Subtract(
                  {Square(0, 0, 6), {}},
                  {{{0, 0}, {6, 0}, {6, 6}, {0, 6}, {0, 0}, {2, 2}, {4, 2}, {4, 4}, {2, 4}, {2, 2}}, {}})),
              4.0);
    // A spike changes nothing.
    EXPECT_EQ(
        CalcArea(Subtract({Square(0, 0, 4), {}}, {{{1, 1}, {3, 1}, {3, 3}, {9, 3}, {3, 3}, {1, 3}}, {}})),
        12.0);
}

TEST(DoBoolOperation, Sub_EmptyRegions)
{
    const TMultiPartPolygon square{Square(0, 0, 4), {}};
    const double dNan = std::numeric_limits<double>::quiet_NaN();
    const double dInf = std::numeric_limits<double>::infinity();
    for (const TRing& ring :
         {TRing(), TRing{{1, 1}}, TRing{{1, 1}, {2, 2}}, TRing{{1, 1}, {2, 2}, {3, 3}},
          TRing{{1, 1}, {1, 1}, {1, 1}}, TRing{{0, 0}, {4, 0}, {dNan, 4}}, TRing{{0, 0}, {4, 0}, {4, dInf}}})
    {
        EXPECT_EQ(CalcArea(Subtract(square, {ring, {}})), 16.0); // nothing to take away
        EXPECT_TRUE(Subtract({ring, {}}, square).empty());       // nothing to take from
        EXPECT_EQ(CalcArea(Subtract(square, {Square(0, 0, 4), {ring}})), 0.0);
    }
}

TEST(DoBoolOperation, OtherOperations_GiveNothing)
{
    for (const int n : {-1, 0, 1, 3, 99})
    {
        TParts parts(3);
        DoBoolOperation({Square(0, 0, 4), {}}, {Square(9, 9, 4), {}}, static_cast<BOOL_OP>(n), parts);
        EXPECT_TRUE(parts.empty());
    }
}

TEST(DoBoolOperation, Sub_HugeCoordinatesGiveSomeAnswer)
{
    const double dMax = std::numeric_limits<double>::max();
    for (const double d : {1e100, 1e160, 1e300, dMax, std::numeric_limits<double>::denorm_min()})
    {
        (void)Subtract({Square(0, 0, 4), {}}, {{{-d, -d}, {d, -d}, {d, d}, {-d, d}}, {}});
        (void)Subtract({{{-d, -d}, {d, -d}, {d, d}, {-d, d}}, {}},
                       {{{-d, d}, {d, -d}, {d, d}, {-d, -d}}, {}});
    }
}

// Random rings on a coarse lattice touch and cross in every way; places off the lattice tell the regions.
TEST(DoBoolOperation, Sub_SamePlacesAsTheRingsSay)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> draw(0, 6);
    std::uniform_int_distribution<int> drawSize(3, 9);
    std::uniform_real_distribution<double> drawPlace(-0.5, 6.5);
    const auto make = [&]
    {
        TRing ring;
        for (int i = drawSize(random); i > 0; --i)
            ring.emplace_back(draw(random), draw(random));
        return ring;
    };
    const auto holds = [](const TMultiPartPolygon& polygon, const PNT_2D& pnt)
    {
        bool bIn = IsPntInsidePolygon(polygon.outer, pnt);
        for (const TRing& hole : polygon.holes)
            bIn = bIn && !IsPntInsidePolygon(hole, pnt);
        return bIn;
    };
    for (int i = 0; i < 1500; ++i)
    {
        const TMultiPartPolygon a{make(), {}};
        TMultiPartPolygon b{make(), {}};
        for (int k = i % 3; k > 0; --k)
            b.holes.push_back(make());
        const TParts parts = Subtract(a, b);
        for (int k = 0; k < 30; ++k)
        {
            const PNT_2D pnt(drawPlace(random), drawPlace(random));
            bool bIn = false;
            for (const TMultiPartPolygon& part : parts)
                bIn = bIn || holds(part, pnt);
            ASSERT_EQ(bIn, holds(a, pnt) && !holds(b, pnt))
                << i << ": " << pnt.x << ' ' << pnt.y << " a " << ToText(a) << " b " << ToText(b);
        }
    }
}
