#include <host/files/CByteReader.h>
#include <host/output/CFailure.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nBlock = 1 << 16;
constexpr std::size_t c_nMaxWord = 255;

} // namespace

CByteReader::CByteReader(const std::string& sPath)
    : m_pFile(std::fopen(sPath.c_str(), "rb")), m_vecBlock(c_nBlock)
{
    if (m_pFile == nullptr)
        throw CFailure(sPath, std::string("cannot be opened: ") + std::strerror(errno));
    static_cast<void>(std::setvbuf(m_pFile.get(), nullptr, _IONBF, 0)); // the block is the buffer
    if (fseeko(m_pFile.get(), 0, SEEK_END) == 0)
        m_nSize = static_cast<std::int64_t>(ftello(m_pFile.get()));
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

bool CByteReader::Read(void* pBytes, std::size_t nBytes)
{
    auto* pTarget = static_cast<char*>(pBytes);
    while (nBytes > 0)
    {
        if (m_nPos == m_nEnd && !Fill())
            return false;
        const std::size_t nNow = std::min(nBytes, m_nEnd - m_nPos);
        std::memcpy(pTarget, m_vecBlock.data() + m_nPos, nNow);
        m_nPos += nNow;
        pTarget += nNow;
        nBytes -= nNow;
    }
    return true;
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

} // namespace zorcld
