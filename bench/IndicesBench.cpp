// Queries that deliver indices alone, beside the same queries with records.

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <bench/QueryCases.h>
#include <zor4data/FindIndices.h>
#include <zor4data/IPntIndexListener.h>

namespace
{

/// Gathers indices, as a host does that hands them on.
class CGather final : public IPntIndexListener
{
public:
    void OnIndices(int nNumPnts, const std::int32_t* pIndices) override
    {
        m_vecIndices.insert(m_vecIndices.end(), pIndices, pIndices + nNumPnts);
    }

    std::uint64_t GetSum() const
    {
        std::uint64_t nSum = 0;
        for (const std::int32_t nIndex : m_vecIndices)
            nSum += static_cast<std::uint64_t>(nIndex) + 1U;
        return nSum;
    }

private:
    std::vector<std::int32_t> m_vecIndices;
};

using TIndices = std::function<void(const CPntCld&, IPntIndexListener*)>;
using TRecords = std::function<void(const CPntCld&, IPntCldListener*)>;

void AddIndexRow(const std::string& sItem, std::int64_t nNum, const TIndices& indices,
                 const TRecords& records)
{
    AddRow({"traversal", "indices of " + sItem, nNum, "the same query with records", 2.0,
            [=](CCpuTimer& timer)
            {
                const CPntCld& cld = GetTerrainCld(nNum);
                CGather gather;
                timer.Measure([&] { indices(cld, &gather); });
                return gather.GetSum();
            },
            [=](CCpuTimer& timer)
            {
                const CPntCld& cld = GetTerrainCld(nNum);
                CSumListener listener;
                timer.Measure([&] { records(cld, &listener); });
                return listener.m_nSum;
            }});
}

void AddIndicesRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddIndexRow(
        "every point", nNum,
        [](const CPntCld& cld, IPntIndexListener* p) { FindIndices(cld, p, c_nQueryBatch); },
        [](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts(p, c_nQueryBatch); });
    for (const double dLod : {5.0, 50.0})
        AddIndexRow(
            "a level of detail at " + std::to_string(static_cast<int>(dLod)) + " m", nNum,
            [=](const CPntCld& cld, IPntIndexListener* p) { FindIndices_Lod(cld, p, dLod, c_nQueryBatch); },
            [=](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts_Lod(p, dLod, c_nQueryBatch); });
    const auto planes = MakeClipBox(nNum, 0.25);
    AddIndexRow(
        "a quarter behind 6 planes", nNum,
        [=](const CPntCld& cld, IPntIndexListener* p) { FindIndices_Clip(cld, p, planes, c_nQueryBatch); },
        [=](const CPntCld& cld, IPntCldListener* p) { cld.GetPnts_Clip(p, planes, c_nQueryBatch); });
}

const CBenchGroup c_group("traversal", AddIndicesRows);

} // namespace
