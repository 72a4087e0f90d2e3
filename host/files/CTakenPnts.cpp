#include <host/files/CTakenPnts.h>

#include <host/output/CFailure.h>
#include <host/output/FormatCount.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

bool IsSamePlace(const CSourcePnt& one, const CSourcePnt& other)
{
    return one.x == other.x && one.y == other.y && one.z == other.z && one.r == other.r && one.g == other.g &&
           one.b == other.b;
}

double CalcMedian(const std::vector<CSourcePnt>& vecSample, double CSourcePnt::*pCoord)
{
    std::vector<double> vecValues;
    vecValues.reserve(vecSample.size());
    for (const CSourcePnt& pnt : vecSample)
        vecValues.push_back(pnt.*pCoord);
    const auto middle = vecValues.begin() + static_cast<std::ptrdiff_t>(vecValues.size() / 2);
    std::nth_element(vecValues.begin(), middle, vecValues.end());
    return *middle;
}

/// @return the point of the sample that is nearest to the place, by the largest of its distances in x, y, z.
CSourcePnt FindNearest(const std::vector<CSourcePnt>& vecSample, double x, double y, double z)
{
    const auto calcDist = [&](const CSourcePnt& pnt) {
        return std::max({std::fabs(pnt.x - x), std::fabs(pnt.y - y), std::fabs(pnt.z - z)});
    };
    return *std::min_element(vecSample.begin(), vecSample.end(),
                             [&](const CSourcePnt& one, const CSourcePnt& other)
                             { return calcDist(one) < calcDist(other); });
}

/// The first point of the file is a bad one to begin with: takes one in the middle of all, or where most are.
CSourcePnt ChooseFirst(const CSourceFacts& facts)
{
    const zor::geom::RECT_3D& box = facts.summary.box;
    const auto& vecSample = facts.vecSample;
    if (facts.summary.CalcExtent() <= 2.0 * c_dReach)
        return FindNearest(vecSample, (box.xmin + box.xmax) / 2, (box.ymin + box.ymax) / 2,
                           (box.zmin + box.zmax) / 2);
    return FindNearest(vecSample, CalcMedian(vecSample, &CSourcePnt::x),
                       CalcMedian(vecSample, &CSourcePnt::y), CalcMedian(vecSample, &CSourcePnt::z));
}

} // namespace

CTakenPnts::CTakenPnts(IPntSource& source, const std::string& sPath, const CConsole& console)
    : m_source(source), m_sPath(sPath)
{
    const CSourceFacts facts = CollectSourceFacts(source, sPath, console, "looking at ");
    m_summary = facts.summary;
    m_first = facts.first;
    m_bDeepColor = facts.HasDeepColor();
    if (facts.nNumFar > 0)
        MoveFirst(facts);
    Check(facts);
}

bool CTakenPnts::CanTake(const CSourceFacts& facts)
{
    const CSourcePnt first = facts.nNumFar > 0 ? ChooseFirst(facts) : facts.first;
    const auto nNumSample = static_cast<std::int64_t>(facts.vecSample.size());
    const std::int64_t nNumNear =
        std::count_if(facts.vecSample.begin(), facts.vecSample.end(),
                      [&](const CSourcePnt& pnt) { return pnt.IsInReachOf(first); }) +
        (first.IsInReachOf(first) ? 0 : 1); // it is taken all the same
    const double dNear = static_cast<double>(facts.summary.nNumPnts) * static_cast<double>(nNumNear) /
                         static_cast<double>(std::max<std::int64_t>(nNumSample, 1));
    return nNumSample - nNumNear <= nNumSample / 2 && dNear > 0.0 &&
           dNear <= static_cast<double>(c_nMaxCloudPnts);
}

void CTakenPnts::MoveFirst(const CSourceFacts& facts)
{
    m_first = ChooseFirst(facts);
    m_bMoveFirst = true;
    m_summary = CPntSummary();
    m_summary.bColor = facts.summary.bColor;
    ForEach([&](const CSourcePnt& pnt) { m_summary.Add({pnt.x, pnt.y, pnt.z}); });
}

void CTakenPnts::Check(const CSourceFacts& facts)
{
    const std::int64_t nNumPnts = facts.summary.nNumPnts;
    const std::int64_t nNumLeftOut = nNumPnts - m_summary.nNumPnts;
    if (nNumPnts == 0)
        throw CFailure(m_sPath, facts.nNumNotFinite == 0 ? "holds no points"
                                                         : "holds no point whose coordinates are numbers");
    if (nNumLeftOut > nNumPnts / 2)
        throw CFailure(
            m_sPath,
            fmt::format("its points lie too far apart: of {} only {} {} within {} units of one of them",
                        nNumPnts, m_summary.nNumPnts, OneOrMany(m_summary.nNumPnts, "lies", "lie"),
                        c_nReach));
    if (m_summary.nNumPnts > c_nMaxCloudPnts)
        throw CFailure(m_sPath, fmt::format("holds {}, a cloud {} at most",
                                            CountOf(m_summary.nNumPnts, "point"), c_nMaxCloudPnts));
    if (facts.nNumNotFinite > 0)
        m_vecNotes.push_back(fmt::format("{} whose coordinates are not numbers {} left out",
                                         FormatCount(facts.nNumNotFinite, "point"),
                                         OneOrMany(facts.nNumNotFinite, "is", "are")));
    if (nNumLeftOut > 0)
        m_vecNotes.push_back(fmt::format("{} more than {} units from the others {} left out",
                                         FormatCount(nNumLeftOut, "point"), c_nReach,
                                         OneOrMany(nNumLeftOut, "is", "are")));
    if (m_bMoveFirst)
        m_vecNotes.push_back(
            fmt::format("another point comes first, so that the others lie within {} units of it", c_nReach));
    if (m_bDeepColor)
        m_vecNotes.emplace_back("colours of 16 bits are written as 8 bits");
}

CSourcePnt CTakenPnts::WithByteColor(CSourcePnt pnt) const
{
    if (m_bDeepColor)
        for (std::uint16_t* const pChannel : {&pnt.r, &pnt.g, &pnt.b})
            *pChannel = static_cast<std::uint16_t>(*pChannel >> 8U);
    return pnt;
}

void CTakenPnts::ForEach(const TOnPnt& onPnt) const
{
    if (m_bMoveFirst)
        onPnt(WithByteColor(m_first));
    bool bSkipFirst = m_bMoveFirst;
    const std::string sCause = m_source.ForEach(
        [&](const CSourcePnt& pnt)
        {
            if (!pnt.IsFinite() || !pnt.IsInReachOf(m_first))
                return;
            if (bSkipFirst && IsSamePlace(pnt, m_first))
                bSkipFirst = false; // it has been delivered
            else
                onPnt(WithByteColor(pnt));
        });
    if (!sCause.empty())
        throw CFailure(m_sPath, sCause);
}

} // namespace zorcld
