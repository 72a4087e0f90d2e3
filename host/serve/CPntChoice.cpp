#include <host/serve/CPntChoice.h>

#include <host/output/CFailure.h>
#include <host/query/ParseNumbers.h>
#include <host/serve/CRefusal.h>
#include <host/serve/CRequest.h>
#include <host/serve/RequestNumbers.h>
#include <zor4data/FindPntsInPolygons.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zorcld
{

namespace
{

using zor::geom::TMultiPartPolygon;

/// Hands point by point to a function, and asks before each batch whether anybody still wants them.
template <class TFn, class TCheck>
class CWantedPnts final : public IPntCldListener
{
public:
    CWantedPnts(TFn& fn, TCheck check) : m_fn(fn), m_check(std::move(check)) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        m_check();
        std::for_each(pPnts, pPnts + nNumPnts, m_fn);
    }

private:
    TFn& m_fn;
    TCheck m_check;
};

TVersion FindVersion(const CRequest& request, const CServed& served)
{
    if (request.FindParam("version") == nullptr)
        return served.GetFirst();
    const double dVersion = GetNumber(request, "version");
    TVersion pVersion = dVersion >= 0.0 && dVersion < 1e15 && dVersion == std::floor(dVersion)
                            ? served.FindVersion(static_cast<std::int64_t>(dVersion))
                            : nullptr;
    if (pVersion == nullptr)
        throw CRefusal(404, "there is no such version of the cloud");
    return pVersion;
}

CQuery ParsePlanes(const CRequest& request)
{
    CQueryOptions options;
    for (const auto& [sName, sValue] : request.vecParams)
    {
        if (sName == "clip")
            options.vecClips.push_back(sValue);
        if (sName != "box")
            continue;
        if (!options.sBox.empty())
            throw CRefusal(400, "box: there can be one");
        if (sValue.empty()) // which is no box to ParseQuery
            throw CRefusal(400, "box: it is empty");
        options.sBox = sValue;
    }
    return ParseQuery(options);
}

/// x,y,x,y,... of at least three corners.
TMultiPartPolygon ParsePolygon(const std::string& sText)
{
    const auto nCount = static_cast<std::size_t>(std::count(sText.begin(), sText.end(), ',')) + 1;
    if (nCount < 6 || nCount % 2 != 0)
        throw CUsageError("polygon: these are not x and y of at least three corners");
    const std::vector<double> vecNumbers = ParseNumbers(sText, ',', nCount, "polygon");
    for (const double d : vecNumbers)
        CheckPlanNumber(d, "polygon");
    TMultiPartPolygon polygon;
    for (std::size_t i = 0; i < nCount; i += 2)
        polygon.outer.emplace_back(vecNumbers[i], vecNumbers[i + 1]);
    return polygon;
}

} // namespace

CPntChoice::CPntChoice(const CRequest& request, const CServed& served)
    : m_request(request), m_pVersion(FindVersion(request, served)), m_query(ParsePlanes(request)),
      m_bOutside(GetNumberOr(request, "outside", 0.0) != 0.0)
{
    for (const auto& [sName, sValue] : request.vecParams)
        if (sName == "polygon")
            m_vecPolygons.push_back(ParsePolygon(sValue));
}

CMarkedPnts CPntChoice::Mark() const
{
    if (m_vecPolygons.empty() && !m_bOutside)
        return MarkOf([this](const CPntCld& cloud, IPntCldListener& listener)
                      { RunQuery(cloud, m_query, listener); });
    return MarkOf([this](const CPntCld& cloud, IPntCldListener& listener)
                  { FindPntsInPolygons(cloud, &listener, m_vecPolygons, m_bOutside, c_nBatch); });
}

void CPntChoice::CheckWanted() const
{
    if (m_request.IsForNobody())
        throw CRefusal(503, "the client has gone");
}

CMarkedPnts CPntChoice::MarkOf(const TQuery& query) const
{
    CheckWanted();
    const CPntCld& cloud = m_pVersion->GetCloud();
    CMarkedPnts marked;
    marked.pVersion = m_pVersion;
    marked.vecMarks.resize(static_cast<std::size_t>(m_pVersion->GetArrays().nNumPnts));
    marked.summary.bColor = cloud.IsWithColor();
    const auto mark = [&](const CCldCadPnt& pnt)
    {
        if (!m_query.IsInside(pnt.m_pnt))
            return;
        marked.vecMarks[static_cast<std::size_t>(pnt.m_nIndex)] = true;
        marked.summary.Add(pnt.m_pnt);
    };
    CWantedPnts listener(mark, [this] { CheckWanted(); });
    query(cloud, listener);
    return marked;
}

} // namespace zorcld
