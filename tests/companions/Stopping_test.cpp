// A host stops an operation with an exception out of one of its listeners: whatever operation, slot and call
// it is, the cloud is byte for byte as it was, and nothing is left behind.

#include <tests/companions/CRecipeCld.h>
#include <tests/support/CCldState.h>
#include <tests/support/CStopper.h>
#include <zor4data/FindPntsInPolygons.h>

#include <cmath>
#include <functional>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;

constexpr int c_nSide = 30; // coordinate units

/// An operation, and the slots that it calls.
struct COperation
{
    std::string sName;
    std::vector<enumSlot> vecSlots;
    std::function<void(CPntCld&, CStopHost&)> run;
};

std::vector<PNT_2D> MakeRing(double dRadius)
{
    std::vector<PNT_2D> ring;
    for (int i = 0; i < 12; ++i)
        ring.emplace_back(c_nSide / 2.0 + dRadius * std::cos(i * 0.5),
                          c_nSide / 2.0 + dRadius * std::sin(i * 0.5));
    return ring;
}

std::vector<PNT_2D> MakeSquare(double dMin, double dMax)
{
    return {{dMin, dMin}, {dMax, dMin}, {dMax, dMax}, {dMin, dMax}};
}

const std::vector<enumSlot> c_vecDelivery{Slot_SetZRange, Slot_GetColor, Slot_OnPnts};

std::vector<COperation> MakeWalks()
{
    const std::vector<PLANE_3D> planes{PLANE_3D(1.0, 0.5, 0.0, -25.0), PLANE_3D(0.0, 0.0, 1.0, -4.0)};
    return {
        {"GetPnts one by one", c_vecDelivery, [](CPntCld& cld, CStopHost& host) { cld.GetPnts(&host); }},
        {"GetPnts", c_vecDelivery, [](CPntCld& cld, CStopHost& host) { cld.GetPnts(&host, 7); }},
        {"GetPnts_Lod", c_vecDelivery, [](CPntCld& cld, CStopHost& host) { cld.GetPnts_Lod(&host, 2.0, 7); }},
        {"GetPnts_Lod of all", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host) { cld.GetPnts_Lod(&host, 0.0); }},
        {"GetPnts_Clip", c_vecDelivery,
         [planes](CPntCld& cld, CStopHost& host) { cld.GetPnts_Clip(&host, planes, 7); }},
        {"GetPnts_LodClip", c_vecDelivery,
         [planes](CPntCld& cld, CStopHost& host) { cld.GetPnts_LodClip(&host, 2.0, planes, 7); }},
    };
}

std::vector<COperation> MakePlanQueries()
{
    return {
        {"GetPnts2D", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host) { cld.GetPnts2D(&host, 5.0, 10.0, 15.0, 25.0); }},
        {"GetNumPnts2D",
         {Slot_SetZRange, Slot_GetColor},
         [](CPntCld& cld, CStopHost&) { cld.GetNumPnts2D(5.0, 10.0, 15.0, 25.0); }},
        {"FindPnts2D_NearLine", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host)
         { cld.FindPnts2D_NearLine(&host, PNT_2D(2.0, 2.0), PNT_2D(25.0, 20.0), 2.0, true, true); }},
        {"FindPnts2D_IntCnt", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host) { cld.FindPnts2D_IntCnt(&host, MakeRing(10.0)); }},
        {"FindPnts2D_Cnts", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host) { cld.FindPnts2D_Cnts(&host, MakeRing(12.0), {}); }},
        {"FindPnts2D_Cnts with a hole", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host)
         { cld.FindPnts2D_Cnts(&host, MakeSquare(-1.0, c_nSide + 1.0), {MakeSquare(2.0, 4.0)}); }},
        {"FindPntsInPolygons inside", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host) {
             FindPntsInPolygons(cld, &host, {{MakeRing(12.0), {MakeRing(4.0)}}}, false, 7);
         }},
        {"FindPntsInPolygons outside", c_vecDelivery,
         [](CPntCld& cld, CStopHost& host) {
             FindPntsInPolygons(cld, &host, {{MakeRing(12.0), {MakeRing(4.0)}}}, true, 7);
         }},
    };
}

