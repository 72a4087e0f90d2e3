// Points in polygons as a host asks for them.

#include <tests/support/CTestCld.h>
#include <zor4data/FindPntsInPolygons.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace
{

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::TMultiPartPolygon;

using TRing = std::vector<PNT_2D>;
using TPolygons = std::vector<TMultiPartPolygon>;

TRing MakeBox(double xmin, double ymin, double xmax, double ymax)
{
    return {{xmin, ymin}, {xmax, ymin}, {xmax, ymax}, {xmin, ymax}};
}

/// 20 × 20 points one unit apart, heights 0 to 38.
std::vector<PNT_3D> MakeGrid()
{
    std::vector<PNT_3D> vecPnts;
    for (int i = 0; i < 400; ++i)
        vecPnts.emplace_back(i % 20, i / 20, i % 20 + i / 20);
    return vecPnts;
}

template <class T>
class FindPntsInPolygons_case : public ::testing::Test
{
public:
    FindPntsInPolygons_case() : m_cld(MakeGrid()) {}

    std::vector<int> Find(const TPolygons& vecPolygons, bool bOutside = false)
    {
        CRecListener rec;
        FindPntsInPolygons(*m_cld, &rec, vecPolygons, bOutside, 16);
        return rec.GetSortedIndices();
    }

    template <class F>
    std::vector<int> Scan(F isWanted) const
    {
        return m_cld.Scan([&](const PNT_3D& pnt) { return isWanted(pnt.x, pnt.y); });
    }

    CTestCld<T> m_cld;
};
TYPED_TEST_SUITE(FindPntsInPolygons_case, TBothPntTypes, CPntTypeName);

bool IsIn(double d, double dMin, double dMax)
{
    return d >= dMin && d <= dMax;
}

} // namespace

TYPED_TEST(FindPntsInPolygons_case, Edges_OfHolesTooAreInside)
{
    const TPolygons vecPolygons{{MakeBox(2, 3, 15, 17), {MakeBox(5, 6, 9, 9)}}};
    const auto isInside = [](double x, double y)
    { return IsIn(x, 2, 15) && IsIn(y, 3, 17) && !(x > 5 && x < 9 && y > 6 && y < 9); };
    EXPECT_EQ(this->Find(vecPolygons), this->Scan(isInside));
    EXPECT_EQ(this->Find(vecPolygons, true), this->Scan([&](double x, double y) { return !isInside(x, y); }));
}

// Any edge: of a hole within another one, and outside the outer ring as well.
TYPED_TEST(FindPntsInPolygons_case, EdgesOfHoles_AreInsideWhereverTheyRun)
{
    const TPolygons vecPolygons{{MakeBox(2, 2, 12, 12), {MakeBox(4, 4, 10, 10), MakeBox(6, 6, 16, 8)}}};
    const auto isOnEdge = [](double x, double y, double xmin, double ymin, double xmax, double ymax) {
        return IsIn(x, xmin, xmax) && IsIn(y, ymin, ymax) &&
               (x == xmin || x == xmax || y == ymin || y == ymax);
    };
    const auto isInside = [&](double x, double y)
    {
        const bool bInHole = (x > 4 && x < 10 && y > 4 && y < 10) || (x > 6 && x < 16 && y > 6 && y < 8);
        return isOnEdge(x, y, 2, 2, 12, 12) || isOnEdge(x, y, 4, 4, 10, 10) || isOnEdge(x, y, 6, 6, 16, 8) ||
               (IsIn(x, 2, 12) && IsIn(y, 2, 12) && !bInHole);
    };
    EXPECT_EQ(this->Find(vecPolygons), this->Scan(isInside));
}

TYPED_TEST(FindPntsInPolygons_case, PntBesideAnEdge_IsOutside)
{
    const double dBefore5 = std::nextafter(5.0, 0.0);
    const double dBehind5 = std::nextafter(5.0, 9.0);
    EXPECT_EQ(this->Find({{MakeBox(1, 1, dBefore5, dBefore5), {}}}),
              this->Scan([](double x, double y) { return IsIn(x, 1, 4) && IsIn(y, 1, 4); }));
    EXPECT_EQ(this->Find({{MakeBox(dBehind5, dBehind5, 9, 9), {}}}),
              this->Scan([](double x, double y) { return IsIn(x, 6, 9) && IsIn(y, 6, 9); }));
}

