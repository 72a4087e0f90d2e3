#include <host/serve/Resources.h>

#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>

#include <nlohmann/json.hpp>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

TJson DescribeVersion(const CCloudVersion& version)
{
    return {{"version", version.GetVersion()},
            {"name", version.GetName()},
            {"points", version.GetCloud().GetNumPnts()},
            {"levels", version.GetNumLevels()}};
}

void AddCloud(const CServed& served, TJson& info)
{
    const TVersion pFirst = served.GetFirst();
    const CRootCube& root = pFirst->GetRoot();
    info["points"] = pFirst->GetCloud().GetNumPnts();
    info.update(served.GetFacts());
    info["root"] = {{"x", root.nX}, {"y", root.nY}, {"z", root.nZ}, {"edge", root.nEdge}};
    info["origin"] = {root.fOrgX, root.fOrgY, root.fOrgZ};
    info["color"] = pFirst->GetCloud().IsWithColor() && pFirst->GetCloud().GetNumPnts() > 0;
    info["version"] = pFirst->GetVersion();
    info["levels"] = pFirst->GetNumLevels();
    info["versions"] = TJson::array();
    for (const TVersion& pVersion : served.GetVersions())
        info["versions"].push_back(DescribeVersion(*pVersion));
}

} // namespace

CReply AnswerInfo(const CRequest&, CServed& served)
{
    const CServed::CProgress progress = served.GetProgress();
    TJson info = {{"file", served.GetFile()},
                  {"budget", served.GetBudget() > 0 ? TJson(served.GetBudget()) : TJson()}};
    switch (progress.eState)
    {
    case CServed::enumState::Loading:
        info["state"] = "loading";
        info["doing"] = progress.sDoing;
        info["percent"] = progress.nPercent >= 0 ? TJson(progress.nPercent) : TJson();
        break;
    case CServed::enumState::Failed:
        info["state"] = "failed";
        info["cause"] = progress.sCause;
        break;
    case CServed::enumState::Ready:
        info["state"] = "ready";
        AddCloud(served, info);
        break;
    }
    return MakeJsonReply(info);
}

// Names of files and words of coordinate systems may be no UTF-8.
CReply MakeJsonReply(const nlohmann::ordered_json& json)
{
    CReply reply("application/json", json.dump(-1, ' ', false, TJson::error_handler_t::replace));
    reply.vecHeaders.emplace_back("Cache-Control", "no-store");
    return reply;
}

} // namespace zorcld
