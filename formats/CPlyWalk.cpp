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
    const std::string sCause = header.FindCause();
    if (sCause.empty())
        Advance();
    else
        Finish(sCause);
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
            FinishCutOff();
        else
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
        const std::string sCause = bBegins ? m_header.FindCause(element) : "";
        if (!sCause.empty())
            return Finish(sCause);
        const bool bLists = std::any_of(pProps, pProps + element.nNumProps,
                                        [](const CPlyProperty& prop) { return prop.IsList(); });
        if (!(bLists ? AdvanceLists(element) : AdvanceItems(element)))
            return;
        m_nItem = 0;
    }
    Finish(m_header.FindVertices() == nullptr ? "has no vertices" : "");
}

/// @return false when the walk ends or has to wait.
bool CPlyWalk::AdvanceItems(const CPlyElement& element)
{
    std::int64_t nItemSize = 0;
    const CPlyProperty* const pProps = m_header.GetProperties(element);
    for (std::size_t i = 0; i < element.nNumProps; ++i)
        nItemSize += CalcSize(pProps[i]);
    m_nItem = nItemSize == 0 ? element.nAnnounced
                             : std::min(element.nAnnounced, (m_nFileSize - m_nPos) / nItemSize);
    m_nPos += m_nItem * nItemSize;
    if (m_nItem < element.nAnnounced)
        FinishCutOff();
    return !m_bDone;
}

/// @return false when the walk ends or has to wait.
bool CPlyWalk::AdvanceLists(const CPlyElement& element)
{
    for (; m_nItem < element.nAnnounced; ++m_nItem)
    {
        for (; m_nProp < element.nNumProps; ++m_nProp)
        {
            const CPlyProperty& prop = m_header.GetProperties(element)[m_nProp];
            if (prop.IsList() && m_nPos < m_nFileSize)
                return false; // its count is wanted
            m_nPos += CalcSize(prop);
            if (prop.IsList() || m_nPos > m_nFileSize)
            {
                FinishCutOff();
                return false;
            }
        }
        m_nProp = 0;
    }
    return true;
}

void CPlyWalk::FinishCutOff()
{
    const CPlyElement& element = GetElement();
    const std::string sItems =
        element.bVertex ? "vertices" : "items of element " + std::string(m_header.GetName(element));
    Finish("truncated after " + std::to_string(m_nItem) + " of " + std::to_string(element.nAnnounced) + ' ' +
           sItems);
}

void CPlyWalk::Finish(const std::string& sCause)
{
    m_sCause = sCause;
    m_bDone = true;
}
