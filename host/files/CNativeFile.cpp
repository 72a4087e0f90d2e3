#include <host/files/CNativeFile.h>
#include <host/files/IPntSource.h>

#include <zor4data/CPntCld.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

namespace
{

constexpr std::int64_t c_nHead = 27; // up to the number of points

std::string FindNativeCause(const CNativeLayout& layout)
{
    if (layout.nFileSize < 5)
        return fmt::format("not a native cloud file: it has {} bytes only", layout.nFileSize);
    if (layout.nType != 0 && layout.nType != 1)
        return fmt::format("{}: its point type is {}, 0 and 1 are known",
                           layout.bMarks ? "cannot be read" : "not a native cloud file", layout.nType);
    if (!layout.bOrigin)
        return "its origin is no finite number: it is damaged";
    return {};
}

CFinding FindTreeDamage(const CNativeLayout& layout)
{
    const std::string sText =
        fmt::format("its octree is {}: {} of {} points are outside it, found by a query of all points only",
                    layout.bTreeWhole ? "damaged" : "cut off or damaged", layout.nNumHeld - layout.nNumInTree,
                    layout.nNumHeld);
    return {"native-octree", sText, true, ""};
}

} // namespace

const CFileKind CNativeFile::c_kind = {
    PntCldFile_Native,
    "native",
    "native cloud file",
    {"cld"},
    [](std::string_view sFirst) { return sFirst.substr(0, 5) == std::string_view(":\1\1\0\0", 5); },
    [](const std::string& sPath, CByteReader&& reader) -> std::unique_ptr<CInputFile>
    { return std::make_unique<CNativeFile>(sPath, std::move(reader)); }};

CNativeFile::CNativeFile(const std::string& sPath, CByteReader&& reader)
    : CInputFile(c_kind, sPath, std::move(reader)), m_layout(ReadNativeLayout(m_reader))
{
    m_sHeadCause = FindNativeCause(m_layout);
    m_facts.nAnnounced = std::max<std::int64_t>(m_layout.nNumPnts, 0);
    m_facts.nHeld = m_layout.nNumHeld;
    m_facts.bDuplicates = false; // they were removed before it was written
    if (!m_layout.bMarks)
        m_facts.vecFindings.push_back(
            {"native-marks", "it does not begin as a native cloud file does, but is read as one", false, ""});
    FindCountFindings();
    if (m_layout.nNumHeld > 0 && m_layout.nNumInTree < m_layout.nNumHeld)
        m_facts.vecFindings.push_back(FindTreeDamage(m_layout));
}

void CNativeFile::FindCountFindings()
{
    const auto add = [&](const char* pCode, const std::string& sText) {
        m_facts.vecFindings.push_back({pCode, sText, false, ""});
    };
    if (m_layout.nFileSize < c_nHead)
        add("native-empty",
            fmt::format("it ends after {} bytes, before its points: loads as none", m_layout.nFileSize));
    else if (m_layout.nNumPnts < 0)
        add("native-count", fmt::format("it announces {} points: loads as none", m_layout.nNumPnts));
    else if (m_layout.nNumHeld < m_layout.nNumPnts)
        add("native-count", fmt::format("it announces {} points, but has room for {}: the others are lost",
                                        m_layout.nNumPnts, m_layout.nNumHeld));
}

std::unique_ptr<IPntSource> CNativeFile::MakeSource()
{
    return nullptr;
}

void CNativeFile::Mend(CPntCld& cloud) const
{
    if (!m_layout.IsWhole())
        cloud.ComputeTree();
}

} // namespace zorcld
