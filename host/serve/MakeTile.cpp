#include <host/serve/MakeTile.h>

#include <host/serve/CByteBudget.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CTilePnts.h>
#include <zor4data/FindLodRuns.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

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

/// Truncation puts points beside their nominal cube, by less than a unit a level: these are moved onto its
/// end. Those of a cloud wider than its octree's cubes, which end with int32, may lie far outside.
bool IsTooNarrow(std::int64_t nEdge, std::int64_t nNeeded)
{
    constexpr std::int64_t c_nTruncated = 48; // to both sides together
    return nNeeded > nEdge + std::min(nEdge / 128 + 4, c_nTruncated);
}

std::size_t CalcNumBytes(std::int64_t nNumPnts)
{
    return static_cast<std::size_t>(nNumPnts) * CTileWriter::c_nPntSize;
}

/// @return false where the steps must be spread over more than `nEdge`, which then is what is needed.
bool WriteWhole(const CCloudVersion& version, const CTile& tile, CTilePnts& pnts, std::int64_t& nEdge,
                char* pTo)
{
    CTileWriter writer(tile.cube, nEdge);
    pnts.Rewind();
    pnts.WriteNext(tile.nNumPnts, writer, pTo + CTileWriter::c_nHeaderSize);
    writer.PutHeader(pTo, version.GetRoot(), static_cast<std::uint32_t>(tile.nNumPnts), tile.bMore);
    if (!IsTooNarrow(nEdge, writer.CalcNeededEdge()))
        return true;
    nEdge = writer.CalcNeededEdge();
    return false;
}

/// A tile whose points are known.
struct CFound
{
    CTile tile;
    CTilePnts pnts;
    std::int64_t nRunBytes; // that the points' runs hold
};

CFound FindTile(const CCloudVersion& version, const CTileAddress& address,
                const std::shared_ptr<const CAttribute>& pAttribute)
{
    constexpr double c_dAll = 0.0; // no spacing; the deepest level has all points, which then need no walk
    const bool bDeepest = address.nLevel >= version.GetNumLevels();
    CTile tile;
    GetLevelCube(version.GetRoot(), address.nLevel, address.nI, address.nJ, address.nK, tile.cube);
    CLodRuns runs;
    FindLodRuns(version.GetCloud(), bDeepest ? c_dAll : version.CalcLod(address.nLevel), address.nLevel,
                address.nI, address.nJ, address.nK, runs);
    const auto nRunBytes = static_cast<std::int64_t>(runs.vecRuns.capacity() * sizeof(CPntRun));
    CTilePnts pnts(version, std::move(runs.vecRuns), pAttribute);
    tile.nNumPnts = pnts.GetNumPnts();
    tile.bMore = !bDeepest && (runs.nNumInCube < 0 || tile.nNumPnts < runs.nNumInCube);
    return {tile, std::move(pnts), nRunBytes};
}

std::optional<CReply> TryMakeWhole(const CCloudVersion& version, CFound& found, const CByteBudget& budget)
{
    if (found.tile.nNumPnts > c_nMaxAtOnce)
        return {};
    const std::size_t nPnts = CalcNumBytes(found.tile.nNumPnts);
    std::shared_ptr<void> pHeld = budget.TryTake(static_cast<std::int64_t>(nPnts));
    if (pHeld == nullptr)
        return {};
    const std::size_t nSize = CTileWriter::c_nHeaderSize + nPnts;
    const std::shared_ptr<char[]> pBytes(new char[nSize]); // not filled before it is written
    std::int64_t nEdge = found.tile.cube.nEdge;
    if (!WriteWhole(version, found.tile, found.pnts, nEdge, pBytes.get()))
        WriteWhole(version, found.tile, found.pnts, nEdge, pBytes.get());
    CReply reply;
    reply.sType = c_pType;
    reply.sBody = {pBytes.get(), nSize};
    reply.pOwner = pBytes;
    reply.pHeld = std::move(pHeld);
    return reply;
}

/// A tile that is made while it is sent. Its points are gone through twice, since the header comes first.
class CTilePieces final : public IPieces
{
public:
    CTilePieces(TVersion pVersion, const CTile& tile, CTilePnts&& pnts)
        : m_pVersion(std::move(pVersion)), m_tile(tile), m_pnts(std::move(pnts)),
          m_writer(tile.cube, tile.cube.nEdge)
    {
        std::vector<char> vecBytes(CalcNumBytes(std::min(c_nPiece, tile.nNumPnts)));
        while (m_pnts.WriteNext(c_nPiece, m_writer, vecBytes.data()) > 0)
        {
        }
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
        const std::size_t nHeader = m_bHeader ? 0 : CTileWriter::c_nHeaderSize;
        sPiece.resize(nHeader + CalcNumBytes(std::min(c_nPiece, m_pnts.GetNumLeft())));
        if (!m_bHeader)
            m_writer.PutHeader(sPiece.data(), m_pVersion->GetRoot(),
                               static_cast<std::uint32_t>(m_tile.nNumPnts), m_tile.bMore);
        m_bHeader = true;
        m_pnts.WriteNext(c_nPiece, m_writer, sPiece.data() + nHeader);
        return !sPiece.empty();
    }

private:
    TVersion m_pVersion; // holds the arrays that the points lie in
    CTile m_tile;
    CTilePnts m_pnts;
    CTileWriter m_writer;
    bool m_bHeader = false;
};

CReply MakeInPieces(const TVersion& pVersion, CFound&& found, std::shared_ptr<void> pHeld)
{
    if (pHeld == nullptr)
        throw CRefusal(503, "too many tiles are being sent");
    CReply reply(c_pType, {});
    reply.pHeld = std::move(pHeld);
    reply.pPieces = std::make_shared<CTilePieces>(pVersion, found.tile, std::move(found.pnts));
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
    CFound found = FindTile(*pVersion, address, pAttribute);
    if (std::optional<CReply> reply = TryMakeWhole(*pVersion, found, budget))
        return std::move(*reply);
    const auto nPiece = static_cast<std::int64_t>(CalcNumBytes(std::min(c_nPiece, found.tile.nNumPnts)));
    return MakeInPieces(pVersion, std::move(found), budget.TryTake(found.nRunBytes + nPiece));
}

std::optional<CReply> TryMakeWholeTile(const CCloudVersion& version, const CTileAddress& address,
                                       const CByteBudget& budget)
{
    CFound found = FindTile(version, address, nullptr);
    return TryMakeWhole(version, found, budget);
}

} // namespace zorcld
