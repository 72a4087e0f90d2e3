#include <bench/QueryCases.h>

#include <zor3geom/PNT_3D.h>

namespace
{

using zor::geom::PLANE_3D;
using zor::geom::PNT_3D;

/// A row in nanoseconds a delivered point.
template <class TQuery>
void AddPerPntRow(const std::string& sItem, std::int64_t nNum, double dBar, TQuery query)
{
    CSumListener first;
    query(&first);
    CBenchRow row{"traversal",
                  sItem + ", " + std::to_string(first.m_nNumPnts) + " delivered",
                  nNum,
                  "",
                  dBar,
                  [=](CCpuTimer& timer)
                  {
                      CSumListener listener;
                      timer.Measure([&] { query(&listener); });
                      return listener.m_nSum;
                  },
                  nullptr};
    row.dPerUnits = static_cast<double>(first.m_nNumPnts);
    AddRow(row);
}

/// Tests every point of an array of float64 against the planes, and hands over those behind all of them
/// as the product does: in batches.
class CBruteClip
{
public:
    explicit CBruteClip(const std::vector<PLANE_3D>& vecPlanes)
        : m_vecPlanes(vecPlanes), m_vecBatch(c_nQueryBatch)
    {
    }

    void Run(const std::vector<PNT_3D>& vecPnts)
    {
        for (const PNT_3D& pnt : vecPnts)
            if (IsInside(pnt))
            {
                m_vecBatch[m_nFilled] = pnt;
                if (++m_nFilled == m_vecBatch.size())
                    Flush();
            }
        Flush();
    }

    std::uint64_t m_nNumPnts = 0;
    double m_dSumZ = 0.0;
    CMmSum* m_pSum = nullptr; ///< takes the checksum of what comes, where given

private:
    bool IsInside(const PNT_3D& pnt) const
    {
        for (const PLANE_3D& plane : m_vecPlanes)
            if (plane.a * pnt.x + plane.b * pnt.y + plane.c * pnt.z + plane.d > 0.0)
                return false;
        return true;
    }

    void Flush()
    {
        for (std::size_t i = 0; i < m_nFilled; ++i)
            m_dSumZ += m_vecBatch[i].z;
        for (std::size_t i = 0; m_pSum != nullptr && i < m_nFilled; ++i)
            m_pSum->Add(m_vecBatch[i].x, m_vecBatch[i].y, m_vecBatch[i].z);
        m_nNumPnts += m_nFilled;
        m_nFilled = 0;
    }

    const std::vector<PLANE_3D>& m_vecPlanes;
    std::vector<PNT_3D> m_vecBatch;
    std::size_t m_nFilled = 0;
};

const std::vector<PNT_3D>& GetFloat64(std::int64_t nNum)
{
    static std::vector<PNT_3D> vecPnts;
    if (static_cast<std::int64_t>(vecPnts.size()) != nNum)
    {
        vecPnts.clear();
        for (const CSamplePnt& pnt : GetTerrain(nNum))
            vecPnts.emplace_back(pnt.x, pnt.y, pnt.z);
    }
    return vecPnts;
}

std::uint64_t ClipBrute(std::int64_t nNum, double dShare, CCpuTimer& timer)
{
    const std::vector<PNT_3D>& vecPnts = GetFloat64(nNum);
    const std::vector<PLANE_3D> vecPlanes = MakeClipBox(nNum, dShare);
    CBruteClip measured(vecPlanes);
    timer.Measure([&] { measured.Run(vecPnts); });
    CMmSum sum = MakeAbsoluteSum();
    CBruteClip checked(vecPlanes);
    checked.m_pSum = &sum;
    checked.Run(vecPnts);
    return measured.m_dSumZ > 0.0 ? sum.Get() : 1;
}

void AddClipRow(const std::string& sShare, double dShare, CBenchBar bar)
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRow({"traversal", "clip by 6 planes, " + sShare, nNum, "brute loop over float64", bar,
            [=](CCpuTimer& timer) { return ClipProduct(nNum, dShare, timer); },
            [=](CCpuTimer& timer) { return ClipBrute(nNum, dShare, timer); }});
}

void AddTraversalRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
    {
        AddPerPntRow("GetPnts", nNum, 10.0,
                     [=](CSumListener* pListener) { GetTerrainCld(nNum).GetPnts(pListener, c_nQueryBatch); });
        AddPerPntRow("GetPnts_Clip, a quarter", nNum, 10.0,
                     [=, vecPlanes = MakeClipBox(nNum, 0.25)](CSumListener* pListener)
                     { GetTerrainCld(nNum).GetPnts_Clip(pListener, vecPlanes, c_nQueryBatch); });
    }
    AddClipRow("a quarter", 0.25, {0.80, 0.55});
    AddClipRow("a hundredth", 0.01, {0.05, 0.02});
}

const CBenchGroup c_group("traversal", AddTraversalRows);

} // namespace
