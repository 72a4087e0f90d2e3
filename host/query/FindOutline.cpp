#include <host/query/FindOutline.h>

#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/query/CEachPnt.h>
#include <host/query/CalcDensity.h>
#include <host/query/CalcLargestShare.h>
#include <zor4data/CPntCld.h>
#include <zor4data/CalcCntWithin.h>
#include <zor4data/FindPntsInPolygons.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace zorcld
{

namespace
{

// Points scattered at random hang together from about 1.2 times their spacing on. Scan lines lie two to three
// times as far apart; at four times airborne scans of all kinds came out in one piece, and water still as
// water.
constexpr double c_adSpacings[] = {4.0, 8.0, 16.0, 32.0, 3.0, 6.0, 12.0, 24.0, 48.0};
constexpr int c_nFewTries = 4; // of a large cloud: the others are for strips of few rows

constexpr double c_dWhole = 0.95; // of the points: what lies beside is not missed
constexpr double c_dEnough = 0.9; // of a cloud of more points than
constexpr int c_nMaxQuick = 100000;

constexpr std::int64_t c_nEndless = std::numeric_limits<std::int64_t>::max();

bool IsLarge(const CPntCld& cloud)
{
    return cloud.GetNumPnts() > c_nMaxQuick;
}

bool HoldsShare(const COutline& outline, const CPntCld& cloud, double dShare)
{
    return static_cast<double>(outline.nNumInside) >= dShare * cloud.GetNumPnts();
}

/// @param nMaxLooks  what the walk may take.
enumOutline WalkOutline(const CPntCld& cloud, const CConsole& console, double dDistance,
                        std::int64_t nMaxLooks, COutline& outline)
{
    CProgressBar progress(console, fmt::format("outline at distance {:.4g}", dDistance));
    progress.Start();
    const auto add = [&](const CCldCadPnt& pnt) { outline.vecCorners.push_back(pnt); };
    CEachPnt<decltype(add)> listener(add);
    outline.dDistance = dDistance;
    return CalcCntWithin(cloud, &progress, &listener, dDistance, nMaxLooks);
}

/// Counted by place, since the walk may go around less than the part whose points it goes by: a spur that it
/// begins at closes it early. What the walk passes by at a quarter of the distance, most often by rounding,
/// counts too.
std::int64_t CountInside(const CPntCld& cloud, const COutline& outline)
{
    const TRing ring = outline.GetRing();
    std::vector<bool> vecInside(static_cast<std::size_t>(cloud.GetNumPnts()));
    const auto addInside = [&](const CCldCadPnt& pnt)
    { vecInside[static_cast<std::size_t>(pnt.m_nIndex)] = true; };
    CEachPnt<decltype(addInside)> listener(addInside);
    FindPntsInPolygons(cloud, &listener, {{ring, {}}}, false, c_nBatch);
    for (std::size_t i = 0; i < ring.size(); ++i)
        cloud.FindPnts2D_NearLine(&listener, ring[i], ring[(i + 1) % ring.size()], 0.25 * outline.dDistance,
                                  false, false);
    return std::count(vecInside.begin(), vecInside.end(), true);
}

/// Three digits of a number that was estimated are enough, and can be typed again.
double RoundToThreeDigits(double d)
{
    const double dStep = std::pow(10.0, std::floor(std::log10(d)) - 2.0);
    return std::max(std::round(d / dStep) * dStep, 1e-4);
}

/// What a look for a distance goes by.
struct CSearch
{
    const CPntCld& cloud;
    const std::string& sPath;
    const CConsole& console;
    double dSpacing = 0.0;
    std::int64_t nMaxLooks = 0; // of the walk at one distance
};

/// A distance that may do.
struct CTry
{
    double dFactor = 0.0; // times the spacing
    double dDistance = 0.0;
    double dMissed = 0.0; // share of the points that are missed surely
};

CTry MakeTry(const CSearch& search, double dFactor)
{
    const double dDistance = RoundToThreeDigits(dFactor * search.dSpacing);
    return {dFactor, dDistance, std::max(c_dWhole - CalcLargestShare(search.cloud, dDistance), 0.0)};
}

/// Walks around the largest part and keeps the outline if it holds more than the one so far.
void TryDistance(const CSearch& search, const CTry& one, COutline& best)
{
    COutline outline;
    const enumOutline eOutline =
        WalkOutline(search.cloud, search.console, one.dDistance, search.nMaxLooks, outline);
    if (eOutline == Outline_LeftOff)
        search.console.Note(
            fmt::format("{0}: at distance {1:.10g} the walk meets dead ends without number and is left "
                        "off; --distance {1:.10g} walks on",
                        search.sPath, one.dDistance));
    if (eOutline != Outline_Closed)
        return;
    outline.nNumInside = CountInside(search.cloud, outline);
    outline.sHow = fmt::format(" ({:g} times the mean plan spacing of {:.4g})", one.dFactor, search.dSpacing);
    if (outline.nNumInside > best.nNumInside)
        best = std::move(outline);
}

/// Of large clouds a walk may take minutes: where one outline is not much amiss, no other is looked for.
bool IsGoodEnough(const COutline& outline, const CPntCld& cloud)
{
    return HoldsShare(outline, cloud, IsLarge(cloud) ? c_dEnough : c_dWhole);
}

/// Goes by the distances at which the cloud hangs together as good as whole, in their order;
/// where there is none, by those at which the largest part is largest.
COutline FindAutomatic(const CSearch& search)
{
    const CPntCld& cloud = search.cloud;
    if (!(search.dSpacing > 0.0))
        throw CFailure(search.sPath, "covers no area: --distance auto has nothing to go by");
    COutline best;
    std::vector<CTry> vecOthers;
    const auto* const pEnd = IsLarge(cloud) ? c_adSpacings + c_nFewTries : std::end(c_adSpacings);
    for (const double* pFactor = c_adSpacings; pFactor != pEnd && !IsGoodEnough(best, cloud); ++pFactor)
    {
        const CTry one = MakeTry(search, *pFactor);
        if (one.dMissed > 0.0)
            vecOthers.push_back(one);
        else
            TryDistance(search, one, best);
    }
    constexpr double c_dStep = 0.01; // a part that is larger by less is no reason for a larger distance
    std::stable_sort(vecOthers.begin(), vecOthers.end(),
                     [](const CTry& a, const CTry& b)
                     { return std::ceil(a.dMissed / c_dStep) < std::ceil(b.dMissed / c_dStep); });
    for (const CTry& one : vecOthers)
        if (best.vecCorners.empty())
            TryDistance(search, one, best);
    if (best.vecCorners.empty())
        throw CFailure(search.sPath, fmt::format("has no closed outline at distances from {:.4g} to {:.4g}",
                                                 *std::min_element(c_adSpacings, pEnd) * search.dSpacing,
                                                 *std::max_element(c_adSpacings, pEnd) * search.dSpacing));
    return best;
}

} // namespace

TRing COutline::GetRing() const
{
    TRing ring;
    for (const CCldCadPnt& corner : vecCorners)
        ring.emplace_back(corner.m_pnt.x, corner.m_pnt.y);
    if (!ring.empty())
        ring.pop_back();
    return ring;
}

bool IsWhole(const COutline& outline, const CPntCld& cloud)
{
    return HoldsShare(outline, cloud, c_dWhole);
}

COutline FindOutline(const CPntCld& cloud, double dGiven, const std::string& sPath, const CConsole& console,
                     std::int64_t nMaxLooks)
{
    if (!(dGiven > 0.0))
        return FindAutomatic({cloud, sPath, console, CalcDensity(cloud).dSpacing, nMaxLooks});
    COutline outline;
    if (WalkOutline(cloud, console, dGiven, c_nEndless, outline) != Outline_Closed)
        throw CFailure(sPath, fmt::format("has no closed outline at distance {:.10g}", dGiven));
    outline.nNumInside = CountInside(cloud, outline);
    return outline;
}

} // namespace zorcld
