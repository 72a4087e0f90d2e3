#include <host/serve/Resources.h>

#include <host/output/ByteFromShare.h>
#include <host/query/CCorridor.h>
#include <host/serve/CMarkedPieces.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/PutNumber.h>
#include <host/serve/RequestNumbers.h>

#include <array>
#include <utility>

namespace zorcld
{

namespace
{

class CCsvProfile final : public IMarkedWriter
{
public:
    CCsvProfile(const CCorridor& corridor, bool bColor) : m_corridor(corridor), m_bColor(bColor) {}

    void Begin(std::string& sBytes) override { sBytes += CCorridor::GetCsvHead(m_bColor); }

    void Add(const CCldCadPnt& pnt, std::string& sBytes) override
    {
        sBytes += CCorridor::FormatCsv(pnt, m_corridor.CalcAlong(pnt.m_pnt), m_corridor.CalcAcross(pnt.m_pnt),
                                       m_bColor);
    }

private:
    CCorridor m_corridor;
    bool m_bColor;
};

/// The layout that docs/serve.md tells.
class CBinaryProfile final : public IMarkedWriter
{
public:
    static constexpr std::size_t c_nHeaderSize = 24;
    static constexpr std::size_t c_nPntSize = 20;

    CBinaryProfile(const CCorridor& corridor, const CPntSummary& summary)
        : m_corridor(corridor), m_summary(summary), m_dBase(summary.nNumPnts > 0 ? summary.box.zmin : 0.0)
    {
    }

    void Begin(std::string& sBytes) override
    {
        std::array<char, c_nHeaderSize> header{};
        PutFloat64(header.data(), m_corridor.GetLength());
        PutFloat64(header.data() + 8, m_dBase);
        PutUint32(header.data() + 16, static_cast<std::uint32_t>(m_summary.nNumPnts));
        PutUint32(header.data() + 20, m_summary.bColor ? 1U : 0U);
        sBytes.append(header.data(), header.size());
    }

    void Add(const CCldCadPnt& pnt, std::string& sBytes) override
    {
        std::array<char, c_nPntSize> record{};
        PutFloat32(record.data(), m_corridor.CalcAlong(pnt.m_pnt));
        PutFloat32(record.data() + 4, pnt.m_pnt.z - m_dBase);
        PutFloat32(record.data() + 8, m_corridor.CalcAcross(pnt.m_pnt));
        PutUint32(record.data() + 12, static_cast<std::uint32_t>(pnt.m_nIndex));
        record[16] = static_cast<char>(ByteFromShare(pnt.m_fR));
        record[17] = static_cast<char>(ByteFromShare(pnt.m_fG));
        record[18] = static_cast<char>(ByteFromShare(pnt.m_fB));
        sBytes.append(record.data(), record.size());
    }

private:
    CCorridor m_corridor;
    CPntSummary m_summary;
    double m_dBase;
};

CCorridor ParseCorridor(const CRequest& request)
{
    return {{{GetPlanNumber(request, "x1"), GetPlanNumber(request, "y1")},
             {GetPlanNumber(request, "x2"), GetPlanNumber(request, "y2")},
             GetPlanNumber(request, "width")},
            "profile"};
}

} // namespace

CReply AnswerProfile(const CRequest& request, CServed& served)
{
    const std::string* const pFormat = request.FindParam("format");
    if (pFormat != nullptr && *pFormat != "csv" && *pFormat != "binary")
        throw CRefusal(400, "format is neither csv nor binary");
    const CCorridor corridor = ParseCorridor(request);
    const CPntChoice choice(request, served);
    std::shared_ptr<void> slot = served.TakeStream();
    CMarkedPnts marked = choice.MarkOf([&](const CPntCld& cloud, IPntCldListener& listener)
                                       { corridor.FindPnts(cloud, listener); });
    CReply reply;
    reply.vecHeaders.emplace_back("Cache-Control", "no-store");
    std::unique_ptr<IMarkedWriter> pWriter;
    std::int64_t nSize = -1;
    if (pFormat != nullptr && *pFormat == "csv")
    {
        reply.sType = "text/csv; charset=utf-8";
        reply.vecHeaders.emplace_back("Content-Disposition", "attachment; filename=\"profile.csv\"");
        pWriter = std::make_unique<CCsvProfile>(corridor, marked.summary.bColor);
    }
    else
    {
        reply.sType = "application/octet-stream";
        pWriter = std::make_unique<CBinaryProfile>(corridor, marked.summary);
        nSize = static_cast<std::int64_t>(CBinaryProfile::c_nHeaderSize) +
                marked.summary.nNumPnts * static_cast<std::int64_t>(CBinaryProfile::c_nPntSize);
    }
    reply.pPieces =
        std::make_shared<CMarkedPieces>(std::move(marked), std::move(pWriter), nSize, std::move(slot));
    return reply;
}

} // namespace zorcld
