#include <host/serve/Resources.h>

#include <host/output/CConsole.h>
#include <host/query/FindOutline.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/RequestNumbers.h>
#include <host/shapes/TRing.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

/// @return the distance; 0 for auto.
double ParseDistance(const CRequest& request)
{
    const std::string* const pText = request.FindParam("distance");
    if (pText != nullptr && *pText == "auto")
        return 0.0;
    const double dDistance = GetNumber(request, "distance");
    if (!(dDistance > 0.0))
        throw CRefusal(400, "distance: it is not above 0");
    return dDistance;
}

TJson DescribeOutline(const COutline& outline, const CPntCld& cloud)
{
    const TRing ring = outline.GetRing();
    const std::size_t nHow = std::min(outline.sHow.find_first_not_of(' '), outline.sHow.size());
    TJson json = {
        {"distance", outline.dDistance}, {"how", outline.sHow.substr(nHow)}, {"ring", TJson::array()}};
    for (const zor::geom::PNT_2D& pnt : ring)
        json["ring"].push_back(TJson{pnt.x, pnt.y});
    json["length"] = CalcLength(ring);
    json["area"] = std::fabs(CalcSignedArea(ring));
    json["inside"] = outline.nNumInside;
    json["whole"] = IsWhole(outline, cloud);
    return json;
}

} // namespace

CReply AnswerOutline(const CRequest& request, CServed& served)
{
    if (IsCancel(request))
        return MakeJsonReply(served.GetJobs().Cancel("outline"));
    const double dDistance = ParseDistance(request);
    const auto work =
        [dDistance, pVersion = served.GetFirst(), sFile = served.GetFile()](const CJobs::TTell& tell)
    {
        CConsole console;
        console.SetQuiet();
        console.SetWatcher(tell);
        return DescribeOutline(FindOutline(pVersion->GetCloud(), dDistance, sFile, console),
                               pVersion->GetCloud());
    };
    return MakeJsonReply(served.GetJobs().Ask("outline", fmt::format("{}", dDistance), work));
}

} // namespace zorcld
