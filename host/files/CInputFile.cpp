#include <host/files/CInputFile.h>

#include <formats/CloudLimits.h>
#include <host/files/CFileKind.h>
#include <host/files/ColorFindings.h>
#include <host/output/CFailure.h>
#include <host/output/HasColors.h>
#include <zor4data/CPntArrays.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace zorcld
{

std::int64_t CFileFacts::CalcNumPnts() const
{
    return nHeld < 0 ? nAnnounced : std::min(nHeld, nAnnounced);
}

CInputFile::CInputFile(const CFileKind& kind, const std::string& sPath, CByteReader&& reader)
    : m_reader(std::move(reader)), m_kind(kind), m_input{sPath, ""}
{
}

const std::string& CInputFile::FindCause(std::int64_t nNumRead)
{
    if (!m_sCause)
        m_sCause = m_sHeadCause.empty() ? CalcDataCause(nNumRead) : m_sHeadCause;
    return *m_sCause;
}

std::string CInputFile::CalcDataCause(std::int64_t)
{
    return {};
}

std::unique_ptr<IPntSource> CInputFile::MakeSource()
{
    CMadeSource made = TryMakeSource();
    if (!made.sCause.empty())
        throw CFailure(m_input.sPath, made.sCause);
    return std::move(made.pSource);
}

std::vector<CLeftOut> CInputFile::FindLeftOut()
{
    const CMadeSource made = TryMakeSource();
    if (made.pSource == nullptr)
        return {};
    if (HasLeftOutInPnts())
        static_cast<void>(made.pSource->ForEach([](const CSourcePnt&) {})); // what is damaged has been told
    return made.pSource->GetLeftOut();
}

namespace
{

/// Does the library take other numbers from the file than those that are meant?
bool HasOtherNumbers(const std::vector<CFinding>& vecFindings)
{
    constexpr std::array<std::string_view, 3> c_codes = {"ply-coordinates", "ply-sized-types", "grid-tabs"};
    return std::any_of(vecFindings.begin(), vecFindings.end(),
                       [&](const CFinding& finding)
                       { return std::count(c_codes.begin(), c_codes.end(), finding.pCode) != 0; });
}

} // namespace

bool CInputFile::ReadTaken(const IPntSource::TOnPnt& onPnt)
{
    if (HasOtherNumbers(m_facts.vecFindings))
        return false;
    const CMadeSource made = TryMakeSource();
    return made.pSource != nullptr && made.pSource->ForEach(onPnt).empty() &&
           !HasOtherNumbers(made.pSource->GetFindings());
}

static bool HasCode(const std::vector<CFinding>& vecFindings, std::string_view sCode)
{
    return std::any_of(vecFindings.begin(), vecFindings.end(),
                       [&](const CFinding& finding) { return finding.pCode == sCode; });
}

/// Coordinates out of reach, infinite ones too, end where the compact numbers end.
static bool HasMovedPnts(const CPntCld& cloud)
{
    const CPntArrays arrays = GetPntArrays(cloud);
    for (int i = 0; i < arrays.nNumPnts; ++i)
    {
        std::array<std::int32_t, 3> anCoords{};
        std::memcpy(anCoords.data(), arrays.pPnts + std::ptrdiff_t{i} * arrays.nStride, sizeof anCoords);
        const auto [itMin, itMax] = std::minmax_element(anCoords.begin(), anCoords.end());
        if (*itMin == std::numeric_limits<std::int32_t>::min() ||
            *itMax == std::numeric_limits<std::int32_t>::max())
            return true;
    }
    return false;
}

std::int64_t CInputFile::CountByReading()
{
    std::int64_t nNumPnts = 0;
    const CMadeSource made = TryMakeSource();
    const bool bRead =
        made.pSource != nullptr && made.pSource->ForEach([&](const CSourcePnt&) { ++nNumPnts; }).empty();
    return bRead ? nNumPnts : 0;
}

void CInputFile::FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings)
{
    if (cloud.IsWithColor() && cloud.GetNumPnts() > 0 && !HasColors(cloud))
        vecFindings.push_back(FindZeroColors(true));
    const bool bAsItStands = m_kind.eFile == PntCldFile_Native; // its own numbers
    if (!bAsItStands && HasMovedPnts(cloud) && !HasCode(vecFindings, "span"))
        vecFindings.push_back(
            {"span",
             fmt::format("points lie more than {} units from the first one and are moved to "
                         "that distance",
                         c_nReach),
             true, ""});
}

std::int64_t CInputFile::CountRead(std::int64_t, std::vector<CFinding>&) const
{
    return m_facts.CalcNumPnts();
}

} // namespace zorcld
