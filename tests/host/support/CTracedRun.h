#ifndef TESTS_HOST_SUPPORT_CTRACEDRUN_H
#define TESTS_HOST_SUPPORT_CTRACEDRUN_H

#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

/// Runs the program under ptrace and kills it at a moment that is counted in its system calls, not in
/// seconds: the same on a quick machine, a slow one and one that does other things.
class CTracedRun
{
public:
    /// What counts as a moment.
    enum enumMoments
    {
        FileChanges,  ///< before and after each call that may change a file, from the first opened to write
        UntilItSpeaks ///< before and after any call, until it writes to standard output or error
    };

    CTracedRun(enumMoments eMoments, std::vector<std::string> vecArgs);

    /// Does the system let a process trace its child?
    static bool IsPossible();

    /// Starts the program, and ends it with SIGKILL at moment n, 0 the first, or where it speaks if it is
    /// followed until then.
    /// @return the number of moments passed.
    int RunUntil(int nMoment);

    /// Did the last run end by itself? Else it was killed.
    bool HasEnded() const { return m_bEnded; }

    /// Exit status of the last run that ended by itself.
    int GetStatus() const { return m_nStatus; }

private:
    pid_t Start();
    void Follow(pid_t nProgram, int nMoment);
    bool OnStop(pid_t nThread, int nMoment);

    enumMoments m_eMoments;
    std::vector<std::string> m_vecArgs;
    std::map<pid_t, bool> m_mapCounts; ///< of each thread: does its last call count?
    int m_nNumMoments = 0;
    bool m_bWrites = false; ///< has it opened a file to write?
    bool m_bEnded = false;
    int m_nStatus = -1;
};

#endif
