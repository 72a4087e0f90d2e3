#include <host/query/WritePnts.h>

#include <host/output/CConsole.h>
#include <host/query/Query.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>

namespace zorcld
{

std::int64_t WritePnts(const CPntCld& cloud, const CQuery& query, const TMakePntWriter& makeWriter,
                       COutFile& out, const CConsole& console)
{
    CPntSummary summary;
    summary.bColor = cloud.IsWithColor();
    ForEachPnt(cloud, query, [&](const CCldCadPnt& pnt) { summary.Add(pnt.m_pnt); });
    if (summary.nNumPnts == 0)
        console.Note(fmt::format("{}: no point was chosen", out.GetPath()));
    const std::unique_ptr<IPntWriter> pWriter = makeWriter(WriteTo(out), summary);
    if (!pWriter->GetNote().empty())
        console.Note(fmt::format("{}: {}", out.GetPath(), pWriter->GetNote()));
    ForEachPnt(cloud, query, [&](const CCldCadPnt& pnt) { pWriter->Add(pnt); });
    pWriter->Finish();
    return summary.nNumPnts;
}

} // namespace zorcld
