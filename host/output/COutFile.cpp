#include <host/output/COutFile.h>

#include <host/output/CFailure.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace zorcld
{

namespace fs = std::filesystem;

COutFile::COutFile(std::string sPath) : m_sPath(std::move(sPath))
{
    const std::string sTarget = FollowLink(m_sPath);
    std::error_code error;
    const fs::file_status status = fs::status(sTarget, error);
    const bool bDirect = fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
    if (!bDirect)
        m_pTemp = std::make_unique<CTempFile>(m_sPath);
    m_pFile = std::fopen((bDirect ? sTarget : m_pTemp->GetPath()).c_str(), "wb");
    if (m_pFile == nullptr)
        throw CFailure(m_sPath, std::string("cannot be created: ") + std::strerror(errno));
}

COutFile::~COutFile()
{
    if (m_pFile != nullptr)
        static_cast<void>(std::fclose(m_pFile)); // the file is given up
}

void COutFile::Write(const void* pBytes, std::size_t nBytes)
{
    if (std::fwrite(pBytes, 1, nBytes, m_pFile) != nBytes)
        Fail();
}

void COutFile::Commit()
{
    if (std::fflush(m_pFile) != 0 || std::ferror(m_pFile) != 0)
        Fail();
    if (std::fclose(std::exchange(m_pFile, nullptr)) != 0)
        Fail();
    if (m_pTemp != nullptr && !m_pTemp->Place())
        Fail();
}

void COutFile::Fail() const
{
    throw CFailure(m_sPath, std::string("could not be written: ") + std::strerror(errno));
}

} // namespace zorcld
