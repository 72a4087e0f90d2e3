#include <host/serve/Resources.h>

#include <host/query/CalcDensity.h>
#include <host/query/FilterGround.h>
#include <host/query/GroundFindings.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/LineForClient.h>
#include <host/serve/RequestNumbers.h>
#include <host/serve/SortAsIn.h>
#include <zor4data/IPclProgressListener.h>
#include <zor4data/KeepPnts.h>

#include <fmt/format.h>

#include <utility>
#include <vector>

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

TJson FindGround(const TVersion& pVersion, const CGroundScale& scale, CServed& served,
                 const CJobs::TTell& tell)
{
    const CPntCld& cloud = pVersion->GetCloud();
    CGroundResult result = {cloud.GetNumPnts(), 0, CalcDensity(cloud).dSpacing * scale.dPlan};
    CTellProgress progress(tell);
    std::vector<std::int32_t> vecGround = FindGroundPnts(cloud, scale, served.GetFile(), &progress);
    tell("making the ground a cloud of its own", 0);
    CPntCld ground(cloud); // has the same points until it gets its own
    KeepPnts(ground, vecGround);
    tell("making the ground a cloud of its own", 50);
    SortAsIn(GetPntArrays(ground), pVersion->GetArrays(), vecGround);
    result.nNumGround = ground.GetNumPnts();
    const TVersion pGround = served.AddVersion(ground, "ground", std::move(vecGround));
    return {{"version", pGround->GetVersion()},
            {"points", result.nNumGround},
            {"of", result.nNumAll},
            {"levels", pGround->GetNumLevels()},
            {"note", LineForClient(FindOddGround(result))}};
}

} // namespace

CReply AnswerGround(const CRequest& request, CServed& served)
{
    if (IsCancel(request))
        return MakeJsonReply(served.GetJobs().Cancel("ground"));
    const CGroundScale scale = ChooseScale(request, served);
    const auto work = [scale, pVersion = served.GetFirst(), &served](const CJobs::TTell& tell)
    { return FindGround(pVersion, scale, served, tell); };
    return MakeJsonReply(
        served.GetJobs().Ask("ground", fmt::format("{} {}", scale.dPlan, scale.dHeight), work));
}

} // namespace zorcld
