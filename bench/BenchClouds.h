#ifndef BENCH_BENCHCLOUDS_H
#define BENCH_BENCHCLOUDS_H

#include <bench/CMmSum.h>
#include <octree/CTruncPnt.h>
#include <sample/CSampleTerrain.h>
#include <zor4data/CPntCld.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Sets no colour and counts nothing: the cheapest colour listener a host can have.
class CNoColors final : public ICldColorListener
{
public:
    void GetColor(double, float&, float&, float&) override {}
    void SetZRange(double, double) override {}
};

/// Counts points and adds up their indices, or their coordinates, so that a delivery cannot be left out.
class CSumListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            m_nSum += static_cast<std::uint64_t>(pPnts[i].m_nIndex) + 1U;
            m_dSumZ += pPnts[i].m_pnt.z;
        }
        m_nNumPnts += nNumPnts;
    }

    std::int64_t m_nNumPnts = 0;
    std::uint64_t m_nSum = 0;
    double m_dSumZ = 0.0;
};

/// The synthetic terrain, seed 1, made once for each size.
const std::vector<CSamplePnt>& GetTerrain(std::int64_t nNumPnts);

/// The terrain as compact points relative to its first one, in scan order or shuffled (fixed seed).
std::vector<CTruncPnt> MakeCompact(std::int64_t nNumPnts, bool bShuffled);

/// The terrain as a cloud with its octree, made once for each size.
const CPntCld& GetTerrainCld(std::int64_t nNumPnts);

/// @return the checksum of all points of a cloud, its octree built or not, on top of `sum`, which says
///         about which origin the coordinates lie.
std::uint64_t SumMm(const CPntCld& cld, CMmSum sum);

/// The checksum of coordinates about the terrain's origin, or of relative ones, to begin with.
inline CMmSum MakeAbsoluteSum()
{
    return {CSampleTerrain::c_dOrgX, CSampleTerrain::c_dOrgY};
}
inline CMmSum MakeRelativeSum()
{
    return {};
}

/// @return the checksum of the terrain itself: what a cloud of all its points has.
std::uint64_t GetTerrainSum(std::int64_t nNumPnts);

/// @return the path of a temporary file of that name, written by `write` when it is asked for the first time.
/// Removed when the program ends.
std::string GetBenchFile(const std::string& sName, const std::function<bool(const std::string&)>& write);

/// The terrain as PLY (float x, y, z; uchar red, green, blue) in a temporary file, made once a size.
/// Removed when the program ends.
std::string GetTerrainPly(std::int64_t nNumPnts);

/// The same with a second element, behind the vertices, whose property is of no known type: a reader
/// delivers all vertices and then fails.
std::string GetUnfinishedPly(std::int64_t nNumPnts);

#endif
