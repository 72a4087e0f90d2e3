#include <host/output/CTempFile.h>

#include <host/output/CFailure.h>
#include <host/output/RemoveAbandoned.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zorcld
{

namespace fs = std::filesystem;

namespace
{

// What a signal handler may look at: plain bytes, complete before the flag is set.
struct CWatched
{
    char acPath[PATH_MAX];
    volatile std::sig_atomic_t bSet;
};

std::array<CWatched, CTempFile::c_nMaxAtOnce> g_watched;

constexpr std::array c_signals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

extern "C" void RemoveAndEnd(int nSignal)
{
    for (const CWatched& watched : g_watched)
        if (watched.bSet != 0)
            unlink(watched.acPath);
    static_cast<void>(std::signal(nSignal, SIG_DFL));
    static_cast<void>(std::raise(nSignal));
}

/// Has a signal that ends the program remove the file; one that the caller ignores, as nohup does, stays
/// ignored.
void Watch(const std::string& sPath)
{
    const auto pFree = std::find_if(g_watched.begin(), g_watched.end(),
                                    [](const CWatched& watched) { return watched.bSet == 0; });
    if (pFree == g_watched.end() || sPath.size() >= sizeof pFree->acPath)
        return;
    std::memcpy(pFree->acPath, sPath.c_str(), sPath.size() + 1);
    pFree->bSet = 1;
    for (const int nSignal : c_signals)
        if (std::signal(nSignal, RemoveAndEnd) == SIG_IGN)
            static_cast<void>(std::signal(nSignal, SIG_IGN));
}

void Unwatch(const std::string& sPath)
{
    for (CWatched& watched : g_watched)
        if (watched.bSet != 0 && sPath == watched.acPath)
            watched.bSet = 0;
}

/// The rights of the file that will be replaced; of a new one those that the user's mask leaves.
mode_t FindMode(const std::string& sTarget)
{
    struct stat old = {};
    if (stat(sTarget.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        return old.st_mode & 0777U;
    const mode_t nMask = umask(0);
    umask(nMask);
    return 0666U & ~nMask;
}

/// @return for mkstemp; of a name that would become too long a part.
std::string MakeTempPath(const fs::path& target)
{
    const std::string sName = target.filename().string().substr(0, NAME_MAX - c_sTempSuffix.size());
    return (target.parent_path() / (sName + std::string(c_sTempSuffix))).string();
}

/// Errors of the disk show here at the latest. What cannot be brought to a disk at all, a pipe or a file in
/// memory, is in its place as it is.
bool Sync(int nFile)
{
    return fsync(nFile) == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

CTempFile::CTempFile(const std::string& sTarget)
    : m_sTarget(FollowLink(sTarget)), m_sTemp(MakeTempPath(m_sTarget))
{
    std::error_code error;
    if (fs::is_directory(m_sTarget, error))
        throw CFailure(sTarget, "is a directory");
    RemoveAbandoned(fs::path(m_sTarget).parent_path().string());
    m_nFile = mkostemp(m_sTemp.data(), O_CLOEXEC);
    if (m_nFile < 0)
        throw CFailure(sTarget, std::string("cannot be created: ") + std::strerror(errno));
    Watch(m_sTemp);
    HoldTempFile(m_nFile);
    fchmod(m_nFile, FindMode(m_sTarget)); // mkostemp gives rights to the owner alone
}

CTempFile::~CTempFile()
{
    close(m_nFile);
    if (m_sTemp.empty())
        return;
    static_cast<void>(std::remove(m_sTemp.c_str())); // if that fails, it is left behind
    Unwatch(m_sTemp);
}

bool CTempFile::Place()
{
    if (!Sync(m_nFile) || std::rename(m_sTemp.c_str(), m_sTarget.c_str()) != 0)
        return false;
    Unwatch(m_sTemp);
    m_sTemp.clear();
    return true;
}

std::string FollowLink(const std::string& sPath)
{
    std::error_code error;
    if (!fs::is_symlink(sPath, error))
        return sPath;
    const fs::path target = fs::canonical(sPath, error);
    std::error_code ignored;
    if (error && fs::exists(sPath, ignored)) // a pipe by way of /dev/stdout: it is there, and has no path
        return sPath;
    if (error == std::errc::no_such_file_or_directory)
        throw CFailure(sPath, "is a symbolic link that leads nowhere");
    if (error == std::errc::too_many_symbolic_link_levels)
        throw CFailure(sPath, "is a symbolic link that leads in a circle");
    if (error)
        throw CFailure(sPath, "is a symbolic link that cannot be followed: " + error.message());
    return target.string();
}

} // namespace zorcld
