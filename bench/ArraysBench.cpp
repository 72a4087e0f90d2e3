// A vertex buffer of floats from the arrays themselves, beside one copied together from batches.

#include <bench/BenchClouds.h>
#include <bench/BenchTable.h>
#include <bench/QueryCases.h>
#include <zor4data/CPntArrays.h>

#include <cstring>

namespace
{

/// What a host draws: offsets from the terrain's corner.
struct CVertex
{
    float x;
    float y;
    float z;
};

std::uint64_t SumVertices(const std::vector<CVertex>& vecVertices)
{
    CMmSum sum = MakeRelativeSum();
    for (const CVertex& vertex : vecVertices)
        sum.Add(static_cast<double>(vertex.x), static_cast<double>(vertex.y), static_cast<double>(vertex.z));
    return sum.Get();
}

/// @return an empty buffer whose memory has been written to before: to have it is no part of either way.
std::vector<CVertex> MakeRoom(std::int64_t nNum)
{
    std::vector<CVertex> vecVertices(static_cast<std::size_t>(nNum), CVertex{1.0F, 1.0F, 1.0F});
    vecVertices.clear();
    return vecVertices;
}

class CVertexListener final : public IPntCldListener
{
public:
    explicit CVertexListener(std::vector<CVertex>& vecVertices) : m_vecVertices(vecVertices) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            m_vecVertices.push_back({static_cast<float>(pPnts[i].m_pnt.x - CSampleTerrain::c_dOrgX),
                                     static_cast<float>(pPnts[i].m_pnt.y - CSampleTerrain::c_dOrgY),
                                     static_cast<float>(pPnts[i].m_pnt.z)});
    }

private:
    std::vector<CVertex>& m_vecVertices;
};

std::uint64_t CopyBatches(std::int64_t nNum, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    std::vector<CVertex> vecVertices = MakeRoom(nNum);
    CVertexListener listener(vecVertices);
    timer.Measure([&] { cld.GetPnts(&listener, c_nQueryBatch); });
    return SumVertices(vecVertices);
}

std::uint64_t ReadArrays(std::int64_t nNum, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    std::vector<CVertex> vecVertices = MakeRoom(nNum);
    timer.Measure(
        [&]
        {
            const CPntArrays arrays = GetPntArrays(cld);
            const double dX = static_cast<double>(arrays.fOrgX) - CSampleTerrain::c_dOrgX;
            const double dY = static_cast<double>(arrays.fOrgY) - CSampleTerrain::c_dOrgY;
            const double dZ = static_cast<double>(arrays.fOrgZ);
            const unsigned char* p = arrays.pPnts;
            for (int i = 0; i < arrays.nNumPnts; ++i, p += arrays.nStride)
            {
                if (((arrays.pDelBits[i / 8] >> (i % 8)) & 1) != 0)
                    continue;
                std::int32_t an[3];
                std::memcpy(an, p, sizeof an);
                vecVertices.push_back({static_cast<float>(an[0] / 10000.0 + dX),
                                       static_cast<float>(an[1] / 10000.0 + dY),
                                       static_cast<float>(an[2] / 10000.0 + dZ)});
            }
        });
    return SumVertices(vecVertices);
}

/// The records as they are: for a host that hands the array itself to its graphics card.
std::uint64_t TakeArrays(std::int64_t nNum, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    CPntArrays arrays;
    timer.Measure([&] { arrays = GetPntArrays(cld); });
    return static_cast<std::uint64_t>(arrays.nNumPnts);
}

std::uint64_t CountBatches(std::int64_t nNum, CCpuTimer& timer)
{
    CopyBatches(nNum, timer);
    return static_cast<std::uint64_t>(GetTerrainCld(nNum).GetNumPnts());
}

void AddArraysRows()
{
    const std::int64_t nNum = BenchSizes({10000000}).back();
    AddRow({"traversal", "vertex buffer from the arrays", nNum, "the same from batches of GetPnts", 0.0,
            [=](CCpuTimer& timer) { return ReadArrays(nNum, timer); },
            [=](CCpuTimer& timer) { return CopyBatches(nNum, timer); }});
    AddRow({"traversal", "the arrays, as they are", nNum, "vertex buffer from batches of GetPnts", 0.0,
            [=](CCpuTimer& timer) { return TakeArrays(nNum, timer); },
            [=](CCpuTimer& timer) { return CountBatches(nNum, timer); }});
}

const CBenchGroup c_group("traversal", AddArraysRows);

} // namespace
