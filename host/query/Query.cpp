#include <host/query/Query.h>

#include <formats/Compact.h>
#include <host/output/CFailure.h>
#include <host/query/ParseNumbers.h>
#include <zor4data/CPntCld.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace zorcld
{

namespace
{

constexpr double c_dFinest = 1e-4; // the cloud holds no finer steps

class CCounter final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt*) override { m_nNumPnts += nNumPnts; }

    std::int64_t GetNumPnts() const { return m_nNumPnts; }

private:
    std::int64_t m_nNumPnts = 0;
};

/// Hands on the points that are chosen, in runs.
class CChosenOnly final : public IPntCldListener
{
public:
    CChosenOnly(IPntCldListener& next, const std::vector<bool>& vecChosen)
        : m_next(next), m_vecChosen(vecChosen)
    {
    }

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        const auto isChosen = [this](const CCldCadPnt& pnt)
        { return m_vecChosen[static_cast<std::size_t>(pnt.m_nIndex)]; };
        CCldCadPnt* const pEnd = pPnts + nNumPnts;
        for (CCldCadPnt* pBegin = std::find_if(pPnts, pEnd, isChosen); pBegin != pEnd;)
        {
            CCldCadPnt* const pRunEnd = std::find_if_not(pBegin, pEnd, isChosen);
            m_next.OnPnts(static_cast<int>(pRunEnd - pBegin), pBegin);
            pBegin = std::find_if(pRunEnd, pEnd, isChosen);
        }
    }

private:
    IPntCldListener& m_next;
    const std::vector<bool>& m_vecChosen;
};

/// Hands on the first point that comes.
class CFirstOnly final : public IPntCldListener
{
public:
    explicit CFirstOnly(IPntCldListener& next) : m_next(next) {}

    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        if (nNumPnts > 0 && !m_bDone)
            m_next.OnPnts(1, pPnts);
        m_bDone = m_bDone || nNumPnts > 0;
    }

private:
    IPntCldListener& m_next;
    bool m_bDone = false;
};

double CalcExtent(const CPntCld& cloud)
{
    zor::geom::RECT_3D box;
    if (cloud.GetNumPnts() == 0 || !cloud.GetBdry(box))
        return 0.0;
    return std::max({box.xmax - box.xmin, box.ymax - box.ymin, box.zmax - box.zmin, c_dFinest});
}

/// Is the spacing longer than the cloud's longest side, so that one point stands for all? The library goes by
/// powers of two there: it may still give eight, and beyond its coarsest level it thins no more.
bool IsBeyondCloud(const CPntCld& cloud, double dLod)
{
    const double dExtent = CalcExtent(cloud);
    return dExtent > 0.0 && dLod > dExtent;
}

void AddBoxPlanes(const std::vector<double>& box, std::vector<zor::geom::PLANE_3D>& vecPlanes)
{
    for (std::size_t k = 0; k < 3; ++k)
    {
        if (box[k] > box[k + 3])
            throw CUsageError("--box: a minimum is above its maximum");
        const double a = k == 0 ? 1.0 : 0.0;
        const double b = k == 1 ? 1.0 : 0.0;
        const double c = k == 2 ? 1.0 : 0.0;
        vecPlanes.emplace_back(-a, -b, -c, box[k]);
        vecPlanes.emplace_back(a, b, c, -box[k + 3]);
    }
}

/// Check of an option. @return empty, or what is wrong.
std::string IsAboveZero(const std::string& sText)
{
    double d = 0.0;
    const auto result = std::from_chars(sText.data(), sText.data() + sText.size(), d);
    const bool bWhole = result.ec == std::errc() && result.ptr == sText.data() + sText.size();
    const bool bGood = bWhole && d > 0.0 && d < 9.2e18; // within every type that takes it
    return bGood ? std::string() : fmt::format("'{}' is not a number above 0", sText);
}

} // namespace

