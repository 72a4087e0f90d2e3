#include <io/ply/CPlyBuffer.h>

#include <algorithm>
#include <cstring>

CPlyBuffer::CPlyBuffer(std::FILE* pFile) : m_pFile(pFile), m_pBlock(new unsigned char[c_nBlock])
{
    std::memset(m_pBlock.get(), 0, c_nWindow); // what the first filling may leave
}

/// Fills the window from the position on; the position becomes its first byte.
bool CPlyBuffer::Fill()
{
    std::size_t nNext = m_nWindow + m_nPos;
    if (nNext + c_nWindow > m_nRead && !m_bEnd)
    {
        ReadBlock(nNext);
        nNext = c_nWindow;
    }
    nNext = std::min(nNext, m_nRead);
    m_nPos = 0;
    m_nValid = std::min(c_nWindow, m_nRead - nNext);
    if (m_nValid == c_nWindow)
    {
        m_nWindow = nNext;
        return true;
    }
    // The last bytes go over the first ones of the window as it was.
    std::memmove(m_pBlock.get() + m_nWindow, m_pBlock.get() + nNext, m_nValid);
    m_nRead = m_nWindow + m_nValid;
    return m_nValid > 0;
}

/// Moves the window to the front of the block, and behind it what the file holds from `nNext` on.
void CPlyBuffer::ReadBlock(std::size_t nNext)
{
    static_assert(c_nBlock >= 4 * c_nWindow, "the window moves clear of what follows it");
    unsigned char* const pFront = m_pBlock.get() + c_nWindow;
    std::memmove(m_pBlock.get(), m_pBlock.get() + m_nWindow, c_nWindow);
    m_nWindow = 0;
    if (nNext > m_nRead) // a list jumped over the end of the block
        static_cast<void>(std::fseek(m_pFile, static_cast<long>(nNext - m_nRead), SEEK_CUR));
    const std::size_t nUnread = m_nRead - std::min(nNext, m_nRead);
    std::memmove(pFront, m_pBlock.get() + (m_nRead - nUnread), nUnread);
    const std::size_t nWanted = c_nBlock - c_nWindow - nUnread;
    const std::size_t nRead = std::fread(pFront + nUnread, 1, nWanted, m_pFile);
    m_bEnd = nRead < nWanted;
    m_nRead = c_nWindow + nUnread + nRead;
}

long CPlyBuffer::CalcNumLeft() const
{
    const long nStream = std::ftell(m_pFile);
    static_cast<void>(std::fseek(m_pFile, 0, SEEK_END));
    const long nEnd = std::ftell(m_pFile);
    static_cast<void>(std::fseek(m_pFile, nStream, SEEK_SET));
    const long nPos = nStream + static_cast<long>(m_nWindow + m_nPos) - static_cast<long>(m_nRead);
    return std::max(nEnd - nPos, 0L);
}
