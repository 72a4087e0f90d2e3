#include <io/ofpstream.h>

#include <io/NativePrologue.h>

ofpstream::ofpstream(const zor::String& sPath, const char* pTag, short nVersion)
    : m_pFile(std::fopen(sPath.c_str(), "wb")), m_sTag(pTag), m_nVersion(nVersion)
{
    if (IsFailed())
        return;
    std::setvbuf(m_pFile.get(), nullptr, _IONBF, 0);
    Write(c_acPrologue.data(), c_acPrologue.size()); // the file is empty now
}

void ofpstream::Write(const void* pBytes, std::size_t nNumBytes) noexcept
{
    if (nNumBytes > 0 && std::ferror(m_pFile.get()) == 0)
        std::fwrite(pBytes, 1, nNumBytes, m_pFile.get());
}
