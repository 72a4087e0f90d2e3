#include <host/CFailure.h>
#include <host/COutFile.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

COutFile::COutFile(std::string sPath) : m_sPath(std::move(sPath)), m_sTarget(m_sPath)
{
    std::error_code error;
    if (fs::is_symlink(m_sPath, error))
    {
        const fs::path target = fs::weakly_canonical(m_sPath, error);
        if (!error)
            m_sTarget = target.string();
    }
    const fs::file_status status = fs::status(m_sTarget, error);
    if (fs::is_directory(status))
        throw CFailure(m_sPath, "is a directory");
    const bool bDirect = fs::exists(status) && !fs::is_regular_file(status);
    if (bDirect)
    {
        m_pFile = std::fopen(m_sTarget.c_str(), "wb");
    }
    else
    {
        m_sTemp = m_sTarget + ".XXXXXX";
        const int nFile = mkstemp(m_sTemp.data());
        if (nFile >= 0)
        {
            const mode_t nMask = umask(0); // mkstemp gives rights to the owner alone
            umask(nMask);
            fchmod(nFile, 0666U & ~nMask);
            m_pFile = fdopen(nFile, "wb");
        }
    }
    if (m_pFile == nullptr)
    {
        m_sTemp.clear();
        throw CFailure(m_sPath, std::string("cannot be created: ") + std::strerror(errno));
    }
}

COutFile::~COutFile()
{
    Discard();
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
    if (!m_sTemp.empty() && std::rename(m_sTemp.c_str(), m_sTarget.c_str()) != 0)
        Fail();
    m_sTemp.clear();
}

void COutFile::Fail() const
{
    throw CFailure(m_sPath, std::string("could not be written: ") + std::strerror(errno));
}

void COutFile::Discard()
{
    if (m_pFile != nullptr)
        std::fclose(m_pFile);
    m_pFile = nullptr;
    if (!m_sTemp.empty())
        std::remove(m_sTemp.c_str());
    m_sTemp.clear();
}
