#include <host/files/CGridFile.h>

#include <formats/AsciiGridFindings.h>
#include <formats/AsciiGridKeys.h>

namespace zorcld
{

const CFileKind CGridFile::c_kind = {
    PntCldFile_AsciiGrid,
    "grid",
    "ESRI ASCII grid",
    {"asc", "agr"},
    IsAsciiGridStart,
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CGridFile>(sPath, std::move(reader)); }};

/// The cells with a height are not counted in the header, so that no points are announced.
CGridFile::CGridFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_meaning(ReadAsciiGridMeaning(m_reader))
{
    m_sHeadCause = m_meaning.FindTakenCause();
    m_facts.vecFindings = FindAsciiGridFindings(m_meaning);
}

std::string CGridFile::CalcDataCause(std::int64_t nNumRead)
{
    const std::int64_t nNumPnts = nNumRead < 0 ? CountByReading() : nNumRead;
    if (nNumPnts > 0)
        return {};
    std::string sCause = m_meaning.FindCause(); // counts beyond the library's are none by their words
    return !sCause.empty() ? sCause : "no cell holds a height: there are none, or all have the no-data value";
}

} // namespace zorcld
