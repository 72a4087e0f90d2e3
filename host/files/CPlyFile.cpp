#include <host/files/CPlyFile.h>

#include <formats/PlyFindings.h>

#include <algorithm>

namespace zorcld
{

namespace
{

constexpr std::int64_t c_nManyItems = 1000000; // more without a byte each are no work worth telling of

CPlyHeader ReadHeader(CByteReader& reader, CPlyMeaning& meaning)
{
    CPlyHeader header;
    static_cast<void>(header.Read(reader, &meaning)); // refused or not: its cause tells
    return header;
}

} // namespace

const CFileKind CPlyFile::c_kind = {
    PntCldFile_Ply,
    "ply",
    "PLY",
    {"ply"},
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CPlyFile>(sPath, std::move(reader)); }};

CPlyFile::CPlyFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_header(ReadHeader(m_reader, m_meaning)),
      m_walk(m_header, m_reader.GetSize())
{
    const auto& vecElements = m_header.GetElements();
    m_facts.bNoProgress = std::any_of(vecElements.begin(), vecElements.end(),
                                      [](const CPlyElement& element) {
                                          return element.nNumProps == 0 && element.nAnnounced > c_nManyItems;
                                      });
    if (m_meaning.GetCause().empty())
        m_facts.vecFindings = FindPlyFindings(m_meaning);
    m_reader.SetOnBlock([this](std::int64_t nPos, std::string_view sBlock) { m_walk.Take(nPos, sBlock); });
}

/// What the walk has missed: mostly the lists behind the vertices.
CFileCause CPlyFile::FindCause()
{
    while (m_walk.GetPosWanted() >= 0 && m_reader.ReadBlockAt(m_walk.GetPosWanted()))
    {
    }
    return m_walk.GetCause();
}

} // namespace zorcld
