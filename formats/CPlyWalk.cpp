#include <formats/CPlyWalk.h>

#include <algorithm>

namespace
{

/// Bytes of a value, of a list those of an entry.
std::int64_t CalcSize(const CPlyProperty& prop)
{
    return static_cast<std::int64_t>(prop.GetSize());
}

} // namespace

CPlyWalk::CPlyWalk(const CPlyHeader& header, std::int64_t nFileSize)
    : m_header(header), m_nFileSize(nFileSize), m_nPos(header.GetDataOffset())
{
    Note(header.FindCause());
    if (header.IsTaken())
        Advance();
    else
        Refuse();
}

void CPlyWalk::Take(std::int64_t nPosBlock, std::string_view sBlock)
{
    const std::int64_t nEnd = nPosBlock + static_cast<std::int64_t>(sBlock.size());
    while (!m_bDone && m_nPos >= nPosBlock && m_nPos < nEnd)
    {
        const auto nItems = static_cast<unsigned char>(sBlock[static_cast<std::size_t>(m_nPos - nPosBlock)]);
        m_nPos += 1 + nItems * CalcSize(m_header.GetProperties(GetElement())[m_nProp]);
        ++m_nProp;
        if (m_nPos > m_nFileSize)
            NoteCutOff();
        Advance();
    }
}

/// Up to the next count of a list, or to the end.
void CPlyWalk::Advance()
{
    for (; m_nElem < m_header.GetElements().size(); ++m_nElem)
    {
        const CPlyElement& element = GetElement();
        const CPlyProperty* const pProps = m_header.GetProperties(element);
        const bool bBegins = m_nItem == 0 && m_nProp == 0;
        const CFileCause cause = bBegins ? m_header.FindCause(element) : CFileCause();
        if (!cause.empty())
        {
            Note(cause);
            return Refuse();
        }
        const bool bLists = std::any_of(pProps, pProps + element.nNumProps,
                                        [](const CPlyProperty& prop) { return prop.IsList(); });
        if (!(bLists ? AdvanceLists(element) : AdvanceItems(element)))
            return;
        m_nItem = 0;
    }
    if (m_header.FindVertices() == nullptr)
        Note({FileCause_None, "has no vertices"});
    m_bDone = true;
}

/// To the library a value is there where its first byte is: the last one may be cut off.
/// @return false when the walk ends or has to wait.
bool CPlyWalk::AdvanceItems(const CPlyElement& element)
{
    if (element.nNumProps == 0)
        return true;
    std::int64_t nItemSize = 0;
    const CPlyProperty* const pProps = m_header.GetProperties(element);
    for (std::size_t i = 0; i < element.nNumProps; ++i)
        nItemSize += CalcSize(pProps[i]);
    m_nItem = std::min(element.nAnnounced, std::max<std::int64_t>(m_nFileSize - m_nPos, 0) / nItemSize);
    if (m_nItem < element.nAnnounced)
        NoteCutOff();
    m_nPos += element.nCount * nItemSize;
    if (m_nPos - CalcSize(pProps[element.nNumProps - 1]) >= m_nFileSize)
        Refuse();
    return !m_bDone;
}

/// @return false when the walk ends or has to wait.
bool CPlyWalk::AdvanceLists(const CPlyElement& element)
{
    for (; m_nItem < element.nCount; ++m_nItem)
    {
        for (; m_nProp < element.nNumProps; ++m_nProp)
        {
            if (m_nPos >= m_nFileSize)
            {
                NoteCutOff();
                Refuse();
                return false;
            }
            const CPlyProperty& prop = m_header.GetProperties(element)[m_nProp];
            if (prop.IsList())
                return false; // its count is wanted
            m_nPos += CalcSize(prop);
            if (m_nPos > m_nFileSize)
                NoteCutOff();
        }
        m_nProp = 0;
    }
    return true;
}

void CPlyWalk::NoteCutOff()
{
    const CPlyElement& element = GetElement();
    Note({FileCause_PlyCutOff,
          "truncated after " + std::to_string(m_nItem) + " of " +
              FormatPlyItems(element.nAnnounced, m_header.GetName(element), element.bVertex)});
}

/// Keeps the first.
void CPlyWalk::Note(const CFileCause& cause)
{
    if (m_cause.empty())
        m_cause = cause;
}

void CPlyWalk::Refuse()
{
    m_bRefused = true;
    m_bDone = true;
}
