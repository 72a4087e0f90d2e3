#include <host/files/CNativeFile.h>

#include <formats/NativeFindings.h>
#include <zor4data/CPntCld.h>

#include <algorithm>

namespace zorcld
{

const CFileKind CNativeFile::c_kind = {
    PntCldFile_Native,
    "native",
    "native cloud file",
    {"cld"},
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CNativeFile>(sPath, std::move(reader)); }};

CNativeFile::CNativeFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_native(FindNativeFacts(m_reader))
{
    m_sWrong = m_native.header.FindCause();
    m_facts.nHeld = m_native.nNumHeld;
    m_facts.bDuplicates = false; // they were removed before it was written
    m_facts.vecFindings = FindNativeFindings(m_native);
}

bool CNativeFile::HasWrongBox()
{
    return m_native.bTreeHeader && m_native.nNumHeld > 0 && m_native.treeHeader.IsPossible() &&
           !HasBoxOfItsPnts(m_reader, m_native);
}

void CNativeFile::FindByReading(std::vector<CFinding>& vecFindings)
{
    if (HasWrongBox())
        vecFindings.push_back(MakeNativeBoxFinding());
}

void CNativeFile::Mend(CPntCld& cloud)
{
    if (!m_native.IsWhole() || HasWrongBox())
        cloud.ComputeTree();
}

} // namespace zorcld
