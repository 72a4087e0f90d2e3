// Questions to a cloud: what is delivered is what the model delivers.

#include <fuzz/calls/CCalls.h>
#include <tests/companions/PickModel.h>
#include <zor4data/CRootCube.h>
#include <zor4data/FindIndices.h>
#include <zor4data/FindLodRuns.h>
#include <zor4data/PickPnt.h>

#include <algorithm>

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

namespace
{

std::vector<Ref::CPlane> ToModel(const std::vector<PLANE_3D>& vecPlanes)
{
    std::vector<Ref::CPlane> planes;
    for (const PLANE_3D& plane : vecPlanes)
        planes.push_back({plane.a, plane.b, plane.c, plane.d});
    return planes;
}

} // namespace

void CCalls::CallWalks()
{
    const CPntCld& cld = PickPair().cld;
    const CPair& pair =
        *std::find_if(m_vecPairs.begin(), m_vecPairs.end(), [&](const CPair& p) { return &p.cld == &cld; });
    const Ref::CStore store = Look(pair);
    const int nKind = m_input.Below(4);
    const bool bIndices = m_input.Bool();
    const double dLod = Spacing();
    const std::vector<PLANE_3D> vecPlanes = Planes();
    const int nBatch = Batch();
    Ref::CQuery query(store);
    m_host.Forget(bIndices ? nullptr : &store);
    const auto ask = [&](const auto& records, const auto& indices)
    {
        Ask(
            query.GetIndices(), [&] { bIndices ? indices() : records(); }, "a walk delivers its points");
    };
    switch (nKind)
    {
    case 0:
        query.All();
        return ask([&] { cld.GetPnts(&m_host, nBatch); }, [&] { FindIndices(cld, &m_host, nBatch); });
    case 1:
        query.Lod(dLod);
        return ask([&] { cld.GetPnts_Lod(&m_host, dLod, nBatch); },
                   [&] { FindIndices_Lod(cld, &m_host, dLod, nBatch); });
    case 2:
        query.Clip(ToModel(vecPlanes));
        return ask([&] { cld.GetPnts_Clip(&m_host, vecPlanes, nBatch); },
                   [&] { FindIndices_Clip(cld, &m_host, vecPlanes, nBatch); });
    default:
        query.LodClip(dLod, ToModel(vecPlanes));
        return ask([&] { cld.GetPnts_LodClip(&m_host, dLod, vecPlanes, nBatch); },
                   [&] { FindIndices_LodClip(cld, &m_host, dLod, vecPlanes, nBatch); });
    }
}

void CCalls::CallRect()
{
    CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const double xmin = Number();
    const double ymin = Number();
    const double xmax = Number();
    const double ymax = Number();
    const int nBatch = Batch();
    Ref::CQuery query(store);
    query.Clip(
        {{-1.0, 0.0, 0.0, xmin}, {0.0, -1.0, 0.0, ymin}, {1.0, 0.0, 0.0, -xmax}, {0.0, 1.0, 0.0, -ymax}});
    m_host.Forget(&store);
    Ask(
        query.GetIndices(), [&] { pair.cld.GetPnts2D(&m_host, xmin, ymin, xmax, ymax); }, "GetPnts2D");
    m_host.Forget(nullptr);
    Ask(
        query.GetIndices(), [&] { FindIndices2D(pair.cld, &m_host, xmin, ymin, xmax, ymax, nBatch); },
        "FindIndices2D");
    int nNumPnts = 0;
    if (Try([&] { nNumPnts = pair.cld.GetNumPnts2D(xmin, ymin, xmax, ymax); }) == enumEnd::Done)
        Check(nNumPnts == static_cast<int>(query.GetIndices().size()), "GetNumPnts2D");
}

