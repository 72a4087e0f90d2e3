#include <formats/CPlacedFile.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// The rights of the file that will be replaced; of a new one those that the user's mask leaves.
mode_t FindMode(const std::string& sTarget) noexcept
{
    struct stat old = {};
    if (stat(sTarget.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        return old.st_mode & 0777U;
    const mode_t nMask = umask(0);
    umask(nMask);
    return 0666U & ~nMask;
}

/// @return for mkstemp; of a name that would become too long a part.
std::string MakeTempPath(const std::string& sTarget)
{
    const std::size_t nName = sTarget.rfind('/') + 1; // 0 where there is none
    return sTarget.substr(0, nName) + sTarget.substr(nName, NAME_MAX - CPlacedFile::c_sSuffix.size()) +
           std::string(CPlacedFile::c_sSuffix);
}

/// Errors of the disk show here at the latest. What cannot be brought to a disk at all, a pipe or a file in
/// memory, is in its place as it is.
bool Sync(int nFile) noexcept
{
    return fsync(nFile) == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

CPlacedFile::CPlacedFile(const std::string& sTarget)
{
    const int nError = FollowLink(sTarget, m_sTarget);
    if (nError != 0)
    {
        m_eCause = FileCause_LinkNowhere;
        errno = nError;
        return;
    }
    struct stat status = {};
    if (stat(m_sTarget.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
    {
        m_eCause = FileCause_Directory;
        errno = EISDIR;
        return;
    }
    if (m_sTarget.empty() || m_sTarget.back() == '/') // no name of a file
    {
        m_eCause = FileCause_NotCreated;
        errno = ENOENT;
        return;
    }
    Make();
}

void CPlacedFile::Make()
{
    m_sTemp = MakeTempPath(m_sTarget);
    m_nFile = mkostemp(m_sTemp.data(), O_CLOEXEC);
    if (m_nFile < 0)
    {
        m_sTemp.clear();
        m_eCause = FileCause_NotCreated;
        return;
    }
    Hold(m_nFile);
    fchmod(m_nFile, FindMode(m_sTarget)); // mkostemp gives rights to the owner alone
}

CPlacedFile::~CPlacedFile()
{
    if (m_nFile >= 0)
        close(m_nFile);
    if (!m_sTemp.empty())
        static_cast<void>(std::remove(m_sTemp.c_str())); // if that fails, it is left behind
}

std::int64_t CPlacedFile::FindSize() const noexcept
{
    struct stat status = {};
    return fstat(m_nFile, &status) == 0 ? status.st_size : -1;
}

enumFileCause CPlacedFile::Place()
{
    if (!Sync(m_nFile))
        return FileCause_NotSynced;
    if (std::rename(m_sTemp.c_str(), m_sTarget.c_str()) != 0)
        return FileCause_NotRenamed;
    m_sTemp.clear();
    return FileCause_None;
}

void CPlacedFile::Hold(int nFile) noexcept
{
    // Where the file system knows no locks, its age alone protects the file.
    static_cast<void>(flock(nFile, LOCK_EX | LOCK_NB));
}

int CPlacedFile::FollowLink(const std::string& sPath, std::string& sTarget)
{
    sTarget = sPath;
    struct stat status = {};
    if (lstat(sPath.c_str(), &status) != 0 || !S_ISLNK(status.st_mode))
        return 0;
    const std::unique_ptr<char, void (*)(void*)> pTarget(realpath(sPath.c_str(), nullptr), std::free);
    const int nError = errno;
    if (pTarget != nullptr)
    {
        sTarget = pTarget.get();
        return 0;
    }
    // A pipe by way of /dev/stdout: it is there, and has no path.
    return stat(sPath.c_str(), &status) == 0 ? 0 : nError;
}

bool CPlacedFile::IsDevice(const std::string& sPath) noexcept
{
    struct stat status = {};
    return stat(sPath.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}
