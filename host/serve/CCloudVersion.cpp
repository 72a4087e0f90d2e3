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

/// How many points the level of detail of a spacing has. Counted by cubes of a level above all limits, so
/// that there are never the runs of the whole cloud at once.
std::int64_t CountPnts(const CPntCld& cloud, double dLod, CLodRuns& runs)
{
    constexpr int c_nLevel = 2;
    constexpr int c_nNumCubes = 1 << (3 * c_nLevel);
    std::int64_t nNumPnts = 0;
    for (int n = 0; n < c_nNumCubes; ++n)
        if (FindLodRuns(cloud, dLod, c_nLevel, n >> 4, (n >> 2) & 3, n & 3, runs))
            for (const CPntRun& run : runs.vecRuns)
                nNumPnts += run.nCount;
    return nNumPnts;
}

} // namespace

CCloudVersion::CCloudVersion(const CPntCld& cloud, std::string sName, std::int64_t nVersion,
                             std::vector<std::int32_t> vecFileIndices)
    : m_cloud(cloud), m_sName(std::move(sName)), m_nVersion(nVersion), m_arrays(GetPntArrays(m_cloud)),
      m_vecFileIndices(std::move(vecFileIndices))
{
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

/// The first level that has what the whole octree holds. No point is looked at for that.
int CCloudVersion::CalcNumLevels() const
{
    constexpr double c_dAll = 0.0; // no spacing
    CLodRuns runs;
    const std::int64_t nNumAll = CountPnts(m_cloud, c_dAll, runs);
    int nLevel = 0;
    while (nLevel < c_nMaxLevel && CountPnts(m_cloud, CalcLod(nLevel), runs) < nNumAll)
        ++nLevel;
    return nLevel;
}

} // namespace zorcld
