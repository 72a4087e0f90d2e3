#include <host/files/CGridFile.h>

#include <formats/AsciiGridKeys.h>
#include <host/files/CGridSource.h>

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
    if (!m_sHeadCause.empty() || !m_meaning.IsPlaceLost())
        return;
    if (m_meaning.xCorner && m_meaning.yCorner)
        m_facts.vecFindings.push_back(
            {"grid-zero-corner",
             "its corner is 0, 0 and no centre is given: such a corner counts as not given, and all "
             "points lie at 1.7e200, 1.7e200",
             true, ""});
    else
        m_facts.vecFindings.push_back(
            {"grid-centre-only",
             "it gives the centre of its lower left cell (xllcenter, yllcenter), but "
             "no corner: all points lie at 1.7e200, 1.7e200",
             true, ""});
}

std::unique_ptr<IPntSource> CGridFile::MakeSource()
{
    return MakeGridSource(GetPath(), m_meaning, m_reader);
}

std::string CGridFile::CalcDataCause(std::int64_t nNumRead)
{
    const std::int64_t nNumPnts = nNumRead < 0 ? CountByReading() : nNumRead;
    return nNumPnts > 0 ? "" : "no cell holds a height: there are none, or all have the no-data value";
}

} // namespace zorcld
