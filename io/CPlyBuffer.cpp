#include <io/CPlyBuffer.h>

#include <algorithm>

/// Fills the window from the position on; the position becomes its first byte.
bool CPlyBuffer::Fill()
{
    // What is unread moves to the front: the same bytes as read once more from the file.
    const std::size_t nUnread = GetNumAhead();
    std::memmove(m_acBytes.data(), m_acBytes.data() + m_nValid - nUnread, nUnread);
    if (m_nPos > m_nValid) // a list jumped over the end of the window
        static_cast<void>(std::fseek(m_pFile, static_cast<long>(m_nPos - m_nValid), SEEK_CUR));
    m_nPos = 0;
    m_nValid = nUnread + std::fread(m_acBytes.data() + nUnread, 1, m_acBytes.size() - nUnread, m_pFile);
    return m_nValid > 0;
}

long CPlyBuffer::CalcNumLeft() const
{
    const long nStream = std::ftell(m_pFile);
    static_cast<void>(std::fseek(m_pFile, 0, SEEK_END));
    const long nEnd = std::ftell(m_pFile);
    static_cast<void>(std::fseek(m_pFile, nStream, SEEK_SET));
    const long nPos = nStream + static_cast<long>(m_nPos) - static_cast<long>(m_nValid);
    return std::max(nEnd - nPos, 0L);
}