void CCalls::CallPick()
{
    const CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const std::vector<PNT_3D> vecPlaces = ListPlaces(store);
    const PNT_3D from{Number(), Number(), Number()};
    const PNT_3D direction{Number(), Number(), Number()};
    const double dTan = m_input.Below(4) == 0 ? Number() : m_input.Below(256) * 0.01;
    const double dMax = m_input.Below(4) == 0 ? Number() : std::numeric_limits<double>::infinity();
    const std::vector<PLANE_3D> vecPlanes = Planes();
    const auto isLive = [](int) { return true; };
    int nPicked = -1;
    int nNearest = -1;
    int nNearest2D = -1;
    const enumEnd eEnd = Try(
        [&]
        {
            nPicked = PickPnt(pair.cld, from, direction, dTan, vecPlanes);
            nNearest = FindNearestPnt(pair.cld, from, dMax);
            nNearest2D = FindNearestPnt2D(pair.cld, PNT_2D(from.x, from.y), dMax);
        });
    if (eEnd != enumEnd::Done)
        return;
    const int nNumPnts = static_cast<int>(store.pnts.size());
    for (const int n : {nPicked, nNearest, nNearest2D})
        Check(n >= -1 && n < nNumPnts, "what is picked is a point of the cloud");
    if (store.hasTree && !IsFresh(pair))
        return;
    Check(nPicked == PickModel::Pick(vecPlaces, isLive, from, direction, dTan, vecPlanes), "PickPnt");
    Check(nNearest == PickModel::FindNearest(vecPlaces, isLive, from, dMax, false), "FindNearestPnt");
    Check(nNearest2D == PickModel::FindNearest(vecPlaces, isLive, from, dMax, true), "FindNearestPnt2D");
}

// The cubes of a level together have each point of the level of detail once.
void CCalls::CallLodRuns()
{
    const CPair& pair = PickPair();
    const Ref::CStore store = Look(pair);
    const double dLod = Spacing();
    const int nLevel = m_input.Below(3);
    const int nEnd = 1 << nLevel;
    CLodRuns runs;
    const int nAnyLevel = m_input.Get<std::int8_t>();
    const int nAnyPlace = m_input.Get<std::int16_t>();
    Try([&] { FindLodRuns(pair.cld, dLod, nAnyLevel, nAnyPlace, 0, 0, runs); });
    std::vector<int> vecFound;
    for (int i = 0; i < nEnd * nEnd * nEnd; ++i)
    {
        const bool bFound =
            FindLodRuns(pair.cld, dLod, nLevel, i / (nEnd * nEnd), i / nEnd % nEnd, i % nEnd, runs);
        Check(bFound == store.hasTree, "runs where there is a tree");
        for (std::size_t n = 0; bFound && n < runs.vecRuns.size(); ++n)
            for (int k = 0; k < runs.vecRuns[n].nCount; ++k)
                vecFound.push_back(runs.vecRuns[n].nFirst + k);
    }
    const int nNumPnts = static_cast<int>(store.pnts.size());
    for (const int n : vecFound)
        Check(n >= 0 && n < nNumPnts, "runs hold points of the cloud");
    if (!IsFresh(pair))
        return;
    Ref::CQuery query(store);
    query.Lod(dLod);
    std::vector<int> vecExpected = query.GetIndices();
    std::sort(vecExpected.begin(), vecExpected.end());
    std::sort(vecFound.begin(), vecFound.end());
    Check(vecFound == vecExpected, "the cubes of a level have each point once");
}

// Arrays outlive whatever becomes of their cloud.
void CCalls::CallArrays()
{
    const CPair& pair = PickPair();
    unsigned nSum = 0;
    for (std::int64_t i = 0; i < std::int64_t{m_kept.nNumPnts} * m_kept.nStride; ++i)
        nSum += m_kept.pPnts[i];
    for (int i = 0; i < m_kept.nNumPnts / 8; ++i)
        nSum += m_kept.pSelBits[i] + m_kept.pDelBits[i];
    Check(nSum < 0xFFFFFFFFU, "arrays can be read");
    Try([&] { m_kept = GetPntArrays(pair.cld); });
    CRootCube root{1, 2, 3, m_input.Get<std::int32_t>(), 0.0F, 0.0F, 0.0F};
    CLevelCube cube{};
    const int nLevel = m_input.Get<std::int8_t>();
    const int nPlace = m_input.Get<std::int32_t>();
    const bool bThere = nLevel >= 0 && nLevel <= 31 && nPlace >= 0 && nPlace < std::int64_t{1} << nLevel;
    Check(GetLevelCube(root, nLevel, nPlace, 0, nPlace, cube) == bThere, "GetLevelCube's result");
}
