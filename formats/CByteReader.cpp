#include <formats/CByteReader.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

constexpr std::size_t c_nBlock = 1 << 16;
constexpr std::size_t c_nMaxWord = 255;

} // namespace

CByteReader::CByteReader(CFilePtr pFile) : m_pFile(std::move(pFile)), m_vecBlock(c_nBlock)
{
    static_cast<void>(std::setvbuf(m_pFile.get(), nullptr, _IONBF, 0)); // the block is the buffer
    if (fseeko(m_pFile.get(), 0, SEEK_END) == 0)
        m_nSize = std::max<std::int64_t>(ftello(m_pFile.get()), 0);
    std::rewind(m_pFile.get());
}

void CByteReader::SetPos(std::int64_t nPos)
{
    nPos = std::clamp<std::int64_t>(nPos, 0, m_nSize);
    const std::int64_t nPosBlock = m_nFilePos - static_cast<std::int64_t>(m_nEnd);
    if (nPos >= nPosBlock && nPos <= m_nFilePos)
    {
        m_nPos = static_cast<std::size_t>(nPos - nPosBlock);
        return;
    }
    m_nPos = m_nEnd = 0;
    m_nFilePos = nPos;
    static_cast<void>(fseeko(m_pFile.get(), static_cast<off_t>(m_nFilePos), SEEK_SET));
}

bool CByteReader::ReadBlockAt(std::int64_t nPos)
{
    SetPos(nPos);
    if (m_nPos == m_nEnd)
        return Fill();
    OfferBlock();
    return true;
}

void CByteReader::SetOnBlock(TOnBlock onBlock)
{
    m_onBlock = std::move(onBlock);
    OfferBlock();
}

void CByteReader::OfferBlock() const
{
    if (m_onBlock)
        m_onBlock(m_nFilePos - static_cast<std::int64_t>(m_nEnd), {m_vecBlock.data(), m_nEnd});
}

bool CByteReader::Fill()
{
    m_nPos = 0;
    m_nEnd = std::fread(m_vecBlock.data(), 1, m_vecBlock.size(), m_pFile.get());
    m_nFilePos += static_cast<std::int64_t>(m_nEnd);
    OfferBlock();
    return m_nEnd > 0;
}

std::size_t CByteReader::ReadUpTo(void* pBytes, std::size_t nBytes)
{
    auto* pTarget = static_cast<char*>(pBytes);
    std::size_t nNumRead = 0;
    while (nNumRead < nBytes && (m_nPos != m_nEnd || Fill()))
    {
        const std::size_t nNow = std::min(nBytes - nNumRead, m_nEnd - m_nPos);
        std::memcpy(pTarget + nNumRead, m_vecBlock.data() + m_nPos, nNow);
        m_nPos += nNow;
        nNumRead += nNow;
    }
    return nNumRead;
}

bool CByteReader::Skip(std::int64_t nBytes)
{
    if (nBytes > m_nSize - GetPos())
        return false;
    SetPos(GetPos() + nBytes);
    return true;
}

bool CByteReader::ReadWord(std::string_view& sWord)
{
    const auto isSpace = [](int c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (isSpace(Peek()))
        ++m_nPos;
    m_sWord.clear();
    for (int c = Peek(); c >= 0 && !isSpace(c) && m_sWord.size() <= c_nMaxWord; c = Peek())
    {
        m_sWord += static_cast<char>(c);
        ++m_nPos;
    }
    sWord = m_sWord;
    return !m_sWord.empty() && m_sWord.size() <= c_nMaxWord;
}
