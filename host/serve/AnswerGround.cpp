#include <host/serve/Resources.h>

#include <host/query/CalcDensity.h>
#include <host/query/FilterGround.h>
#include <host/query/GroundFindings.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/LineForClient.h>
#include <host/serve/RequestNumbers.h>
#include <zor4data/IPclProgressListener.h>

#include <fmt/format.h>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

class CTellProgress final : public IPclProgressListener
{
public:
    explicit CTellProgress(const CJobs::TTell& tell) : m_tell(tell) {}
    void OnProgress(int nPos) override { m_tell("finding the ground", nPos); }

private:
    const CJobs::TTell& m_tell;
};

/// @return what the request gives, or else what the file states.
CGroundScale ChooseScale(const CRequest& request, const CServed& served)
{
    if (request.FindParam("scale") == nullptr)
        return FindGroundScale(served.GetCoords(), served.GetFile());
    const double dScale = GetNumber(request, "scale");
    if (!(dScale >= 1e-6 && dScale <= 1e6))
        throw CRefusal(400, "scale: it is not from 1e-6 to 1e6");
    return {dScale, dScale};
}

/// Filters a copy, which shares the points with what is shown until it has its own. A selection they would
/// share, too: while one is made nobody else asks for points, and none is left.
void Filter(CPntCld& copy, const CGroundScale& scale, CServed& served, const CJobs::TTell& tell)
{
    CTellProgress progress(tell);
    if (scale.IsOne())
    {
        const auto lock = served.LockSelection();
        copy.Morph(&progress);
        return;
    }
    auto lockShared = served.LockSelection();
    const std::vector<int> vecOthers = FindNotGround(copy, scale, served.GetFile(), &progress);
    lockShared.unlock();
    tell("removing the other points", 100);
    CPntCld shared(copy);
    const auto lock = served.LockSelectionAlone();
    RemovePnts(copy, vecOthers);
    shared.UnSelPnts();
}

TJson FindGround(const TVersion& pVersion, const CGroundScale& scale, CServed& served,
                 const CJobs::TTell& tell)
{
    const CPntCld& cloud = pVersion->GetCloud();
    CGroundResult result = {cloud.GetNumPnts(), 0, CalcDensity(cloud).dSpacing * scale.dPlan};
    CPntCld copy(cloud);
    Filter(copy, scale, served, tell);
    result.nNumGround = copy.GetNumPnts();
    const TVersion pGround = served.AddVersion(copy, "ground");
    return {{"version", pGround->GetVersion()},
            {"points", result.nNumGround},
            {"of", result.nNumAll},
            {"levels", pGround->GetNumLevels()},
            {"note", LineForClient(FindOddGround(result))}};
}

} // namespace

CReply AnswerGround(const CRequest& request, CServed& served)
{
    if (request.FindParam("cancel") != nullptr)
        return MakeJsonReply(served.GetJobs().Cancel("ground"));
    const CGroundScale scale = ChooseScale(request, served);
    const auto work = [scale, pVersion = served.GetFirst(), &served](const CJobs::TTell& tell)
    { return FindGround(pVersion, scale, served, tell); };
    return MakeJsonReply(
        served.GetJobs().Ask("ground", fmt::format("{} {}", scale.dPlan, scale.dHeight), work));
}

} // namespace zorcld
