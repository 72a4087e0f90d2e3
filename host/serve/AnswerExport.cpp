#include <host/serve/Resources.h>

#include <host/output/PntWriter.h>
#include <host/serve/CMarkedPieces.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace zorcld
{

namespace
{

/// Writes points as a file of the program's own kinds.
class CFileWriter final : public IMarkedWriter
{
public:
    CFileWriter(const TMakePntWriter& makeWriter, const CPntSummary& summary)
        : m_pWriter(makeWriter([this](std::string_view sBytes) { m_sBytes += sBytes; }, summary))
    {
    }

    void Begin(std::string& sBytes) override { Take(sBytes); }

    void Add(const CCldCadPnt& pnt, std::string& sBytes) override
    {
        m_pWriter->Add(pnt);
        m_pWriter->Finish(); // nothing is kept back that a piece would have to wait for
        Take(sBytes);
    }

private:
    void Take(std::string& sBytes)
    {
        m_pWriter->Finish();
        sBytes += m_sBytes;
        m_sBytes.clear();
    }

    std::string m_sBytes; // made before the writer, which writes at once
    std::unique_ptr<IPntWriter> m_pWriter;
};

/// The file's name without what a header could not hold.
std::string MakeFileName(const CServed& served, const std::string& sFormat)
{
    std::string sStem = std::filesystem::path(served.GetFile()).stem().string();
    std::replace_if(
        sStem.begin(), sStem.end(),
        [](unsigned char c) { return c < ' ' || c >= 127 || c == '"' || c == '\\'; }, '_');
    return fmt::format("{}-part.{}", sStem, sFormat);
}

} // namespace

CReply AnswerExport(const CRequest& request, CServed& served)
{
    const std::string* const pFormat = request.FindParam("format");
    if (pFormat == nullptr || (*pFormat != "csv" && *pFormat != "ply"))
        throw CRefusal(400, "format is neither csv nor ply");
    const CPntChoice choice(request, served);
    std::shared_ptr<void> slot = served.TakeStream();
    CMarkedPnts marked = choice.Mark();
    auto pWriter = std::make_unique<CFileWriter>(FindPntWriter("part." + *pFormat), marked.summary);
    CReply reply;
    reply.sType = *pFormat == "csv" ? "text/csv; charset=utf-8" : "application/octet-stream";
    reply.vecHeaders.emplace_back("Cache-Control", "no-store");
    reply.vecHeaders.emplace_back("Content-Disposition",
                                  fmt::format("attachment; filename=\"{}\"", MakeFileName(served, *pFormat)));
    reply.pPieces =
        std::make_shared<CMarkedPieces>(std::move(marked), std::move(pWriter), -1, std::move(slot));
    return reply;
}

} // namespace zorcld
