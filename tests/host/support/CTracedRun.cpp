#include <tests/host/support/CTracedRun.h>

#include <tests/host/support/CZorcld.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using TCallInfo = struct __ptrace_syscall_info;

constexpr int c_nCallStop = SIGTRAP | 0x80;
constexpr long c_nOptions = PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL;

bool Contains(std::initializer_list<long> calls, std::uint64_t nCall)
{
    return std::find(calls.begin(), calls.end(), static_cast<long>(nCall)) != calls.end();
}

/// Does this call open a file to write to it?
bool OpensToWrite(const TCallInfo& info)
{
    std::uint64_t nFlags = O_RDONLY;
    if (info.entry.nr == SYS_openat)
        nFlags = info.entry.args[2];
#ifdef SYS_open
    if (info.entry.nr == SYS_open)
        nFlags = info.entry.args[1];
#endif
    return (nFlags & O_ACCMODE) != O_RDONLY;
}

/// Does it change names or content of files, or end a file's writing?
bool ChangesFiles(const TCallInfo& info)
{
    static const std::initializer_list<long> c_calls{
        SYS_write,    SYS_writev,    SYS_pwrite64,  SYS_close,           SYS_ftruncate,
        SYS_fsync,    SYS_fdatasync, SYS_fallocate, SYS_renameat,        SYS_renameat2,
        SYS_unlinkat, SYS_linkat,    SYS_mkdirat,   SYS_copy_file_range,
#ifdef SYS_rename // the calls that newer processors do not have
        SYS_rename,   SYS_unlink,    SYS_link,      SYS_mkdir,           SYS_rmdir,
#endif
    };
    return OpensToWrite(info) || Contains(c_calls, info.entry.nr);
}

bool Speaks(const TCallInfo& info)
{
    return Contains({SYS_write, SYS_writev}, info.entry.nr) &&
           (info.entry.args[0] == STDOUT_FILENO || info.entry.args[0] == STDERR_FILENO);
}

} // namespace

CTracedRun::CTracedRun(enumMoments eMoments, std::vector<std::string> vecArgs)
    : m_eMoments(eMoments), m_vecArgs(std::move(vecArgs))
{
    m_vecArgs.insert(m_vecArgs.begin(), CZorcld::GetProgram());
}

/// Tries all that a run needs: containers may let a process be traced, and not tell of its calls.
bool CTracedRun::IsPossible()
{
    const pid_t nChild = fork();
    if (nChild == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
            raise(SIGSTOP);
        getppid(); // a call to be told of
        _exit(0);
    }
    int nStatus = 0;
    if (nChild < 0 || waitpid(nChild, &nStatus, 0) != nChild || !WIFSTOPPED(nStatus))
        return false;
    TCallInfo info{};
    const bool bIsPossible = ptrace(PTRACE_SETOPTIONS, nChild, nullptr, c_nOptions) == 0 &&
                             ptrace(PTRACE_SYSCALL, nChild, nullptr, nullptr) == 0 &&
                             waitpid(nChild, &nStatus, 0) == nChild && WIFSTOPPED(nStatus) &&
                             WSTOPSIG(nStatus) == c_nCallStop &&
                             ptrace(PTRACE_GET_SYSCALL_INFO, nChild, sizeof info, &info) > 0;
    kill(nChild, SIGKILL);
    waitpid(nChild, &nStatus, 0);
    return bIsPossible;
}

int CTracedRun::RunUntil(int nMoment)
{
    m_mapCounts.clear();
    m_nNumMoments = 0;
    m_bWrites = false;
    m_bEnded = false;
    m_nStatus = -1;
    Follow(Start(), nMoment);
    return m_nNumMoments;
}

pid_t CTracedRun::Start()
{
    std::vector<char*> vecArgs;
    for (std::string& sArg : m_vecArgs)
        vecArgs.push_back(sArg.data());
    vecArgs.push_back(nullptr);
    const pid_t nProgram = fork();
    if (nProgram < 0)
        throw std::runtime_error("no process");
    if (nProgram == 0)
    {
        const int nNull = open("/dev/null", O_RDWR);
        for (const int nFile : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            dup2(nNull, nFile);
        setenv("ASAN_OPTIONS", "detect_leaks=0", 1); // leaks cannot be looked for in a traced process
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        execv(vecArgs[0], vecArgs.data());
        _exit(127);
    }
    int nStatus = 0;
    waitpid(nProgram, &nStatus, 0); // it has stopped in execv
    if (!WIFSTOPPED(nStatus) || ptrace(PTRACE_SETOPTIONS, nProgram, nullptr, c_nOptions) != 0)
        throw std::runtime_error("the program cannot be traced");
    ptrace(PTRACE_SYSCALL, nProgram, nullptr, nullptr);
    return nProgram;
}

/// Lets the program's threads run from stop to stop until it has ended.
void CTracedRun::Follow(pid_t nProgram, int nMoment)
{
    bool bKilled = false;
    for (;;)
    {
        int nStatus = 0;
        const pid_t nThread = waitpid(-1, &nStatus, __WALL);
        if (nThread < 0)
            throw std::runtime_error("the program is lost");
        if (WIFSTOPPED(nStatus))
        {
            const int nSignal = WSTOPSIG(nStatus);
            const bool bOurs = nSignal == c_nCallStop || nSignal == SIGTRAP || nSignal == SIGSTOP;
            if (!bKilled && nSignal == c_nCallStop && OnStop(nThread, nMoment))
                bKilled = kill(nProgram, SIGKILL) == 0;
            ptrace(PTRACE_SYSCALL, nThread, nullptr, bOurs ? 0L : static_cast<long>(nSignal));
        }
        else if (nThread == nProgram)
        {
            m_bEnded = WIFEXITED(nStatus);
            m_nStatus = m_bEnded ? WEXITSTATUS(nStatus) : -1;
            return;
        }
    }
}

/// @return whether this is the moment to kill it.
bool CTracedRun::OnStop(pid_t nThread, int nMoment)
{
    TCallInfo info{};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, nThread, sizeof info, &info) <= 0)
        return false;
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY)
    {
        m_bWrites = m_bWrites || OpensToWrite(info);
        m_mapCounts[nThread] = m_eMoments == UntilItSpeaks || (m_bWrites && ChangesFiles(info));
        if (m_eMoments == UntilItSpeaks && Speaks(info))
            return true;
    }
    return m_mapCounts[nThread] && m_nNumMoments++ == nMoment;
}
