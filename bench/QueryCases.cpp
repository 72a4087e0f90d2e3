#include <bench/QueryCases.h>

#include <cmath>

using zor::geom::PLANE_3D;
using zor::geom::RECT_2D;

namespace
{

/// Takes the checksum of what comes.
class CMmSumListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_sum.Add(pPnts[i].m_pnt.x, pPnts[i].m_pnt.y, pPnts[i].m_pnt.z);
    }

    CMmSum m_sum = MakeAbsoluteSum();
};

double BetweenMm(double d)
{
    return std::floor(d * 1000.0) / 1000.0 + 0.0005;
}

std::vector<PLANE_3D> MakePlanes(const RECT_2D& rect)
{
    // The analyzer loses the limits, which RECT_2D gives to its base.
    return {PLANE_3D(-1.0, 0.0, 0.0, rect.xmin),
            PLANE_3D(0.0, -1.0, 0.0, rect.ymin), // NOLINT(clang-analyzer-core.*)
            PLANE_3D(1.0, 0.0, 0.0, -rect.xmax), PLANE_3D(0.0, 1.0, 0.0, -rect.ymax)};
}

} // namespace

std::vector<PLANE_3D> MakeClipBox(std::int64_t nNum, double dShare)
{
    zor::geom::RECT_3D bdry;
    GetTerrainCld(nNum).GetBdry(bdry);
    const double dX = (bdry.xmin + bdry.xmax) / 2.0;
    const double dY = (bdry.ymin + bdry.ymax) / 2.0;
    const double dHalf = (bdry.xmax - bdry.xmin) / 2.0 * std::sqrt(dShare);
    std::vector<PLANE_3D> vecPlanes = MakePlanes(
        {BetweenMm(dX - dHalf), BetweenMm(dY - dHalf), BetweenMm(dX + dHalf), BetweenMm(dY + dHalf)});
    vecPlanes.emplace_back(0.0, 0.0, -1.0, bdry.zmin - 1.0);
    vecPlanes.emplace_back(0.0, 0.0, 1.0, -bdry.zmax - 1.0);
    return vecPlanes;
}

std::uint64_t ClipProduct(std::int64_t nNum, double dShare, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    const std::vector<PLANE_3D> vecPlanes = MakeClipBox(nNum, dShare);
    CSumListener delivered;
    timer.Measure([&] { cld.GetPnts_Clip(&delivered, vecPlanes, c_nQueryBatch); });
    CMmSumListener checked;
    cld.GetPnts_Clip(&checked, vecPlanes, c_nQueryBatch);
    return delivered.m_nNumPnts > 0 ? checked.m_sum.Get() : 0;
}

std::uint64_t RectsProduct(std::int64_t nNum, const std::vector<RECT_2D>& vecRects, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    CSumListener delivered;
    timer.Measure(
        [&]
        {
            for (const RECT_2D& rect : vecRects)
                cld.GetPnts_Clip(&delivered, MakePlanes(rect), c_nQueryBatch);
        });
    timer.DivideBy(static_cast<std::int64_t>(vecRects.size()));
    CMmSumListener checked;
    for (const RECT_2D& rect : vecRects)
        cld.GetPnts_Clip(&checked, MakePlanes(rect), c_nQueryBatch);
    return delivered.m_nNumPnts > 0 ? checked.m_sum.Get() : 0;
}

std::vector<RECT_2D> MakeSquares(std::int64_t nNum, double dEdge)
{
    const double dFree = CSampleTerrain(nNum).GetSide() - dEdge;
    const int nNumSquares = dEdge < 50.0 ? 400 : dEdge < 500.0 ? 25 : 1;
    const auto nGrid = static_cast<int>(std::sqrt(nNumSquares));
    std::vector<RECT_2D> vecRects;
    for (int i = 0; i < nNumSquares; ++i)
    {
        const int nRow = i / nGrid;
        const double x =
            BetweenMm(CSampleTerrain::c_dOrgX + dFree * (i % nGrid + 0.5) / static_cast<double>(nGrid));
        const double y =
            BetweenMm(CSampleTerrain::c_dOrgY + dFree * (nRow + 0.5) / static_cast<double>(nGrid));
        vecRects.push_back({x, y, x + dEdge, y + dEdge});
    }
    return vecRects;
}

namespace
{

std::uint64_t LodProduct(std::int64_t nNum, double dLod, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    CSumListener listener;
    timer.Measure([&] { cld.GetPnts_Lod(&listener, dLod, c_nQueryBatch); });
    return static_cast<std::uint64_t>(listener.m_nNumPnts);
}

} // namespace

void AddLodRows(std::int64_t nNum, const std::string& sPeer,
                const std::function<std::uint64_t(double, CCpuTimer&)>& peer)
{
    for (const double dLod : {5.0, 50.0})
        AddRow({"traversal", "level of detail at " + std::to_string(static_cast<int>(dLod)) + " m", nNum,
                sPeer, dLod < 50.0 ? CBenchBar(0.10, 0.05) : CBenchBar(0.02, 0.005),
                [=](CCpuTimer& timer) { return LodProduct(nNum, dLod, timer); },
                [=](CCpuTimer& timer) { return peer(dLod, timer); }, BenchResult_Counts});
}
