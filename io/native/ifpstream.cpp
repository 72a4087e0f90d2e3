#include <io/native/ifpstream.h>

#include <formats/NativeFormat.h>

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
    m_nNumLeft = GetFileSize(m_pFile.get());
    std::array<unsigned char, c_acNativePrologue.size()> acBytes{};
    m_bFailed = Read(acBytes.data(), acBytes.size()) != acBytes.size();
    m_bForeign = acBytes[0] != c_acNativePrologue[0];
    m_bNativeOrder = std::equal(acBytes.begin() + 1, acBytes.end(), c_acNativePrologue.begin() + 1);
}

std::size_t ifpstream::Read(void* pBytes, std::size_t nNumBytes) noexcept
{
    const std::size_t nNum = static_cast<std::size_t>(std::min<std::uint64_t>(nNumBytes, m_nNumLeft));
    const std::size_t nNumRead = nNum == 0 ? 0 : std::fread(pBytes, 1, nNum, m_pFile.get());
    m_nNumLeft = nNumRead < nNum ? 0 : m_nNumLeft - nNum; // shorter: the file shrank meanwhile
    return nNumRead;
}
