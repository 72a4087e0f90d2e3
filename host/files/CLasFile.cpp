#include <host/files/CLasFile.h>

#include <formats/LasFindings.h>
#include <host/files/ColorFindings.h>
#include <host/files/SourceFacts.h>
#include <host/output/FormatCoord.h>
#include <host/output/FormatCount.h>
#include <host/output/PrintLine.h>
#include <zor4data/CPntCld.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

using TJson = nlohmann::ordered_json;

/// Records up to which they are told.
constexpr std::size_t c_nMaxRecords = 1000;

/// The first returns up to the last of which there is one.
std::vector<std::int64_t> TrimReturns(std::vector<std::int64_t> vecNumByReturn)
{
    while (!vecNumByReturn.empty() && vecNumByReturn.back() == 0)
        vecNumByReturn.pop_back();
    return vecNumByReturn;
}

std::string FormatAxes(const TJson& values)
{
    return fmt::format("{} {} {}", values[0].get<double>() + 0.0, values[1].get<double>() + 0.0,
                       values[2].get<double>() + 0.0); // no minus before 0
}

std::string TextOrNone(const TJson& text)
{
    const std::string sText = text.get<std::string>();
    return sText.empty() ? "not given" : sText;
}

void PrintReturns(const TJson& returns)
{
    std::string sText;
    for (const TJson& count : returns)
        sText += (sText.empty() ? "" : ", ") + GroupDigits(count.get<std::int64_t>());
    PrintLine("Points by return", sText.empty() ? "not given" : sText);
}

/// What the header of a LAS or LAZ file says, for `info --json`.
TJson CollectLasFacts(const CLasHeader& header, const std::vector<CLasRecord>& vecRecords)
{
    TJson facts;
    facts["version"] = fmt::format("{}.{}", header.nMajor, header.nMinor);
    facts["point_format"] = header.nFormat;
    facts["point_bytes"] = header.nPntSize;
    facts["compressed"] = header.bCompressed;
    facts["points"] = header.GetNumAnnounced();
    facts["points_by_return"] = TrimReturns(header.vecNumByReturn);
    facts["scale"] = header.adScale;
    facts["offset"] = header.adOffset;
    facts["bounds"] = {{"min", header.adMin}, {"max", header.adMax}};
    facts["system_identifier"] = header.sSystem;
    facts["generating_software"] = header.sSoftware;
    facts["created"] = header.GetDate();
    facts["records"] = TJson::array();
    for (const CLasRecord& record : vecRecords)
        facts["records"].push_back({{"user", record.GetUser()},
                                    {"id", record.GetId()},
                                    {"bytes", record.GetSize()},
                                    {"description", record.GetDescription()}});
    return facts;
}

/// The same for people, on standard output, a label of 20 characters before each.
void PrintLasFacts(const TJson& facts)
{
    PrintLine("LAS version", fmt::format("{}{}", facts["version"].get<std::string>(),
                                         facts["compressed"].get<bool>() ? ", compressed (LAZ)" : ""));
    PrintLine("Point format", fmt::format("{} ({} bytes a point)", facts["point_format"].get<int>(),
                                          facts["point_bytes"].get<int>()));
    PrintReturns(facts["points_by_return"]);
    PrintLine("Scale", FormatAxes(facts["scale"]));
    PrintLine("Offset", FormatAxes(facts["offset"]));
    const char* pLabel = "Bounds in header";
    for (std::size_t k = 0; k < 3; ++k, pLabel = "")
        PrintLine(pLabel, fmt::format("{} {} to {}", "xyz"[k],
                                      FormatCoord(facts["bounds"]["min"][k].get<double>(), 14),
                                      FormatCoord(facts["bounds"]["max"][k].get<double>(), 14)));
    PrintLine("System identifier", TextOrNone(facts["system_identifier"]));
    PrintLine("Generating software", TextOrNone(facts["generating_software"]));
    PrintLine("Created", TextOrNone(facts["created"]));
}

} // namespace

const CFileKind CLasFile::c_kind = {
    PntCldFile_Las,
    "las",
    "LAS",
    {"las", "laz"},
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CLasFile>(sPath, std::move(reader)); }};

CLasFile::CLasFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_guard(sPath.c_str()), m_header(m_guard.GetHeader())
{
    if (!m_guard.Check())
        return;
    m_adFirst = m_guard.ReadFirstPnt();
    CLasRecords records = m_guard.GetRecords();
    for (CLasRecord record; m_vecRecords.size() < c_nMaxRecords && records.Next(record);)
        m_vecRecords.push_back(record);
    m_facts.coords = m_guard.ReadCoordSystem();
    m_facts.nHeld = m_header.CalcNumHeld();
    m_facts.vecFindings = FindLasFindings(m_guard, ZORCLD_HAS_LASZIP);
}

/// Scales and offsets that are not numbers, or too large ones, show in the first point already.
bool CLasFile::IsPlaceTaken() const
{
    const CSourcePnt first{m_adFirst[0], m_adFirst[1], m_adFirst[2], 0, 0, 0};
    return first.IsFinite() && first.IsInReachOf(first);
}

void CLasFile::FindInPnts(const CSourceFacts& facts, std::vector<CFinding>& vecFindings) const
{
    if (facts.nMaxColor > 0 && !m_header.IsColorTaken())
        vecFindings.push_back(FindUntakenColors(m_header, ZORCLD_HAS_LASZIP));
    if (m_header.IsColorTaken() && facts.nMaxColorTaken > 255 && facts.nNumLowColors > 0)
        vecFindings.push_back(
            {"color-16-bit",
             fmt::format("its colours have 16 bits (up to {}), and of {} a channel from 1 to 255 is "
                         "taken as one of 8 bits: far too bright",
                         facts.nMaxColorTaken, FormatCount(facts.nNumLowColors, "point")),
             true, ""});
}

/// Points out of the first one's reach lie at the end of it once they are loaded. (The bounds of a cloud do
/// not tell: they are those of its octree.)
void CLasFile::FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings)
{
    constexpr double c_dNearEnd = c_dReach - 1.0 / c_dCompactScale;
    if (!m_guard.GetCause().empty() || CalcNumPnts() == 0)
        return;
    if (m_header.HasColor() && !m_header.IsColorTaken())
        vecFindings.push_back(HasLasColors(m_guard) ? FindUntakenColors(m_header, ZORCLD_HAS_LASZIP)
                                                    : FindZeroColors(false));
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
             true, ""});
    CInputFile::FindInCloud(cloud, vecFindings);
}

/// Of a compressed file, only reading it tells how many points it holds.
void CLasFile::FindInCount(std::int64_t nNumRead, std::vector<CFinding>& vecFindings)
{
    const std::int64_t nAnnounced = m_header.GetNumAnnounced();
    if (m_facts.nHeld < 0 && nNumRead < nAnnounced)
        vecFindings.push_back(FindUnreadPnts(nAnnounced, nNumRead, ZORCLD_HAS_LASZIP));
}

void CLasFile::Describe(nlohmann::ordered_json& info) const
{
    info["las"] = m_guard.GetCause().empty() ? CollectLasFacts(m_header, m_vecRecords) : TJson();
}

void CLasFile::Print(const nlohmann::ordered_json& info) const
{
    if (!info["las"].is_null())
        PrintLasFacts(info["las"]);
}

} // namespace zorcld
