// Questions in plan view, outlines, the ground, and the functions that need no cloud.

#include <fuzz/calls/CCalls.h>
#include <tests/analysis/outline/COutlineModel.h>
#include <tests/companions/CExactPolygons.h>
#include <tests/support/CRefQuery2D.h>
#include <zor0lang/DoubleDaString.h>
#include <zor0lang/LongDaStringNullZero.h>
#include <zor0lang/StringTrimBoth.h>
#include <zor3geom/CalcRectPlanes.h>
#include <zor3geom/DoBoolOperation.h>
#include <zor3geom/IsPntInsidePolygon.h>
#include <zor3geom/LINE_2D.h>
#include <zor4data/CalcCntWithin.h>
#include <zor4data/FindGround.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindPntsInPolygons.h>

#include <algorithm>

#if defined(__SANITIZE_ADDRESS__)
#define CALLS_HAS_LSAN
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CALLS_HAS_LSAN
#endif
#endif

#ifdef CALLS_HAS_LSAN
#include <sanitizer/lsan_interface.h>
#endif

// GEOS loses some of its own blocks when memory runs out within it.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libgeos\nleak:liblaszip\n";
}

using zor::geom::PNT_2D;
using zor::geom::PNT_3D;
using zor::geom::TMultiPartPolygon;

namespace
{

int FindEnd(const Ref::CStore& store, const PNT_2D& pnt)
{
    return store.tree.root == nullptr ? -1
                                      : Ref::CQuery2D(store).FindExact(Ref::ToCompact(pnt.x, store.org[0]),
                                                                       Ref::ToCompact(pnt.y, store.org[1]));
}

bool IsOnceEach(std::vector<int> vecIndices)
{
    std::sort(vecIndices.begin(), vecIndices.end());
    return std::adjacent_find(vecIndices.begin(), vecIndices.end()) == vecIndices.end();
}

} // namespace

void CCalls::CallNearLine()
{
    const CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const bool bStart = m_input.Bool();
    const bool bEnd = m_input.Bool();
    const double dist = Spacing();
    const int nBatch = Batch();
    PNT_2D p1{Number(), Number()};
    const PNT_2D p2{Number(), Number()};
    if (!store.pnts.empty() && m_input.Bool())
    {
        const Ref::CPnt& pnt = store.pnts[m_input.Get<std::uint16_t>() % store.pnts.size()];
        p1 = PNT_2D(pnt.x / 10000.0 + static_cast<double>(store.org[0]),
                    pnt.y / 10000.0 + static_cast<double>(store.org[1]));
    }
    CCallHost corridor;
    FindIndices2D_NearLine(pair.cld, &corridor, p1, p2, dist, false, false, 50);
    std::vector<int> vecExpected = corridor.GetIndices();
    Check(IsOnceEach(vecExpected), "the corridor delivers points once");
    if (const int n = FindEnd(store, p1); bStart && n != -1)
        vecExpected.insert(vecExpected.begin(), n);
    if (const int n = FindEnd(store, p2); bEnd && n != -1)
        vecExpected.push_back(n);
    m_host.Forget(&store);
    Ask(
        vecExpected, [&] { pair.cld.FindPnts2D_NearLine(&m_host, p1, p2, dist, bStart, bEnd); },
        "FindPnts2D_NearLine");
    m_host.Forget(nullptr);
    Ask(
        vecExpected, [&] { FindIndices2D_NearLine(pair.cld, &m_host, p1, p2, dist, bStart, bEnd, nBatch); },
        "FindIndices2D_NearLine");
}

// What contours hold is compared by other tests, with rings that leave rounding no say.
void CCalls::CallContours()
{
    const CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const bool bAny = m_input.Below(8) == 0;
    const std::vector<PNT_2D> outer = m_input.Ring(bAny, m_dStep);
    std::vector<std::vector<PNT_2D>> holes(static_cast<std::size_t>(m_input.Below(3)));
    for (std::vector<PNT_2D>& hole : holes)
        hole = m_input.Ring(bAny, m_dStep);
#ifdef CALLS_HAS_LSAN
    const __lsan::ScopedDisabler disabler; // GEOS
#endif
    m_host.Forget(&store);
    if (Try([&] { pair.cld.FindPnts2D_Cnts(&m_host, outer, holes); }) == enumEnd::Done)
        Check(IsOnceEach(m_host.GetIndices()), "FindPnts2D_Cnts delivers points once");
    m_host.Forget(&store);
    if (Try([&] { pair.cld.FindPnts2D_IntCnt(&m_host, outer); }) == enumEnd::Done)
        Check(IsOnceEach(m_host.GetIndices()), "FindPnts2D_IntCnt delivers points once");
    const double dDist = pair.cld.CalcMaxSearchDist();
    Check(dDist >= 1.0, "CalcMaxSearchDist is 1 at least");
}