TYPED_TEST(FindPntsInPolygons_case, OverlappingPolygons_EachPntOnce)
{
    const TPolygons vecPolygons{{MakeBox(1, 1, 10, 10), {MakeBox(2, 2, 9, 9)}},
                                {MakeBox(5, 5, 15, 15), {}},
                                {MakeBox(5, 5, 15, 15), {}}};
    const auto isInside = [](double x, double y)
    {
        const bool bInFirst = IsIn(x, 1, 10) && IsIn(y, 1, 10) && !(x > 2 && x < 9 && y > 2 && y < 9);
        return bInFirst || (IsIn(x, 5, 15) && IsIn(y, 5, 15));
    };
    EXPECT_EQ(this->Find(vecPolygons), this->Scan(isInside));
    EXPECT_EQ(this->Find(vecPolygons, true), this->Scan([&](double x, double y) { return !isInside(x, y); }));
}

TYPED_TEST(FindPntsInPolygons_case, RingThatCrossesItself_OddEven)
{
    // Twice round the same square, and once round a larger one: the middle is surrounded three times.
    TRing ring = MakeBox(1, 1, 18, 18);
    ring.emplace_back(1, 1);
    for (int i = 0; i < 2; ++i)
        for (const PNT_2D& pnt : MakeBox(5.5, 5.5, 12.5, 12.5))
            ring.push_back(pnt);
    ring.emplace_back(5.5, 5.5);
    EXPECT_EQ(this->Find({{ring, {}}}),
              this->Scan([](double x, double y) { return IsIn(x, 1, 18) && IsIn(y, 1, 18); }));
    const TRing bow = {{0, 0}, {10, 10}, {10, 0}, {0, 10}};
    EXPECT_EQ(this->Find({{bow, {}}}), this->Scan(
                                           [](double x, double y) {
                                               return (x <= 5 && y >= x && y <= 10 - x) ||
                                                      (x >= 5 && x <= 10 && y <= x && y >= 10 - x);
                                           }));
}

TYPED_TEST(FindPntsInPolygons_case, RingsGivenClosedOrTurnedRound_Same)
{
    TRing ring = {{1.5, 1.5}, {17.5, 2.5}, {5.5, 16.5}};
    const std::vector<int> vecWanted = this->Find({{ring, {}}});
    EXPECT_FALSE(vecWanted.empty());
    ring.push_back(ring.front());
    EXPECT_EQ(this->Find({{ring, {}}}), vecWanted);
    std::reverse(ring.begin(), ring.end());
    EXPECT_EQ(this->Find({{ring, {}}}), vecWanted);
}

TYPED_TEST(FindPntsInPolygons_case, RingsThatCannotBeUsed_CountAsNotThere)
{
    constexpr double c_dNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double c_dInf = std::numeric_limits<double>::infinity();
    const TRing good = MakeBox(2, 2, 8, 8);
    const std::vector<int> vecGood = this->Find({{good, {}}});
    for (const TRing& ring : {TRing{}, TRing{{3, 3}}, TRing{{3, 3}, {6, 6}},
                              TRing{{3, 3}, {6, 3}, {c_dNan, 6}}, TRing{{3, 3}, {6, 3}, {6, c_dInf}, {3, 6}}})
    {
        EXPECT_EQ(this->Find({{ring, {}}}), std::vector<int>());
        EXPECT_EQ(this->Find({{ring, {good}}}), std::vector<int>()) << "its holes are not there either";
        EXPECT_EQ(this->Find({{ring, {}}, {good, {}}}), vecGood);
        EXPECT_EQ(this->Find({{good, {ring}}}), vecGood);
    }
}

TYPED_TEST(FindPntsInPolygons_case, NoPolygons_EveryPntIsOutside)
{
    EXPECT_TRUE(this->Find({}).empty());
    EXPECT_EQ(this->Find({}, true).size(), 400U);
}

TYPED_TEST(FindPntsInPolygons_case, RingWithoutArea_HoldsWhatLiesOnIt)
{
    EXPECT_EQ(this->Find({{{{3, 3}, {7, 5}, {3, 3}}, {}}}).size(), 3U) << "(3, 3), (5, 4), (7, 5)";
    EXPECT_EQ(this->Find({{TRing(4, PNT_2D(6, 7)), {}}}).size(), 1U);
}

TYPED_TEST(FindPntsInPolygons_case, PolygonAroundTheCloud_EveryPntInside)
{
    EXPECT_EQ(this->Find({{MakeBox(-1e9, -1e9, 1e9, 1e9), {}}}).size(), 400U);
    EXPECT_TRUE(this->Find({{MakeBox(-1e9, -1e9, 1e9, 1e9), {}}}, true).empty());
    EXPECT_TRUE(this->Find({{MakeBox(30, 0, 40, 20), {}}}).empty());
}

