#include <host/files/CNativeFile.h>

#include <host/files/IPntSource.h>

#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace zorcld
{

namespace
{

bool HasPrologue(std::string_view sFirst)
{
    return sFirst.size() >= c_acNativePrologue.size() &&
           std::memcmp(sFirst.data(), c_acNativePrologue.data(), c_acNativePrologue.size()) == 0;
}

CFinding FindTreeDamage(const CNativeFacts& native)
{
    const std::string sText =
        fmt::format("its octree is {}: {} of {} points are outside it, found by a query of all points only",
                    native.bTreeWhole ? "damaged" : "cut off or damaged", native.nNumHeld - native.nNumInTree,
                    native.nNumHeld);
    return {"native-octree", sText, true, ""};
}

} // namespace

const CFileKind CNativeFile::c_kind = {
    PntCldFile_Native,
    "native",
    "native cloud file",
    {"cld"},
    HasPrologue,
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CNativeFile>(sPath, std::move(reader)); }};

CNativeFile::CNativeFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_native(FindNativeFacts(m_reader))
{
    m_sHeadCause = m_native.header.FindCause();
    const bool bCounts = m_native.header.IsTypeKnown(); // of another file they mean nothing
    m_facts.nAnnounced = bCounts ? std::max<std::int64_t>(m_native.header.nNumPnts, 0) : 0;
    m_facts.nHeld = m_native.nNumHeld;
    m_facts.bDuplicates = false; // they were removed before it was written
    if (!m_native.header.bPrologue)
        m_facts.vecFindings.push_back(
            {"native-marks", "it does not begin as a native cloud file does, but is read as one", false, ""});
    FindCountFindings();
    if (m_native.nNumHeld > 0 && m_native.nNumInTree < m_native.nNumHeld)
        m_facts.vecFindings.push_back(FindTreeDamage(m_native));
}

void CNativeFile::FindCountFindings()
{
    const auto add = [&](const char* pCode, const std::string& sText) {
        m_facts.vecFindings.push_back({pCode, sText, false, ""});
    };
    if (m_native.header.nSize < c_nNativeHeaderSize)
        add("native-empty",
            fmt::format("it ends after {} bytes, before its points: loads as none", m_native.nFileSize));
    else if (!m_native.header.IsTypeKnown())
        return;
    else if (m_native.header.nNumPnts < 0)
        add("native-count", fmt::format("it announces {} points: loads as none", m_native.header.nNumPnts));
    else if (m_native.nNumHeld < m_native.header.nNumPnts)
        add("native-count", fmt::format("it announces {} points, but has room for {}: the others are lost",
                                        m_native.header.nNumPnts, m_native.nNumHeld));
}

std::unique_ptr<IPntSource> CNativeFile::MakeSource()
{
    return nullptr;
}

void CNativeFile::Mend(CPntCld& cloud) const
{
    if (!m_native.IsWhole())
        cloud.ComputeTree();
}

} // namespace zorcld