/// CalcCnt, and Morph, which keeps the cloud as it is until its listeners have been called for the last time.
std::vector<COperation> MakeAnalyses()
{
    return {{"CalcCnt",
             {Slot_SetPos, Slot_SetZRange, Slot_GetColor, Slot_OnPnts},
             [](CPntCld& cld, CStopHost& host) { cld.CalcCnt(&host, &host, 6.0); }},
            {"Morph", {Slot_OnProgress, Slot_SetZRange, Slot_GetColor}, [](CPntCld& cld, CStopHost& host) {
                 cld.Morph(&host);
             }}};
}

template <class T>
class Stopping : public ::testing::Test
{
public:
    static constexpr int c_nNumPnts = 250;

    /// A cloud with an octree, of which some points are selected.
    void Fill(CPntCld& cld)
    {
        CRandom random(11);
        cld.OnReadType(CPntTrait<T>::c_eType);
        cld.Init(c_nNumPnts);
        cld.AddPnt(2.0, 2.0, 0.0, 1, 2, 3);
        cld.AddPnt(25.0, 20.0, 0.0, 1, 2, 3);
        for (int i = 2; i < c_nNumPnts; ++i)
            cld.AddPnt(random.Unit() * c_nSide, random.Unit() * c_nSide, random.Unit() * 5.0, 1, 2, 3);
        cld.ComputeTree();
        for (int i = 0; i < c_nNumPnts; i += 7)
            cld.SelPnt(i, false);
    }

    /// What a host does with a cloud after it has stopped something.
    void Use(CPntCld& cld)
    {
        const int nNumPnts = cld.GetNumPnts();
        CRecListener rec;
        cld.GetPnts_Clip(&rec, {}, 100);
        EXPECT_EQ(rec.GetNumPnts(), nNumPnts);
        cld.DelSelPnts();
        EXPECT_LT(cld.GetNumPnts(), nNumPnts);
        cld.Clear();
        EXPECT_EQ(cld.GetNumPnts(), 0);
        Fill(cld);
        EXPECT_EQ(cld.GetNumPnts(), nNumPnts);
    }

    void StopEach(const COperation& operation)
    {
        {
            CPntCld cld(&m_host);
            Fill(cld);
            operation.run(cld, m_host); // other libraries make some things once and keep them
        }
        for (const enumSlot eSlot : operation.vecSlots)
        {
            const auto attempt = [&](const auto& run)
            {
                CPntCld cld(&m_host);
                Fill(cld);
                const CCldState before(cld);
                if (run([&] { operation.run(cld, m_host); }))
                    return;
                EXPECT_TRUE(CCldState(cld) == before);
                Use(cld);
            };
            EXPECT_GT(StopEverywhere(m_host, eSlot, 1, attempt), 0) << "slot " << eSlot;
        }
    }

    void StopAll(const std::vector<COperation>& vecOperations)
    {
        for (const COperation& operation : vecOperations)
        {
            SCOPED_TRACE(operation.sName);
            StopEach(operation);
        }
    }

    CStopHost m_host;
};
TYPED_TEST_SUITE(Stopping, TBothPntTypes, CPntTypeName);

TYPED_TEST(Stopping, Walks_LeaveTheCloudAsItWas)
{
    this->StopAll(MakeWalks());
}

TYPED_TEST(Stopping, PlanQueries_LeaveTheCloudAsItWas)
{
    this->StopAll(MakePlanQueries());
}

TYPED_TEST(Stopping, Analyses_LeaveTheCloudAsItWas)
{
    this->StopAll(MakeAnalyses());
}

// An exception may pass through a copy: the points are shared, and stay.
TYPED_TEST(Stopping, ACopy_LeavesTheOtherAsItWas)
{
    CPntCld cld(&this->m_host);
    this->Fill(cld);
    const CCldState before(cld);
    {
        const CPntCld copy(cld);
        this->m_host.SetStop(Slot_OnPnts, 3);
        EXPECT_THROW(copy.GetPnts_Lod(&this->m_host, 2.0, 7), CStop);
    }
    EXPECT_TRUE(CCldState(cld) == before);
}

} // namespace
