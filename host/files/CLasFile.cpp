#include <host/files/CLasFile.h>

#include <host/files/CLasSource.h>
#include <host/files/FindUnreadPnts.h>
#include <host/files/LasFacts.h>
#include <host/files/SourceFacts.h>
#include <host/output/GroupDigits.h>

#include <zor4data/CPntCld.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

/// Records up to which they are told.
constexpr std::size_t c_nMaxRecords = 1000;

/// `zorcld convert` reads the points itself.
constexpr bool c_bHasSource = ZORCLD_HAS_LASZIP;

} // namespace

const CFileKind CLasFile::c_kind = {
    PntCldFile_Las,
    "las",
    "LAS",
    {"las", "laz"},
    [](std::string_view sFirst) { return sFirst.substr(0, 4) == "LASF"; },
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CLasFile>(sPath, std::move(reader)); }};

CLasFile::CLasFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_guard(sPath.c_str()), m_header(m_guard.GetHeader())
{
    const bool bLet = m_guard.Check();
    m_sHeadCause = ZORCLD_HAS_LAS ? m_guard.GetCause()
                                  : "this zorcld was built without a library that reads LAS (ZOR4DATA_LAS)";
    if (!bLet)
        return;
    m_adFirst = m_guard.ReadFirstPnt();
    CLasRecords records = m_guard.GetRecords();
    for (CLasRecord record; m_vecRecords.size() < c_nMaxRecords && records.Next(record);)
        m_vecRecords.push_back(record);
    m_facts.nAnnounced = m_header.nNumPnts;
    m_facts.nHeld = m_header.CalcNumHeld();
    FindCountFindings();
    if (m_header.HasColor() && !m_header.IsColorTaken())
        m_facts.vecFindings.push_back(
            {"las-color",
             fmt::format("its colours are not taken, since its point format is {}: those of formats 2, 3 and "
                         "5 are",
                         m_header.nFormat),
             c_bHasSource, ""});
}

void CLasFile::FindCountFindings()
{
    if (m_facts.nHeld >= 0 && m_facts.nHeld < m_facts.nAnnounced)
        m_facts.vecFindings.push_back(
            {"las-count",
             fmt::format("its header announces {} points, but {} are there: it is cut off, and "
                         "a point at the first one's place comes for the missing ones",
                         m_facts.nAnnounced, m_facts.nHeld),
             c_bHasSource && m_facts.nHeld > 0, ""});
    if (m_facts.nAnnounced == 0)
        m_facts.vecFindings.push_back({"las-empty", "it holds no points", false, ""});
    if (m_facts.nAnnounced > c_nMaxCloudPnts)
        m_facts.vecFindings.push_back({"las-too-many",
                                       fmt::format("its header announces {} points, a cloud holds {} at most",
                                                   m_facts.nAnnounced, c_nMaxCloudPnts),
                                       false, "split it into tiles"});
}

std::unique_ptr<IPntSource> CLasFile::MakeSource()
{
    return MakeLasSource(GetPath(), m_guard);
}

void CLasFile::FindInPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings) const
{
    if (facts.HasDeepColor() && facts.nNumLowColors > 0)
        vecFindings.push_back(
            {"color-16-bit",
             fmt::format("its colours have 16 bits (up to {}), and of {} points a channel from 1 to 255 is "
                         "taken as one of 8 bits: far too bright",
                         facts.nMaxColor, GroupDigits(facts.nNumLowColors)),
             true, ""});
}

/// Points out of the first one's reach lie at the end of it once they are loaded. (The bounds of a cloud do
/// not tell: they are those of its octree.)
void CLasFile::FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings) const
{
    constexpr double c_dNearEnd = c_dReach - 1.0 / c_dCompactScale;
    if (!m_guard.GetCause().empty())
        return;
    const auto calcDist = [&](double d, std::size_t k)
    { return std::fabs(d - static_cast<double>(SaturateToFloat(m_adFirst[k]))); };
    double dReach = 0.0;
    for (int i = 0; i < cloud.GetNumPnts() && dReach < c_dNearEnd; ++i)
    {
        zor::geom::PNT_3D pnt;
        cloud.GetPnt(i, pnt);
        dReach = std::max({calcDist(pnt.x, 0), calcDist(pnt.y, 1), calcDist(pnt.z, 2)});
    }
    if (dReach >= c_dNearEnd)
        vecFindings.push_back(
            {"span",
             fmt::format("points lie more than {} units from the first one ({:.10g} {:.10g} {:.10g}) and "
                         "are moved to that distance",
                         c_nReach, m_adFirst[0], m_adFirst[1], m_adFirst[2]),
             false, ""});
}

/// Of a compressed file, only reading it tells how many points it holds: one call a point, and no more.
std::int64_t CLasFile::CountRead(std::int64_t nNumCalls, std::vector<CFinding>& vecFindings) const
{
    if (m_facts.nHeld >= 0 || nNumCalls >= m_facts.nAnnounced)
        return m_facts.CalcNumPnts();
    vecFindings.push_back(FindUnreadPnts(m_facts.nAnnounced, nNumCalls));
    return nNumCalls;
}

void CLasFile::Describe(nlohmann::ordered_json& info) const
{
    info["las"] =
        m_guard.GetCause().empty() ? CollectLasFacts(m_header, m_vecRecords) : nlohmann::ordered_json();
}

void CLasFile::Print(const nlohmann::ordered_json& info) const
{
    PrintLasFacts(info["las"]);
}

} // namespace zorcld
