#include <host/files/CPlyWalk.h>
#include <host/files/PlyAsRead.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

CPlyWalk::CPlyWalk(const CPlyAsRead& header, std::int64_t nFileSize)
    : m_header(header), m_nFileSize(nFileSize), m_nPos(header.nPosData)
{
    if (header.sCause.empty())
        Advance();
    else
        Finish(header.sCause);
}

void CPlyWalk::Take(std::int64_t nPosBlock, std::string_view sBlock)
{
    const std::int64_t nEnd = nPosBlock + static_cast<std::int64_t>(sBlock.size());
    while (!m_bDone && m_nPos >= nPosBlock && m_nPos < nEnd)
    {
        const auto nItems = static_cast<unsigned char>(sBlock[static_cast<std::size_t>(m_nPos - nPosBlock)]);
        m_nPos += 1 + nItems * m_header.vecElements[m_nElem].vecProps[m_nProp].pType->nSize;
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
    for (; m_nElem < m_header.vecElements.size(); ++m_nElem)
    {
        const CPlyReadElem& element = m_header.vecElements[m_nElem];
        const bool bBegins = m_nItem == 0 && m_nProp == 0;
        const std::string sCause = bBegins ? element.FindCause() : "";
        if (!sCause.empty())
            return Finish(sCause);
        if (!(element.HasLists() ? AdvanceLists(element) : AdvanceItems(element)))
            return;
        m_nItem = 0;
    }
    Finish(m_header.FindVertices() == nullptr ? "has no vertices" : "");
}

/// @return false when the walk ends or has to wait.
bool CPlyWalk::AdvanceItems(const CPlyReadElem& element)
{
    std::int64_t nItemSize = 0;
    for (const CPlyReadProp& prop : element.vecProps)
        nItemSize += prop.pType->nSize;
    m_nItem = nItemSize == 0 ? element.nCount : std::min(element.nCount, (m_nFileSize - m_nPos) / nItemSize);
    m_nPos += m_nItem * nItemSize;
    if (m_nItem < element.nCount)
        FinishCutOff();
    return !m_bDone;
}

/// @return false when the walk ends or has to wait.
bool CPlyWalk::AdvanceLists(const CPlyReadElem& element)
{
    for (; m_nItem < element.nCount; ++m_nItem)
    {
        for (; m_nProp < element.vecProps.size(); ++m_nProp)
        {
            const CPlyReadProp& prop = element.vecProps[m_nProp];
            if (prop.bList && m_nPos < m_nFileSize)
                return false; // its count is wanted
            m_nPos += prop.pType->nSize;
            if (prop.bList || m_nPos > m_nFileSize)
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
    const CPlyReadElem& element = m_header.vecElements[m_nElem];
    Finish(element.bVertex ? fmt::format("truncated after {} of {} vertices", m_nItem, element.nCount)
                           : fmt::format("truncated after {} of {} items of element {}", m_nItem,
                                         element.nCount, element.sName));
}

void CPlyWalk::Finish(const std::string& sCause)
{
    m_sCause = sCause;
    m_bDone = true;
}

} // namespace zorcld
