#include <host/output/CWatchedFile.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>
#include <cstring>
#include <mutex>
#include <utility>

#include <unistd.h>

namespace zorcld
{

namespace
{

// What a signal handler may look at: plain bytes, complete before the flag is set.
struct CSlot
{
    char acPath[PATH_MAX];
    volatile std::sig_atomic_t bSet;
};

std::array<CSlot, CWatchedFile::c_nMaxAtOnce> g_watched;
std::mutex g_mutex; // threads come for slots; the handler does not care

constexpr std::array c_signals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

extern "C" void RemoveAndEnd(int nSignal)
{
    for (const CSlot& slot : g_watched)
        if (slot.bSet != 0)
            unlink(slot.acPath);
    static_cast<void>(std::signal(nSignal, SIG_DFL));
    static_cast<void>(std::raise(nSignal));
}

} // namespace

// A signal that the caller ignores, as nohup does, stays ignored.
CWatchedFile::CWatchedFile(std::string sPath) : m_sPath(std::move(sPath))
{
    const std::scoped_lock lock(g_mutex);
    const auto pFree =
        std::find_if(g_watched.begin(), g_watched.end(), [](const CSlot& slot) { return slot.bSet == 0; });
    if (pFree == g_watched.end() || m_sPath.size() >= sizeof pFree->acPath)
        return;
    std::memcpy(pFree->acPath, m_sPath.c_str(), m_sPath.size() + 1);
    pFree->bSet = 1;
    for (const int nSignal : c_signals)
        if (std::signal(nSignal, RemoveAndEnd) == SIG_IGN)
            static_cast<void>(std::signal(nSignal, SIG_IGN));
}

CWatchedFile::~CWatchedFile()
{
    const std::scoped_lock lock(g_mutex);
    for (CSlot& slot : g_watched)
        if (slot.bSet != 0 && m_sPath == slot.acPath)
            slot.bSet = 0;
}

} // namespace zorcld
