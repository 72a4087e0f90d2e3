#include <io/native/ifpstream.h>

#include <formats/NativeFormat.h>
#include <zor4data/IDlgProgress.h>

#include <algorithm>

#include <sys/stat.h>

namespace
{

/// @return size in bytes; 0 for a file that has no size of its own, such as a pipe or a directory.
std::uint64_t GetFileSize(std::FILE* pFile)
{
    struct stat status = {};
    if (fstat(fileno(pFile), &status) != 0 || !S_ISREG(status.st_mode))
        return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

} // namespace

ifpstream::ifpstream(const zor::String& sPath) : m_pFile(std::fopen(sPath.c_str(), "rb"))
{
    if (m_pFile == nullptr)
        return;
    std::setvbuf(m_pFile.get(), nullptr, _IONBF, 0);
    m_nSize = GetFileSize(m_pFile.get());
    m_nNumLeft = m_nSize;
    std::array<unsigned char, c_acNativePrologue.size()> acBytes{};
    m_bFailed = Read(acBytes.data(), acBytes.size()) != acBytes.size();
    m_bForeign = acBytes[0] != c_acNativePrologue[0];
    m_bNativeOrder = std::equal(acBytes.begin() + 1, acBytes.end(), c_acNativePrologue.begin() + 1);
}

std::size_t ifpstream::Read(void* pBytes, std::size_t nNumBytes)
{
    if (m_pProgress == nullptr)
        return ReadPiece(pBytes, nNumBytes);
    auto* const pFirst = static_cast<unsigned char*>(pBytes);
    for (std::size_t nNumRead = 0; nNumRead < nNumBytes;)
    {
        Report();
        const std::size_t nWanted = std::min(nNumBytes - nNumRead, c_nPiece);
        const std::size_t nNum = ReadPiece(pFirst + nNumRead, nWanted);
        nNumRead += nNum;
        if (nNum < nWanted)
            return nNumRead;
    }
    return nNumBytes;
}

std::size_t ifpstream::ReadPiece(void* pBytes, std::size_t nNumBytes) noexcept
{
    const std::size_t nNum = static_cast<std::size_t>(std::min<std::uint64_t>(nNumBytes, m_nNumLeft));
    const std::size_t nNumRead = nNum == 0 ? 0 : std::fread(pBytes, 1, nNum, m_pFile.get());
    m_nNumLeft = nNumRead < nNum ? 0 : m_nNumLeft - nNum; // shorter: the file shrank meanwhile
    return nNumRead;
}

void ifpstream::Report()
{
    const std::uint64_t nNumRead = m_nSize - m_nNumLeft;
    if (nNumRead < m_nNextReport)
        return;
    m_nNextReport = nNumRead + c_nPiece;
    m_pProgress->SetPos(
        static_cast<int>(static_cast<double>(nNumRead) / static_cast<double>(m_nSize) * 100.0));
}
