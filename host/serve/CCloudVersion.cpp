#include <host/serve/CCloudVersion.h>

#include <formats/Compact.h>
#include <zor4data/CCldCadPnt.h>
#include <zor4data/IPntCldListener.h>

#include <cmath>
#include <utility>

namespace zorcld
{

namespace
{

constexpr int c_nBatch = 4096;

/// 2 to this power is how many spacings the edge of a tile has.
constexpr int c_nLogTileSteps = 7;

/// No inner node of an octree lies below depth 20: at this level each leaf gives all of its points.
constexpr int c_nMaxLevel = 15;

class CPntCounter final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt*) override { m_nNumPnts += nNumPnts; }
    std::int64_t GetNumPnts() const { return m_nNumPnts; }

private:
    std::int64_t m_nNumPnts = 0;
};

} // namespace

CCloudVersion::CCloudVersion(const CPntCld& cloud, std::string sName, std::int64_t nVersion)
    : m_cloud(cloud), m_sName(std::move(sName)), m_nVersion(nVersion), m_arrays(GetPntArrays(m_cloud))
{
    static_cast<void>(GetRootCube(m_cloud, m_root));
    m_nNumLevels = CalcNumLevels();
}

double CCloudVersion::CalcLod(int nLevel) const
{
    return std::ldexp(m_root.nEdge / c_dCompactScale, -(nLevel + c_nLogTileSteps));
}

/// The first level that delivers what the whole octree holds. Each level costs as many points as it delivers,
/// so that all of them together cost little more than the last.
int CCloudVersion::CalcNumLevels()
{
    CPntCounter all;
    m_cloud.GetPnts_Clip(&all, {}, c_nBatch);
    m_bWhole = all.GetNumPnts() == m_arrays.nNumPnts && m_cloud.GetNumPnts() == m_arrays.nNumPnts;
    for (int nLevel = 0; nLevel < c_nMaxLevel; ++nLevel)
    {
        CPntCounter thinned;
        m_cloud.GetPnts_Lod(&thinned, CalcLod(nLevel), c_nBatch);
        if (thinned.GetNumPnts() >= all.GetNumPnts())
            return nLevel;
    }
    return c_nMaxLevel;
}

} // namespace zorcld
