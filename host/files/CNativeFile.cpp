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

std::int64_t CNativeFile::CountFalsePnts()
{
    const bool bTree = m_native.treeHeader.IsPossible() && m_native.bTreeWhole;
    if (bTree && m_native.nNumInTree == m_native.nNumHeld)
        return 0;
    const std::int64_t nNumTrue = FindNumBeforeTree(m_reader, m_native);
    return nNumTrue < 0 ? 0 : m_native.nNumHeld - nNumTrue;
}

void CNativeFile::FindByReading(std::vector<CFinding>& vecFindings)
{
    if (const std::int64_t nNumFalse = CountFalsePnts(); nNumFalse > 0)
        vecFindings = {MakeNativeCountFinding(m_native.header.nNumPnts, m_native.nNumHeld - nNumFalse)};
    else if (HasWrongBox())
        vecFindings.push_back(MakeNativeBoxFinding());
}

void CNativeFile::Mend(CPntCld& cloud)
{
    const std::int64_t nNumFalse = CountFalsePnts();
    const int nNumPnts = cloud.GetNumPnts();
    cloud.UnSelPnts();
    for (std::int64_t i = nNumPnts - nNumFalse; i < nNumPnts; ++i)
        cloud.SelPnt(static_cast<int>(i), false);
    if (nNumFalse > 0)
        cloud.DelSelPnts();
    if (!m_native.IsWhole() || HasWrongBox())
        cloud.ComputeTree();
}

} // namespace zorcld
