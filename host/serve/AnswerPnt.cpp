#include <host/serve/Resources.h>

#include <host/output/CFailure.h>
#include <host/query/ParseNumbers.h>
#include <host/query/PickStretched.h>
#include <host/serve/CPntChoice.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/CServed.h>
#include <host/serve/RequestNumbers.h>
#include <zor4data/PickPnt.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;
using zor::geom::PNT_3D;

/// @param nIndex  of the version; -1: no point.
CReply DescribePnt(const CCloudVersion& version, int nIndex)
{
    if (nIndex < 0)
        return MakeJsonReply({{"index", -1}});
    TJson json = {{"index", version.GetFileIndex(nIndex)}};
    const CPntCld& cloud = version.GetCloud();
    PNT_3D pnt;
    cloud.GetPnt(nIndex, pnt);
    json["x"] = pnt.x;
    json["y"] = pnt.y;
    json["z"] = pnt.z;
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    json["color"] = cloud.GetPntColor(nIndex, r, g, b) ? TJson{r, g, b} : TJson();
    return MakeJsonReply(json);
}

/// Three numbers above 0.
PNT_3D ParseStretch(const std::string& sText)
{
    const std::vector<double> vecNumbers = ParseNumbers(sText, ',', 3, "stretch");
    if (!(*std::min_element(vecNumbers.begin(), vecNumbers.end()) > 0.0))
        throw CUsageError("stretch: these are not three numbers above 0");
    return {vecNumbers[0], vecNumbers[1], vecNumbers[2]};
}

} // namespace

CReply AnswerPick(const CRequest& request, CServed& served)
{
    const auto number = [&](const char* pName) { return GetNumber(request, pName); };
    const PNT_3D from{number("ox"), number("oy"), number("oz")}; // braces: in this order
    const PNT_3D direction{number("dx"), number("dy"), number("dz")};
    const double dTan = number("tan");
    const CPntChoice choice(request, served);
    const CPntCld& cloud = choice.GetVersion()->GetCloud();
    const std::string* pStretch = request.FindParam("stretch");
    if (pStretch == nullptr)
        return DescribePnt(*choice.GetVersion(),
                           PickPnt(cloud, from, direction, dTan, choice.GetQuery().vecPlanes));
    const CStretchedCone cone{from, direction, dTan, ParseStretch(*pStretch)};
    return DescribePnt(*choice.GetVersion(), PickStretched(cloud, cone, choice.GetQuery()));
}

CReply AnswerNearest(const CRequest& request, CServed& served)
{
    const double x = GetNumber(request, "x");
    const double y = GetNumber(request, "y");
    const double dMax = GetNumber(request, "max");
    const CPntChoice choice(request, served);
    const CPntCld& cloud = choice.GetVersion()->GetCloud();
    if (request.FindParam("z") == nullptr)
        return DescribePnt(*choice.GetVersion(), FindNearestPnt2D(cloud, zor::geom::PNT_2D(x, y), dMax));
    return DescribePnt(*choice.GetVersion(),
                       FindNearestPnt(cloud, PNT_3D(x, y, GetNumber(request, "z")), dMax));
}

CReply AnswerPnt(const CRequest& request, CServed& served)
{
    const double dIndex = GetNumber(request, "index");
    if (dIndex != std::floor(dIndex))
        throw CRefusal(400, "index: it is not a whole number");
    const CPntChoice choice(request, served);
    const bool bIndex = dIndex >= 0.0 && dIndex < served.GetFirst()->GetArrays().nNumPnts;
    return DescribePnt(*choice.GetVersion(),
                       bIndex ? choice.GetVersion()->FindFileIndex(static_cast<int>(dIndex)) : -1);
}

CReply AnswerRect(const CRequest& request, CServed& served)
{
    const auto number = [&](const char* pName) { return GetNumber(request, pName); };
    const CPntChoice choice(request, served);
    const double xmin = number("xmin");
    const double ymin = number("ymin");
    const double xmax = number("xmax");
    const double ymax = number("ymax");
    return MakeJsonReply({{"points", choice.GetVersion()->GetCloud().GetNumPnts2D(xmin, ymin, xmax, ymax)}});
}

CReply AnswerCount(const CRequest& request, CServed& served)
{
    return MakeJsonReply({{"points", CPntChoice(request, served).Mark().summary.nNumPnts}});
}

} // namespace zorcld
