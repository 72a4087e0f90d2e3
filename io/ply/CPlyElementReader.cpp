#include <io/ply/CPlyElementReader.h>

#include <zor4data/IPntCldReadListener.h>

#include <algorithm>
#include <new>

bool CPlyElementReader::Read()
{
    if (m_element.bVertex && !Announce())
        return false;
    // Items that lie in the window whole are taken from it as they stand; what the end of the window cuts,
    // and what has no fixed layout, is read value by value.
    for (std::int32_t i = 0; i < m_element.nCount;)
    {
        const std::int32_t nNumWhole = CountWholeItems(m_element.nCount - i);
        if (nNumWhole > 0)
            TakeWholeItems(i, i + nNumWhole);
        i += nNumWhole;
        if (i == m_element.nCount)
            break;
        m_progress.Report(i++);
        if (!ReadItem())
            return false;
    }
    return true;
}

/// Tells the listener what will come.
bool CPlyElementReader::Announce()
{
    if (!m_layout.HasPosition())
        return false;
    m_listener.OnReadType(m_bColor ? PntCldType_PntColor : PntCldType_Pnt);
    try
    {
        m_listener.OnReadNumPnts(m_element.nCount);
    }
    catch (const std::bad_alloc&)
    {
        // A count that the file cannot hold is the file's fault, not a lack of memory.
        if (m_layout.CanHold(m_element.nCount, m_buffer.CalcNumLeft()))
            throw;
        return false;
    }
    return true;
}

/// @return how many items, at most `nMax`, can be taken as they stand.
std::int32_t CPlyElementReader::CountWholeItems(std::int32_t nMax) const
{
    if (!(m_element.bVertex ? m_layout.IsPlain() : m_layout.IsFixed()))
        return 0;
    if (m_layout.GetMinSize() == 0) // nothing to read
        return nMax;
    const std::size_t nNumWhole = m_buffer.GetNumAhead() / m_layout.GetMinSize();
    return static_cast<std::int32_t>(std::min(nNumWhole, static_cast<std::size_t>(nMax)));
}

/// Takes items `i` to `nEnd` - 1, which lie in the window whole.
void CPlyElementReader::TakeWholeItems(std::int32_t i, std::int32_t nEnd)
{
    if (m_element.bVertex)
        DeliverWholeItems(i, nEnd);
    else if (m_progress.IsWanted() && m_layout.GetMinSize() == 0)
        m_progress.ReportOfNothing(i, nEnd);
    else if (m_progress.IsWanted())
        for (std::int32_t k = i; k < nEnd; ++k)
            m_progress.Report(k);
    m_buffer.Skip(m_layout.GetMinSize() * static_cast<std::size_t>(nEnd - i));
}

void CPlyElementReader::DeliverWholeItems(std::int32_t i, std::int32_t nEnd)
{
    const CPlyVertexBytes vertex(m_layout.GetOffsets(), m_bColor);
    const std::size_t nSize = m_layout.GetMinSize();
    const unsigned char* p = m_buffer.GetPos();
    if (!m_progress.IsWanted())
        return vertex.DeliverAll(m_listener, p, nSize, p + nSize * static_cast<std::size_t>(nEnd - i));
    for (; i < nEnd; ++i, p += nSize)
    {
        m_progress.Report(i);
        vertex.Deliver(m_listener, p);
    }
}

/// Reads the values of one item one by one, and delivers it if it is a vertex.
bool CPlyElementReader::ReadItem()
{
    for (std::size_t k = 0; k < m_element.nNumProps; ++k)
        if (!ReadValue(m_pProps[k]))
            return false;
    if (m_element.bVertex)
        m_slots.Deliver(m_listener, m_bColor);
    return true;
}

bool CPlyElementReader::ReadValue(const CPlyProperty& prop)
{
    if (!prop.IsReadable())
        return false;
    const std::size_t nSize = prop.GetSize();
    if (!m_buffer.MakeAvailable(prop.IsList() ? 1 : nSize))
        return false;
    if (prop.IsList())
    {
        // KEPT: the entries of a list are never looked at: a list called "x" leaves x at 0
        // (Read_ListNamedXIsZero_Kept).
        m_buffer.Skip(1 + *m_buffer.GetPos() * nSize);
        return true;
    }
    m_slots.Set(prop.eRole, m_buffer.GetPos(), nSize);
    m_buffer.Skip(nSize);
    return true;
}
