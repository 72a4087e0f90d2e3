#include <host/serve/MakeTile.h>

#include <host/serve/CByteBudget.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CTilePnts.h>
#include <zor4data/FindLodRuns.h>

#include <algorithm>
#include <utility>

namespace zorcld
{

namespace
{

constexpr const char* c_pType = "application/octet-stream";
constexpr std::int64_t c_nMaxAtOnce = 262144; // points; of ordinary clouds few tiles have more
constexpr std::int64_t c_nPiece = 16384;

/// A cube, and what is known of it before its points are looked at.
struct CTile
{
    CLevelCube cube{};
    std::int64_t nNumPnts = 0;
    bool bMore = false;
};

/// Truncation puts points a few units beside their nominal cube. Those of a cloud wider than its octree's
/// cubes, which end with int32, may lie far outside.
bool IsTooNarrow(std::int64_t nEdge, std::int64_t nNeeded)
{
    return nNeeded > nEdge + nEdge / 128 + 4;
}

/// @return false where the steps must be spread over more than `nEdge`, which then is what is needed.
bool WriteWhole(const CCloudVersion& version, const CTile& tile, CTilePnts& pnts, std::int64_t& nEdge,
                std::string& sBytes)
{
    CTileWriter writer(tile.cube, nEdge);
    sBytes.reserve(CTileWriter::c_nHeaderSize +
                   static_cast<std::size_t>(tile.nNumPnts) * CTileWriter::c_nPntSize);
    sBytes.assign(CTileWriter::c_nHeaderSize, '\0');
    pnts.Rewind();
    pnts.WriteNext(tile.nNumPnts, writer, sBytes);
    writer.PutHeader(sBytes.data(), version.GetRoot(), static_cast<std::uint32_t>(tile.nNumPnts), tile.bMore);
    if (!IsTooNarrow(nEdge, writer.CalcNeededEdge()))
        return true;
    nEdge = writer.CalcNeededEdge();
    return false;
}

/// A tile that is made while it is sent. Its points are gone through twice, since the header comes first.
class CTilePieces final : public IPieces
{
public:
    CTilePieces(TVersion pVersion, const CTile& tile, CTilePnts&& pnts)
        : m_pVersion(std::move(pVersion)), m_tile(tile), m_pnts(std::move(pnts)),
          m_writer(tile.cube, tile.cube.nEdge)
    {
        std::string sBytes;
        while (m_pnts.WriteNext(c_nPiece, m_writer, sBytes))
            sBytes.clear();
        m_pnts.Rewind();
        if (IsTooNarrow(tile.cube.nEdge, m_writer.CalcNeededEdge()))
            m_writer.SetEdge(m_writer.CalcNeededEdge());
    }

    std::int64_t GetSize() const override
    {
        return static_cast<std::int64_t>(CTileWriter::c_nHeaderSize) +
               m_tile.nNumPnts * static_cast<std::int64_t>(CTileWriter::c_nPntSize);
    }

    bool MakeNext(std::string& sPiece) override
    {
        sPiece.clear();
        if (!m_bHeader)
        {
            m_bHeader = true;
            sPiece.assign(CTileWriter::c_nHeaderSize, '\0');
            m_writer.PutHeader(sPiece.data(), m_pVersion->GetRoot(),
                               static_cast<std::uint32_t>(m_tile.nNumPnts), m_tile.bMore);
        }
        m_pnts.WriteNext(c_nPiece, m_writer, sPiece);
        return !sPiece.empty();
    }

private:
    TVersion m_pVersion; // holds the arrays that the points lie in
    CTile m_tile;
    CTilePnts m_pnts;
    CTileWriter m_writer;
    bool m_bHeader = false;
};

CReply MakeInPieces(const TVersion& pVersion, const CTile& tile, CTilePnts&& pnts,
                    std::shared_ptr<void> pHeld)
{
    if (pHeld == nullptr)
        throw CRefusal(503, "too many tiles are being sent");
    CReply reply(c_pType, {});
    reply.pHeld = std::move(pHeld);
    reply.pPieces = std::make_shared<CTilePieces>(pVersion, tile, std::move(pnts));
    return reply;
}

} // namespace

bool IsTile(const CCloudVersion& version, const CTileAddress& address)
{
    CLevelCube cube{};
    return address.nLevel <= version.GetNumLevels() &&
           GetLevelCube(version.GetRoot(), address.nLevel, address.nI, address.nJ, address.nK, cube);
}

CReply MakeTile(const TVersion& pVersion, const CTileAddress& address,
                const std::shared_ptr<const CAttribute>& pAttribute, const CByteBudget& budget)
{
    const CCloudVersion& version = *pVersion;
    CTile tile;
    GetLevelCube(version.GetRoot(), address.nLevel, address.nI, address.nJ, address.nK, tile.cube);
    CLodRuns runs;
    FindLodRuns(version.GetCloud(), version.CalcLod(address.nLevel), address.nLevel, address.nI, address.nJ,
                address.nK, runs);
    runs.vecRuns.shrink_to_fit();
    const auto nRunBytes = static_cast<std::int64_t>(runs.vecRuns.size() * sizeof(CPntRun));
    CTilePnts pnts(version, std::move(runs.vecRuns), pAttribute);
    tile.nNumPnts = pnts.GetNumPnts();
    tile.bMore = runs.nNumInCube < 0
                     ? address.nLevel < version.GetNumLevels()
                     : tile.nNumPnts < runs.nNumInCube && address.nLevel < version.GetNumLevels();
    const auto nPntBytes = static_cast<std::int64_t>(CTileWriter::c_nPntSize);
    std::shared_ptr<void> pHeld =
        tile.nNumPnts <= c_nMaxAtOnce ? budget.TryTake(tile.nNumPnts * nPntBytes) : nullptr;
    if (pHeld == nullptr)
        return MakeInPieces(pVersion, tile, std::move(pnts),
                            budget.TryTake(nRunBytes + std::min(c_nPiece, tile.nNumPnts) * nPntBytes));
    std::string sBytes;
    std::int64_t nEdge = tile.cube.nEdge;
    if (!WriteWhole(version, tile, pnts, nEdge, sBytes))
        WriteWhole(version, tile, pnts, nEdge, sBytes);
    CReply reply(c_pType, std::move(sBytes));
    reply.pHeld = std::move(pHeld);
    return reply;
}

} // namespace zorcld
