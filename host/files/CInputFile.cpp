#include <host/files/CInputFile.h>

#include <host/files/IPntSource.h>
#include <host/output/CFailure.h>

#include <algorithm>
#include <utility>

namespace zorcld
{

std::int64_t CFileFacts::CalcNumPnts() const
{
    return nHeld < 0 ? nAnnounced : std::min(nHeld, nAnnounced);
}

CInputFile::CInputFile(const CFileKind& kind, const std::string& sPath, CByteReader&& reader)
    : m_reader(std::move(reader)), m_kind(kind), m_sPath(sPath)
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

std::int64_t CInputFile::CountByReading()
{
    std::int64_t nNumPnts = 0;
    try
    {
        if (const std::unique_ptr<IPntSource> pSource = MakeSource())
            pSource->ForEach([&](const CSourcePnt&) { ++nNumPnts; });
    }
    catch (const CFailure&)
    {
        return 0;
    }
    return nNumPnts;
}

std::int64_t CInputFile::CountRead(std::int64_t, std::vector<CFinding>&) const
{
    return m_facts.CalcNumPnts();
}

} // namespace zorcld
