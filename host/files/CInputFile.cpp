#include <host/files/CInputFile.h>

#include <host/files/CFileKind.h>
#include <host/files/ColorFindings.h>
#include <host/files/PntFindings.h>
#include <host/output/CFailure.h>
#include <host/output/HasColors.h>
#include <zor4data/CPntArrays.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace zorcld
{

CInputFile::CInputFile(const CFileKind& kind, const std::string& sPath, CByteReader&& reader)
    : m_reader(std::move(reader)), m_kind(kind), m_input{sPath, ""}
{
}

const CFileFacts& CInputFile::GetFileFacts()
{
    if (!m_fileFacts)
        m_fileFacts = CalcFileFacts();
    return *m_fileFacts;
}

CFileFacts CInputFile::CalcFileFacts() const
{
    return FindFileFacts(zor::String(GetPath()), m_kind.eFile);
}

std::int64_t CInputFile::CalcNumPnts()
{
    const std::int64_t nAnnounced = GetFileFacts().nAnnounced;
    return m_facts.nHeld < 0 ? nAnnounced : std::min(m_facts.nHeld, nAnnounced);
}

CFileCause CInputFile::FindHeadCause()
{
    const CFileFacts& facts = GetFileFacts();
    return {facts.eCause, facts.eCause == FileCause_None ? m_sWrong : facts.sCause};
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

std::string CInputFile::FindUnreadable()
{
    const CMadeSource made = TryMakeSource();
    if (!made.sCause.empty() || made.pSource == nullptr || !HasOtherNumbers(m_facts.vecFindings))
        return made.sCause;
    return made.pSource->ForEach([](const CSourcePnt&) {}); // other sizes lead it past the end
}

static bool HasCode(const std::vector<CFinding>& vecFindings, std::string_view sCode)
{
    return std::any_of(vecFindings.begin(), vecFindings.end(),
                       [&](const CFinding& finding) { return finding.pCode == sCode; });
}

/// Coordinates out of reach, infinite ones too, end where the compact numbers end.
/// @param nFirstAxis  0: x is looked at, too; 2: z only.
static bool HasMovedPnts(const CPntCld& cloud, std::ptrdiff_t nFirstAxis)
{
    const CPntArrays arrays = GetPntArrays(cloud);
    for (int i = 0; i < arrays.nNumPnts; ++i)
    {
        std::array<std::int32_t, 3> anCoords{};
        std::memcpy(anCoords.data(), arrays.pPnts + std::ptrdiff_t{i} * arrays.nStride, sizeof anCoords);
        const auto [itMin, itMax] = std::minmax_element(anCoords.begin() + nFirstAxis, anCoords.end());
        if (*itMin == std::numeric_limits<std::int32_t>::min() ||
            *itMax == std::numeric_limits<std::int32_t>::max())
            return true;
    }
    return false;
}

void CInputFile::FindInCloud(const CPntCld& cloud, std::vector<CFinding>& vecFindings)
{
    if (cloud.IsWithColor() && cloud.GetNumPnts() > 0 && !HasColors(cloud))
        vecFindings.push_back(FindZeroColors(true));
    const bool bAsItStands = m_kind.eFile == PntCldFile_Native; // its own numbers
    if (!bAsItStands && HasMovedPnts(cloud, IsPlaceLost() ? 2 : 0) && !HasCode(vecFindings, "span"))
        vecFindings.push_back(FindMovedPnts());
    if (const std::string sCause = FindUnreadable(); !sCause.empty())
        vecFindings.push_back(FindUnreadablePnts(sCause));
}

} // namespace zorcld