TYPED_TEST(FindPntsInPolygons_case, DeletedPnts_AreLeftOut)
{
    const TPolygons vecPolygons{{MakeBox(2, 2, 8, 8), {}}};
    for (const int nIndex : this->Find(vecPolygons))
        if (nIndex % 2 == 0)
            this->m_cld->SelPnt(nIndex, false);
    this->m_cld->DelSelPnts();
    EXPECT_EQ(this->Find(vecPolygons),
              this->Scan([](double x, double y) { return IsIn(x, 2, 8) && IsIn(y, 2, 8); }));
    EXPECT_EQ(this->Find(vecPolygons).size() + this->Find(vecPolygons, true).size(),
              static_cast<std::size_t>(this->m_cld->GetNumPnts()));
}

TYPED_TEST(FindPntsInPolygons_case, Calls_SetZRangeThenFullBatches)
{
    CCallLog log;
    CRecColorListener color(&log);
    CPntCld cld(&color);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(400);
    for (const PNT_3D& pnt : MakeGrid())
        cld.AddPnt(pnt.x, pnt.y, pnt.z);
    cld.ComputeTree();
    CRecListener rec(&log);
    FindPntsInPolygons(cld, &rec, {{MakeBox(0, 0, 1, 1), {}}}, false, 3);
    EXPECT_EQ(log.GetText(), "ZcccP3cP1");
    ASSERT_EQ(color.GetRanges().size(), 1U);
    EXPECT_EQ(color.GetRanges().front(), std::make_pair(0.0, 38.0));
    for (const int nBatch : {0, -7})
    {
        CRecListener single;
        FindPntsInPolygons(cld, &single, {{MakeBox(0, 0, 1, 1), {}}}, false, nBatch);
        EXPECT_EQ(single.GetBatches(), (std::vector<int>{1, 1, 1, 1}));
    }
    FindPntsInPolygons(cld, nullptr, {}, true, 3); // nobody is told
}

TYPED_TEST(FindPntsInPolygons_case, Order_IsThatOfTheClippedWalk)
{
    CRecListener all;
    this->m_cld->GetPnts_Clip(&all, {});
    CRecListener rec;
    FindPntsInPolygons(*this->m_cld, &rec, {{MakeBox(-9, -9, 90, 90), {}}}, false, 50);
    EXPECT_EQ(rec.GetIndices(), all.GetIndices());
    CRecListener some;
    FindPntsInPolygons(*this->m_cld, &some, {{{{1.5, 1.5}, {17.5, 2.5}, {5.5, 16.5}}, {}}}, false, 50);
    EXPECT_EQ(some.GetIndices(), some.GetSortedIndices());
}

TYPED_TEST(FindPntsInPolygons_case, WithoutOctree_EveryPntIsLookedAt)
{
    CRecColorListener color;
    CPntCld cld(&color);
    cld.OnReadType(CPntTrait<TypeParam>::c_eType);
    cld.Init(400);
    for (const PNT_3D& pnt : MakeGrid())
        cld.AddPnt(pnt.x, pnt.y, pnt.z);
    CRecListener rec;
    FindPntsInPolygons(cld, &rec, {{MakeBox(0, 1, 2, 1), {}}, {MakeBox(5, 3, 6, 3.5), {}}}, false, 2);
    EXPECT_EQ(rec.GetIndices(), (std::vector<int>{20, 21, 22, 65, 66}));
    EXPECT_EQ(rec.GetBatches(), (std::vector<int>{2, 2, 1}));
}

TEST(FindPntsInPolygons_NoType, NoCallAtAll)
{
    CCallLog log;
    CRecColorListener color(&log);
    CRecListener rec(&log);
    const CPntCld none(&color);
    FindPntsInPolygons(none, &rec, {}, true, 1);
    EXPECT_TRUE(log.GetCalls().empty());
    CPntCld empty(&color);
    empty.OnReadType(PntCldType_Pnt);
    FindPntsInPolygons(empty, &rec, {}, true, 1);
    empty.Init(0);
    FindPntsInPolygons(empty, &rec, {}, true, 1);
    empty.ComputeTree();
    FindPntsInPolygons(empty, &rec, {}, true, 1);
    EXPECT_EQ(rec.GetNumPnts(), 0);
}
