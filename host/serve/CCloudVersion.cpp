#include <host/serve/CCloudVersion.h>

#include <formats/Compact.h>
#include <zor4data/FindLodRuns.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zorcld
{

namespace
{

/// 2 to this power is how many spacings the edge of a tile has.
constexpr int c_nLogTileSteps = 7;

/// No inner node of an octree lies below depth 20: at this level each leaf gives all of its points.
constexpr int c_nMaxLevel = 15;

/// Counts the points that the level of detail of a spacing has in one of the cubes of level 2. That level
/// lies above all limits, and there are never the runs of the whole cloud at once.
class CPntCount
{
public:
    static constexpr int c_nNumCubes = 64;

    explicit CPntCount(const CPntCld& cloud) : m_cloud(cloud) {}

    std::int64_t Count(int nCube, double dLod)
    {
        constexpr int c_nLevel = 2;
        std::int64_t nNumPnts = 0;
        if (FindLodRuns(m_cloud, dLod, c_nLevel, nCube >> 4, (nCube >> 2) & 3, nCube & 3, m_runs))
            for (const CPntRun& run : m_runs.vecRuns)
                nNumPnts += run.nCount;
        return nNumPnts;
    }

private:
    const CPntCld& m_cloud;
    CLodRuns m_runs; // keeps its memory
};

} // namespace

CCloudVersion::CCloudVersion(const CPntCld& cloud, std::string sName, std::int64_t nVersion,
                             std::vector<std::int32_t> vecFileIndices)
    : m_cloud(cloud), m_sName(std::move(sName)), m_nVersion(nVersion), m_arrays(GetPntArrays(m_cloud)),
      m_vecFileIndices(std::move(vecFileIndices))
{
    if (m_arrays.nNumPnts > 0) // else the octree's origin is that of no point
        static_cast<void>(GetRootCube(m_cloud, m_root));
    m_nNumLevels = CalcNumLevels();
}

int CCloudVersion::FindFileIndex(int nFileIndex) const
{
    if (m_vecFileIndices.empty())
        return nFileIndex >= 0 && nFileIndex < m_arrays.nNumPnts ? nFileIndex : -1;
    const auto it = std::find(m_vecFileIndices.begin(), m_vecFileIndices.end(), nFileIndex);
    return it == m_vecFileIndices.end() ? -1 : static_cast<int>(it - m_vecFileIndices.begin());
}

double CCloudVersion::CalcLod(int nLevel) const
{
    return std::ldexp(m_root.nEdge / c_dCompactScale, -(nLevel + c_nLogTileSteps));
}

/// The first level that has what the whole octree holds. No point is looked at for that. Deeper levels have
/// what the ones above have: a cube that has all of its points is not counted again, and one that has not
/// ends its level.
int CCloudVersion::CalcNumLevels() const
{
    constexpr double c_dAll = 0.0; // no spacing
    CPntCount count(m_cloud);
    int nLevel = 0;
    for (int nCube = 0; nCube < CPntCount::c_nNumCubes; ++nCube)
    {
        const std::int64_t nNumAll = count.Count(nCube, c_dAll);
        while (nLevel < c_nMaxLevel && count.Count(nCube, CalcLod(nLevel)) < nNumAll)
            ++nLevel;
    }
    return nLevel;
}

} // namespace zorcld
