#include <host/serve/MakeTile.h>

#include <formats/Compact.h>
#include <host/query/CEachPnt.h>
#include <host/serve/CAttribute.h>
#include <host/serve/CCloudVersion.h>
#include <host/serve/CTileWriter.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace zorcld
{

namespace
{

using zor::geom::PLANE_3D;

/// Takes those of the delivered points that belong to the cube, by their own offsets.
class CTileListener final : public IPntCldListener
{
public:
    CTileListener(const CCloudVersion& version, const CLevelCube& cube, const CTileRun& run,
                  const CAttribute* pAttribute, CTileWriter& writer)
        : m_arrays(version.GetArrays()), m_cube(cube), m_run(run), m_pAttribute(pAttribute), m_writer(writer)
    {
    }

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
            Add(pPnts[i].m_nIndex);
    }

    /// Were all points of the cube found in its run of the array?
    bool IsInOrder() const { return m_bInOrder; }

private:
    void Add(std::int32_t nIndex)
    {
        const unsigned char* const pRecord =
            m_arrays.pPnts + static_cast<std::size_t>(nIndex) * static_cast<std::size_t>(m_arrays.nStride);
        std::int32_t anOffsets[3];
        std::memcpy(anOffsets, pRecord, sizeof(anOffsets));
        if (!IsInCube(m_cube, anOffsets[0], anOffsets[1], anOffsets[2]))
            return;
        m_bInOrder = m_bInOrder && m_run.Holds(nIndex);
        m_writer.Add(anOffsets[0], anOffsets[1], anOffsets[2], FindColor(nIndex, pRecord));
    }

    CRgbBytes FindColor(std::int32_t nIndex, const unsigned char* pRecord) const
    {
        if (m_pAttribute != nullptr)
            return m_pAttribute->palette[m_pAttribute->vecShades[static_cast<std::size_t>(nIndex)]];
        constexpr std::size_t c_nColorAt = 12;
        if (!m_arrays.bColor)
            return {255, 255, 255};
        return {pRecord[c_nColorAt], pRecord[c_nColorAt + 1], pRecord[c_nColorAt + 2]};
    }

    const CPntArrays& m_arrays;
    const CLevelCube& m_cube;
    const CTileRun& m_run;
    const CAttribute* m_pAttribute;
    CTileWriter& m_writer;
    bool m_bInOrder = true;
};

/// The planes around a cube, half a unit beyond its limits: so no point of it is lost by rounding, and no
/// nominal cube within the limits by touching a plane. Outermost cubes have no planes on their outer sides.
std::vector<PLANE_3D> MakePlanes(const CRootCube& root, const CLevelCube& cube)
{
    constexpr std::int64_t c_nMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t c_nMax = std::numeric_limits<std::int32_t>::max();
    std::vector<PLANE_3D> vecPlanes;
    const auto add = [&](std::int64_t nMin, std::int64_t nEnd, float fOrg, double a, double b, double c)
    {
        const auto coord = [fOrg](double d) { return d / c_dCompactScale + static_cast<double>(fOrg); };
        if (nMin > c_nMin)
            vecPlanes.emplace_back(-a, -b, -c, coord(static_cast<double>(nMin) - 0.5));
        if (nEnd <= c_nMax)
            vecPlanes.emplace_back(a, b, c, -coord(static_cast<double>(nEnd) + 0.5));
    };
    add(cube.nMinX, cube.nEndX, root.fOrgX, 1.0, 0.0, 0.0);
    add(cube.nMinY, cube.nEndY, root.fOrgY, 0.0, 1.0, 0.0);
    add(cube.nMinZ, cube.nEndZ, root.fOrgZ, 0.0, 0.0, 1.0);
    return vecPlanes;
}

/// Asks for the points of the cube, those along its faces on the other side with them.
void RunTileQuery(const CCloudVersion& version, int nLevel, const CLevelCube& cube, IPntCldListener& listener)
{
    const CPntCld& cloud = version.GetCloud();
    const std::vector<PLANE_3D> vecPlanes = MakePlanes(version.GetRoot(), cube);
    if (vecPlanes.empty()) // of the whole cloud the other query is quicker
        cloud.GetPnts_Lod(&listener, version.CalcLod(nLevel), c_nBatch);
    else
        cloud.GetPnts_LodClip(&listener, version.CalcLod(nLevel), vecPlanes, c_nBatch);
}

/// As `MakeTile`, with the steps spread over an edge.
/// @return the edge that the points need.
std::int64_t WriteTile(const CCloudVersion& version, const CTileAddress& address, const CLevelCube& cube,
                       std::int64_t nEdge, const CAttribute* pAttribute, std::string& sBytes)
{
    const CTileRun run = FindTileRun(version.GetArrays(), version.GetRoot(), address);
    CTileWriter writer(cube, nEdge);
    CTileListener listener(version, cube, run, pAttribute, writer);
    if (!version.IsWhole() || run.GetNumPnts() > 0)
        RunTileQuery(version, address.nLevel, cube, listener);
    const std::int64_t nNeeded = writer.CalcNeededEdge();
    const bool bKnown = version.IsWhole() && listener.IsInOrder();
    const bool bMore = bKnown ? static_cast<std::int64_t>(writer.GetNumPnts()) < run.GetNumPnts()
                              : address.nLevel < version.GetNumLevels();
    sBytes = writer.Finish(version.GetRoot(), bMore);
    return nNeeded;
}

} // namespace

bool IsTile(const CCloudVersion& version, const CTileAddress& address)
{
    CLevelCube cube{};
    return address.nLevel <= version.GetNumLevels() &&
           GetLevelCube(version.GetRoot(), address.nLevel, address.nI, address.nJ, address.nK, cube);
}

std::string MakeTile(const CCloudVersion& version, const CTileAddress& address, const CAttribute* pAttribute)
{
    CLevelCube cube{};
    GetLevelCube(version.GetRoot(), address.nLevel, address.nI, address.nJ, address.nK, cube);
    std::string sBytes;
    const std::int64_t nNeeded = WriteTile(version, address, cube, cube.nEdge, pAttribute, sBytes);
    // Truncation puts points a few units beside their nominal cube; those of a cloud wider than its octree's
    // cubes, which end with int32, may lie far outside.
    if (nNeeded > cube.nEdge + cube.nEdge / 128 + 4)
        WriteTile(version, address, cube, nNeeded, pAttribute, sBytes);
    return sBytes;
}

} // namespace zorcld