void CCalls::CallPolygons()
{
    const CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const bool bAny = m_input.Below(8) == 0;
    const bool bOutside = m_input.Bool();
    const int nBatch = Batch();
    std::vector<TMultiPartPolygon> vecPolygons(static_cast<std::size_t>(m_input.Below(3)));
    for (TMultiPartPolygon& polygon : vecPolygons)
    {
        polygon.outer = m_input.Ring(bAny, m_dStep);
        if (m_input.Bool())
            polygon.holes.push_back(m_input.Ring(bAny, m_dStep));
    }
    m_host.Forget(&store);
    if (Try([&] { FindPntsInPolygons(pair.cld, &m_host, vecPolygons, bOutside, nBatch); }) == enumEnd::Done)
    {
        std::vector<int> vecFound = m_host.GetIndices();
        Check(IsOnceEach(vecFound), "FindPntsInPolygons delivers points once");
        const CExactPolygons exact(vecPolygons);
        std::vector<int> vecExpected;
        const std::vector<PNT_3D> vecPlaces = ListPlaces(store);
        for (std::size_t i = 0; i < vecPlaces.size() && !bAny; ++i)
            if (exact.IsInside(PNT_2D(vecPlaces[i].x, vecPlaces[i].y)) != bOutside)
                vecExpected.push_back(static_cast<int>(i));
        std::sort(vecFound.begin(), vecFound.end());
        const bool bComparable = !bAny && (!store.hasTree || IsFresh(pair));
        Check(!bComparable || vecFound == vecExpected, "FindPntsInPolygons");
    }
    m_host.Forget(nullptr);
    Try([&] { FindIndicesInPolygons(pair.cld, &m_host, vecPolygons, bOutside, nBatch); });
}

void CCalls::CallOutline()
{
    const CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const double d = Spacing();
    const std::int64_t nMaxLooks = m_input.Get<std::uint16_t>();
    IDlgProgress* const pProgress = m_input.Bool() ? &m_host : nullptr;
    m_host.Forget(&store);
    bool bClosed = false;
    const bool bComparable = store.tree.root != nullptr && IsFresh(pair) && store.pnts.size() <= 150;
    if (Try([&] { bClosed = pair.cld.CalcCnt(pProgress, &m_host, d); }) == enumEnd::Done)
    {
        Check(bClosed != m_host.GetIndices().empty(), "a closed outline is delivered, nothing else");
        if (bComparable)
        {
            const COutlineModel model(store, d);
            Check(bClosed == model.IsClosed(), "whether the outline is closed");
            Check(!bClosed || m_host.GetIndices() == model.GetPath(), "the outline");
        }
    }
    m_host.Forget(&store);
    enumOutline eOutline = Outline_None;
    const enumEnd eEnd = Try([&] { eOutline = CalcCntWithin(pair.cld, pProgress, &m_host, d, nMaxLooks); });
    Check(eEnd != enumEnd::Done || (eOutline == Outline_Closed) != m_host.GetIndices().empty(),
          "CalcCntWithin delivers what is closed");
}

void CCalls::CallGround()
{
    const CPair& pair = PickPair();
    const CGroundScale scale{m_input.Bool() ? 1.0 : 0.3048, m_input.Bool() ? 1.0 : 0.3048};
    std::vector<int> vecGround;
    std::vector<int> vecScaled{-7};
    bool bScaled = false;
    if (Try([&] { vecGround = FindGround(pair.cld, &m_host); }) != enumEnd::Done)
        return;
    m_host.Forget(nullptr);
    if (Try([&] { bScaled = FindGround_Scaled(pair.cld, scale, &m_host, vecScaled); }) != enumEnd::Done)
        return;
    const int nNumPnts = pair.cld.GetNumPnts();
    Check(std::is_sorted(vecGround.begin(), vecGround.end()) && IsOnceEach(vecGround), "ground ascends");
    Check(vecGround.empty() || (vecGround.front() >= 0 && vecGround.back() < nNumPnts), "ground is points");
    Check(bScaled || vecScaled == std::vector<int>{-7}, "nothing is written without a result");
    Check(!bScaled || !scale.IsOne() || vecScaled == vecGround, "a scale of one changes nothing");
    Check(!bScaled || (std::is_sorted(vecScaled.begin(), vecScaled.end()) && IsOnceEach(vecScaled)),
          "scaled ground ascends");
}

void CCalls::CallGeometry()
{
    const bool bAny = m_input.Below(4) == 0;
    const TMultiPartPolygon a{m_input.Ring(bAny, 1.0), {m_input.Ring(bAny, 1.0)}};
    const TMultiPartPolygon b{m_input.Ring(bAny, 1.0), {}};
    std::vector<TMultiPartPolygon> vecParts;
    {
#ifdef CALLS_HAS_LSAN
        const __lsan::ScopedDisabler disabler; // GEOS
#endif
        Try([&] { zor::geom::DoBoolOperation(a, b, zor::geom::BOOL_OP_SUB, vecParts); });
    }
    const PNT_2D pnt{Number(), Number()};
    Check(a.outer.size() >= 3 || !zor::geom::IsPntInsidePolygon(a.outer, pnt), "two corners hold nothing");
    const zor::geom::LINE_2D line{Number(), Number(), Number(), Number()};
    const zor::geom::LINE_2D other{Number(), Number(), Number(), Number()};
    const bool bMeet = line.intersect(other);
    Check(bMeet == other.intersect(line), "two lines meet each other");
    std::vector<zor::geom::PLANE_3D> vecPlanes;
    const PNT_3D corner{Number(), Number(), 0.0};
    zor::geom::CalcRectPlanes(corner, PNT_3D(pnt.x, pnt.y, 0.0), corner, PNT_3D(), vecPlanes);
    std::string sText = m_input.Text(40);
    zor::LongDaStringNullZero(sText);
    zor::DoubleDaString(sText);
    zor::StringTrimBoth(sText);
}
