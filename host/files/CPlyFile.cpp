#include <host/files/CPlyFile.h>
#include <host/files/IPntSource.h>
#include <host/files/PlyFindings.h>

#include <algorithm>

namespace zorcld
{

namespace
{

constexpr std::int64_t c_nManyItems = 1000000; // more without a byte each are no work worth telling of

CPlyAsRead ReadHeader(CByteReader& reader)
{
    reader.SetPos(0);
    return ReadPlyAsRead(reader);
}

} // namespace

const CFileKind CPlyFile::c_kind = {
    PntCldFile_Ply,
    "ply",
    "PLY",
    {"ply"},
    [](std::string_view sFirst) { return sFirst.substr(0, 4) == "ply\n" || sFirst.substr(0, 4) == "ply\r"; },
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CPlyFile>(sPath, std::move(reader)); }};

CPlyFile::CPlyFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_asRead(ReadHeader(m_reader)),
      m_walk(m_asRead, m_reader.GetSize())
{
    m_reader.SetPos(0);
    m_sMeantCause = ReadPlyLayout(m_reader, m_asMeant);
    m_sHeadCause = m_walk.GetCause();
    m_facts.bNoProgress = std::any_of(m_asRead.vecElements.begin(), m_asRead.vecElements.end(),
                                      [](const CPlyReadElem& element)
                                      { return element.vecProps.empty() && element.nCount > c_nManyItems; });
    if (const CPlyReadElem* const pVertices = m_asRead.FindVertices())
        m_facts.nAnnounced = pVertices->nCount;
    if (m_sMeantCause.empty())
        m_facts.vecFindings = FindPlyFindings(m_asMeant);
    m_reader.SetOnBlock([this](std::int64_t nPos, std::string_view sBlock) { m_walk.Take(nPos, sBlock); });
}

std::unique_ptr<IPntSource> CPlyFile::MakeSource()
{
    return MakePlySource(GetPath(), m_asMeant, m_sMeantCause, m_reader);
}

/// What the walk has missed: mostly the lists behind the vertices.
std::string CPlyFile::CalcDataCause(std::int64_t)
{
    while (m_walk.GetPosWanted() >= 0 && m_reader.ReadBlockAt(m_walk.GetPosWanted()))
    {
    }
    return m_walk.GetCause();
}

} // namespace zorcld
