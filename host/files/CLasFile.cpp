#include <host/files/CLasFile.h>
#include <host/files/CloudSteps.h>
#include <host/files/IPntSource.h>
#include <host/files/LasFacts.h>
#include <host/files/SourceFacts.h>
#include <host/output/GroupDigits.h>

#include <zor4data/CPntCld.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorcld
{

const CFileKind CLasFile::c_kind = {
    PntCldFile_Las,
    "las",
    "LAS",
    {"las", "laz"},
    [](std::string_view sFirst) { return sFirst.substr(0, 4) == "LASF"; },
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CLasFile>(sPath, std::move(reader)); }};

CLasFile::CLasFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_sHeaderCause(ReadLasHeader(sPath, m_header))
{
    m_sHeadCause = ZORCLD_HAS_LAS ? m_sHeaderCause
                                  : "this zorcld was built without a library that reads LAS (ZOR4DATA_LAS)";
    if (!m_sHeaderCause.empty())
        return;
    m_facts.nAnnounced = m_header.nNumPnts;
    m_facts.nHeld = m_header.CalcNumHeld();
    FindCountFindings();
    if (m_header.HasColor() && !m_header.IsColorTaken())
        m_facts.vecFindings.push_back(
            {"las-color",
             fmt::format("its colours are not taken, since its point format is {}: those of formats 2, 3 and "
                         "5 are",
                         m_header.nFormat),
             !m_header.bCompressed,
             m_header.bCompressed ? "unpack it to .las first, then zorcld convert keeps them" : ""});
}

void CLasFile::FindCountFindings()
{
    if (m_facts.nHeld >= 0 && m_facts.nHeld < m_facts.nAnnounced)
        m_facts.vecFindings.push_back(
            {"las-count",
             fmt::format("its header announces {} points, but {} are there: it is cut off, and "
                         "a point at the first one's place comes for the missing ones",
                         m_facts.nAnnounced, m_facts.nHeld),
             m_facts.nHeld > 0, ""});
    if (m_facts.nAnnounced == 0)
        m_facts.vecFindings.push_back({"las-empty", "it holds no points", false, ""});
    if (m_facts.nAnnounced > std::numeric_limits<std::int32_t>::max())
        m_facts.vecFindings.push_back(
            {"las-too-many",
             fmt::format("its header announces {} points, a cloud holds 2147483647 at most",
                         m_facts.nAnnounced),
             false, "split it into tiles"});
}

std::unique_ptr<IPntSource> CLasFile::MakeSource()
{
    if (m_sHeaderCause.empty() && m_header.bCompressed)
        return nullptr;
    return MakeLasSource(GetPath(), m_header, m_sHeaderCause, m_reader);
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
    constexpr double c_dNearEnd = c_dReach - 0.0001;
    if (!m_sHeaderCause.empty())
        return;
    const auto calcDist = [&](double d, std::size_t k)
    { return std::fabs(d - CalcOrigin(m_header.adFirst[k])); };
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
             fmt::format("points lie more than 214748 units from the first one ({:.10g} {:.10g} {:.10g}) and "
                         "are moved to that distance",
                         m_header.adFirst[0], m_header.adFirst[1], m_header.adFirst[2]),
             false, m_header.bCompressed ? "unpack it to .las and check that" : ""});
}

/// Of a compressed file, only reading it tells how many points it holds: one call a point, and no more.
std::int64_t CLasFile::CountRead(std::int64_t nNumCalls, std::vector<CFinding>& vecFindings) const
{
    if (m_facts.nHeld >= 0 || nNumCalls >= m_facts.nAnnounced)
        return m_facts.CalcNumPnts();
    vecFindings.push_back(
        {"las-count",
         fmt::format("its header announces {} points, but {} could be read: it is damaged or cut off",
                     m_facts.nAnnounced, nNumCalls),
         false, ""});
    return nNumCalls;
}

void CLasFile::Describe(nlohmann::ordered_json& info) const
{
    info["las"] = m_sHeaderCause.empty() ? CollectLasFacts(m_header) : nlohmann::ordered_json();
}

void CLasFile::Print(const nlohmann::ordered_json& info) const
{
    PrintLasFacts(info["las"]);
}

} // namespace zorcld
