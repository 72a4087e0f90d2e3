#include <formats/CPlacedFile.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

bool IsRegular(const std::string& sPath, struct stat& status) noexcept
{
    return stat(sPath.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// The rights of the file that will be replaced; of a new one those that everybody is granted, of which the
/// system takes what the user's mask takes.
mode_t FindMode(const std::string& sTarget) noexcept
{
    struct stat old = {};
    return IsRegular(sTarget, old) ? old.st_mode & 0777U : mode_t{0666};
}

/// @return a path that ends in the suffix, to choose its last characters; of a name that would become too
/// long a part.
std::string MakeTempPath(const std::string& sTarget)
{
    const std::size_t nName = sTarget.rfind('/') + 1; // 0 where there is none
    return sTarget.substr(0, nName) + sTarget.substr(nName, NAME_MAX - CPlacedFile::c_sSuffix.size()) +
           std::string(CPlacedFile::c_sSuffix);
}

/// Makes a file under a name that is not taken. mkstemp would make it for its owner alone, and the mask, by
/// which others get their rights, can only be asked by changing it, for every thread of the host.
/// @return its descriptor; -1: errno says why not.
int CreateTemp(std::string& sTemp, mode_t nMode) noexcept
{
    constexpr std::string_view c_sDigits = CPlacedFile::c_sDigits;
    constexpr std::size_t c_nChosen = CPlacedFile::c_sSuffix.size() - CPlacedFile::c_sSuffix.find('X');
    for (int nTry = 0; nTry < 100; ++nTry)
    {
        std::array<unsigned char, c_nChosen> abChosen{};
        if (getrandom(abChosen.data(), abChosen.size(), 0) != static_cast<ssize_t>(abChosen.size()))
            return -1;
        for (std::size_t i = 0; i < c_nChosen; ++i)
            sTemp[sTemp.size() - c_nChosen + i] = c_sDigits[abChosen[i] % c_sDigits.size()];
        const int nFile = open(sTemp.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, nMode);
        if (nFile >= 0 || errno != EEXIST)
            return nFile;
    }
    return -1;
}

/// @return descriptor of the folder of a file; -1: it cannot be opened.
int OpenFolder(const std::string& sPath)
{
    const std::size_t nName = sPath.rfind('/') + 1;
    const std::string sFolder = nName == 0 ? "." : sPath.substr(0, nName);
    return open(sFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

/// A new name is brought to the disk with its folder. Where that fails, the file is there all the same.
void SyncFolder(int nFolder) noexcept
{
    if (nFolder < 0)
        return;
    static_cast<void>(fsync(nFolder));
    close(nFolder);
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
    const mode_t nMode = FindMode(m_sTarget);
    m_nFile = CreateTemp(m_sTemp, nMode);
    if (m_nFile < 0)
    {
        m_sTemp.clear();
        m_eCause = FileCause_NotCreated;
        return;
    }
    Hold(m_nFile);
    struct stat old = {};
    if (IsRegular(m_sTarget, old))
        fchmod(m_nFile, nMode); // the mask does not take from the rights of a file that is replaced
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
    const int nFolder = OpenFolder(m_sTarget);
    const bool bRenamed = std::rename(m_sTemp.c_str(), m_sTarget.c_str()) == 0;
    const int nError = errno;
    SyncFolder(nFolder);
    errno = nError;
    if (!bRenamed)
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