void AddQueryOptions(CLI::App& command, CQueryOptions& options)
{
    CLI::Option* const pLod = command
                                  .add_option("--lod", options.dLod,
                                              "Thin to about one point a cube of this edge, coordinate units")
                                  ->check(IsAboveZero)
                                  ->type_name("SPACING");
    command
        .add_option("--points", options.nMaxPnts, "Thin to the finest level of detail of at most N points")
        ->check(IsAboveZero)
        ->type_name("N")
        ->excludes(pLod);
    command
        .add_option("--clip", options.vecClips, "Keep where ax + by + cz + d is not above 0; may be repeated")
        ->allow_extra_args(false)
        ->type_name("a,b,c,d");
    command.add_option("--box", options.sBox, "Keep what is inside a box")
        ->type_name("xmin,ymin,zmin,xmax,ymax,zmax");
    AddPlanOptions(command, options.plan);
}

void CQuery::Choose(const CPntCld& cloud)
{
    if (choose)
        pChosen = std::make_shared<const std::vector<bool>>(choose(cloud));
}

bool CQuery::IsInside(const zor::geom::PNT_3D& pnt) const
{
    return std::none_of(vecPlanes.begin(), vecPlanes.end(),
                        [&](const zor::geom::PLANE_3D& plane)
                        { return plane.IsInFrontOf(pnt.x, pnt.y, pnt.z); });
}

CQuery ParseQuery(const CQueryOptions& options)
{
    CQuery query;
    query.dLod = options.dLod;
    for (const std::string& sClip : options.vecClips)
    {
        const std::vector<double> p = ParseNumbers(sClip, ',', 4, "--clip");
        if (p[0] == 0.0 && p[1] == 0.0 && p[2] == 0.0)
            throw CUsageError("--clip: a, b and c are all 0");
        query.vecPlanes.emplace_back(p[0], p[1], p[2], p[3]);
    }
    if (!options.sBox.empty())
        AddBoxPlanes(ParseNumbers(options.sBox, ',', 6, "--box"), query.vecPlanes);
    query.choose = ParsePlan(options.plan);
    return query;
}

void RunQuery(const CPntCld& cloud, const CQuery& query, IPntCldListener& listener)
{
    const bool bLod = query.dLod > 0.0;
    if (bLod && IsBeyondCloud(cloud, query.dLod))
    {
        CQuery whole = query;
        whole.dLod = 0.0;
        CFirstOnly firstOnly(listener);
        RunQuery(cloud, whole, firstOnly);
        return;
    }
    if (query.pChosen != nullptr)
    {
        CQuery whole = query;
        whole.pChosen = nullptr;
        CChosenOnly chosenOnly(listener, *query.pChosen);
        RunQuery(cloud, whole, chosenOnly);
        return;
    }
    if (!query.vecPlanes.empty() && bLod)
        cloud.GetPnts_LodClip(&listener, query.dLod, query.vecPlanes, c_nBatch);
    else if (!query.vecPlanes.empty())
        cloud.GetPnts_Clip(&listener, query.vecPlanes, c_nBatch);
    else if (bLod)
        cloud.GetPnts_Lod(&listener, query.dLod, c_nBatch);
    else
        cloud.GetPnts(&listener, c_nBatch);
}

double FindLod(const CPntCld& cloud, CQuery query, std::int64_t nMaxPnts)
{
    query.dLod = 0.0;
    const double dExtent = CalcExtent(cloud);
    if (CountPnts(cloud, query) <= nMaxPnts || !(dExtent > 0.0))
        return 0.0;
    double dFound = dExtent;
    query.dLod = c_dFinest * std::exp2(std::ceil(std::log2(dExtent / c_dFinest)) + 1.0); // one point
    while (query.dLod >= c_dFinest && CountPnts(cloud, query) <= nMaxPnts)
    {
        dFound = query.dLod;
        query.dLod /= 2.0;
    }
    return dFound;
}

std::int64_t CountPnts(const CPntCld& cloud, const CQuery& query)
{
    CCounter counter;
    RunQuery(cloud, query, counter);
    return counter.GetNumPnts();
}

} // namespace zorcld
