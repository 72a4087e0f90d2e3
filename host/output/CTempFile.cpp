#include <host/output/CTempFile.h>

#include <host/output/CFailure.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
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

} // namespace

CTempFile::CTempFile(const std::string& sTarget)
    : m_sTarget(FollowLink(sTarget)), m_sTemp(m_sTarget + ".XXXXXX")
{
    std::error_code error;
    if (fs::is_directory(m_sTarget, error))
        throw CFailure(sTarget, "is a directory");
    const int nFile = mkstemp(m_sTemp.data());
    if (nFile < 0)
        throw CFailure(sTarget, std::string("cannot be created: ") + std::strerror(errno));
    Watch(m_sTemp);
    fchmod(nFile, FindMode(m_sTarget)); // mkstemp gives rights to the owner alone
    close(nFile);
}

CTempFile::~CTempFile()
{
    if (m_sTemp.empty())
        return;
    static_cast<void>(std::remove(m_sTemp.c_str())); // if that fails, it is left behind
    Unwatch(m_sTemp);
}

bool CTempFile::Rename()
{
    if (std::rename(m_sTemp.c_str(), m_sTarget.c_str()) != 0)
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
    const fs::path target = fs::weakly_canonical(sPath, error);
    return error ? sPath : target.string();
}

} // namespace zorcld
