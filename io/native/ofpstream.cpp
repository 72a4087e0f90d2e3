#include <io/native/ofpstream.h>

#include <formats/NativeFormat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace
{

// The C library copies long runs by an instruction that takes twice the time where source and target are
// not aligned alike.
constexpr std::size_t c_nMaxCopy = 1024;

// How far ahead of the copy the source is fetched: the processor by itself fetches ahead only to the end of a
// page.
constexpr std::size_t c_nAhead = 2048;
constexpr std::size_t c_nCacheLine = 64;

constexpr std::size_t c_nPage = 4096;

/// Copies at most c_nMaxCopy bytes out of a long run of which `nNumLeft` are left.
void CopyPiece(unsigned char* pTo, const unsigned char* pFrom, std::size_t nNumBytes,
               std::size_t nNumLeft) noexcept
{
    if (nNumLeft >= c_nAhead + c_nMaxCopy)
        for (std::size_t i = 0; i < c_nMaxCopy; i += c_nCacheLine)
            __builtin_prefetch(pFrom + c_nAhead + i);
    std::memcpy(pTo, pFrom, nNumBytes);
}

/// @return the first page boundary in memory that is a page larger than needed.
unsigned char* AlignToPage(unsigned char* p) noexcept
{
    return p + (c_nPage - reinterpret_cast<std::uintptr_t>(p) % c_nPage);
}

} // namespace

// The block is allocated first: should memory run out, no file has been emptied.
ofpstream::ofpstream(const zor::String& sPath, const char* pTag, short nVersion)
    : m_pMemory(new unsigned char[c_nPage + c_nBlock + c_nMaxRoom]), m_pBlock(AlignToPage(m_pMemory.get())),
      m_pPos(m_pBlock), m_pBlockEnd(m_pPos + c_nBlock), m_pFile(std::fopen(sPath.c_str(), "wb")),
      m_sTag(pTag), m_nVersion(nVersion)
{
    if (IsFailed())
        return;
    std::setvbuf(m_pFile.get(), nullptr, _IONBF, 0);
    Write(c_acNativePrologue.data(), c_acNativePrologue.size()); // the file is empty now
}

ofpstream::~ofpstream()
{
    if (!IsFailed())
        Flush();
}

void ofpstream::Write(const void* pBytes, std::size_t nNumBytes) noexcept
{
    const unsigned char* p = static_cast<const unsigned char*>(pBytes);
    while (nNumBytes > 0)
    {
        m_pPos = MakeRoom(m_pPos);
        const std::size_t nRoom = static_cast<std::size_t>(m_pBlockEnd - m_pPos);
        const std::size_t nNum = std::min({nNumBytes, nRoom, c_nMaxCopy});
        CopyPiece(m_pPos, p, nNum, nNumBytes);
        m_pPos += nNum;
        p += nNum;
        nNumBytes -= nNum;
    }
}

/// Writes a whole block; what was put behind it becomes the start of the next.
/// @return the new place of `pPos`.
unsigned char* ofpstream::WriteBlock(unsigned char* pPos) noexcept
{
    WriteOut(c_nBlock);
    const std::size_t nNumBehind = static_cast<std::size_t>(pPos - m_pBlockEnd);
    std::memcpy(m_pBlock, m_pBlockEnd, nNumBehind);
    m_pPos = m_pBlock + nNumBehind;
    return m_pPos;
}

void ofpstream::Flush() noexcept
{
    WriteOut(static_cast<std::size_t>(m_pPos - m_pBlock));
    m_pPos = m_pBlock;
}

void ofpstream::WriteOut(std::size_t nNumBytes) noexcept
{
    m_nNumBytes += nNumBytes;
    if (m_nError != 0)
        return;
    errno = 0;
    if (std::fwrite(m_pBlock, 1, nNumBytes, m_pFile.get()) != nNumBytes)
        m_nError = errno != 0 ? errno : EIO;
}
