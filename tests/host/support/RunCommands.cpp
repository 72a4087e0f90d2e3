#include <tests/host/support/RunCommands.h>

#include <host/commands/RunProgram.h>
#include <host/output/CFailure.h>
#include <tests/host/support/CZorcld.h>
#include <tests/io/CMemFile.h>

#include <cstdio>
#include <cstring>
#include <exception>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int c_nWarnings = 3;

std::string Replace(std::string sText, const std::string& sWhat, const std::string& sWith)
{
    const std::size_t nPos = sText.find(sWhat);
    return nPos == std::string::npos ? sText : sText.replace(nPos, sWhat.size(), sWith);
}

bool IsExpected(const TCommand& command, int nStatus)
{
    return nStatus == 0 || (command[0] == "check" && (nStatus == 1 || nStatus == c_nWarnings));
}

/// No exception leaves the child: it would go on as the parent does.
bool EndsWell(const std::function<void()>& fn)
{
    try
    {
        fn();
    }
    catch (const std::exception& error)
    {
        std::printf("exception: %s\n", error.what());
        std::fflush(nullptr);
        return false;
    }
    std::fflush(nullptr);
    return true;
}

std::string DescribeEnd(int nStatus)
{
    if (WIFSIGNALED(nStatus))
        return std::string("ended by signal: ") + strsignal(WTERMSIG(nStatus));
    return WEXITSTATUS(nStatus) == 0 ? "" : "ended with status " + std::to_string(WEXITSTATUS(nStatus));
}

} // namespace

const std::vector<TCommand>& GetReadingCommands()
{
    static const std::vector<TCommand> c_vecCommands = {
        {"info", "%F"},
        {"info", "--json", "%F"},
        {"check", "%F"},
        {"check", "--json", "%F"},
        {"count", "%F", "--rect=-5,-5,50,50"},
        {"points", "%F", "--lod", "0.5", "-o", "%D/a.csv"},
        {"points", "%F", "--points", "3", "--clip", "1,0.5,0,-1", "-o", "%D/a.ply"},
        {"points", "%F", "--line=-1,-1,20,30,2", "--ends", "-o", "%D/b.csv"},
        {"view", "%F", "--size", "200x200", "-o", "%D/a.png"},
        {"view", "%F", "--size", "200x200", "--from", "30,20", "--color", "height", "-o", "%D/b.png"},
        {"profile", "%F", "--line=-1,-1,20,30,2", "--size", "200x200", "-o", "%D/c.png"},
        {"profile", "%F", "--line=0,0,3,1,0.5", "-o", "%D/d.csv"},
        {"outline", "%F", "--distance", "auto", "-o", "%D/a.geojson"},
        {"outline", "%F", "--distance", "2", "--size", "200x200", "-o", "%D/d.png"},
        {"ground", "%F", "-o", "%D/e.ply", "--picture", "%D/e.png", "--size", "200x200"},
        {"convert", "%F", "%D/f.ply"},
        {"convert", "%F", "%D/f.cld"},
    };
    return c_vecCommands;
}

std::string RunReading(const TCommand& command, const std::string& sFile, const std::string& sFolder)
{
    std::vector<std::string> vecArgs = {"zorcld"};
    for (const std::string& sArg : command)
        vecArgs.push_back(Replace(Replace(sArg, "%F", sFile), "%D", sFolder));
    std::vector<const char*> vecPointers;
    vecPointers.reserve(vecArgs.size());
    for (const std::string& sArg : vecArgs)
        vecPointers.push_back(sArg.c_str());
    try
    {
        const int nStatus = zorcld::RunCommand(static_cast<int>(vecPointers.size()), vecPointers.data());
        return IsExpected(command, nStatus) ? "" : "status " + std::to_string(nStatus);
    }
    catch (const zorcld::CFailure& failure)
    {
        return failure.GetCause().empty() ? "a failure without a cause" : "";
    }
    catch (const std::exception& error) // the program has a word for these, and none of them is for a file
    {
        return std::string("exception: ") + error.what();
    }
}

std::string RunInChild(int nSeconds, const std::function<void()>& fn)
{
    constexpr std::size_t c_nTail = 3000;
    CMemFile output;
    std::fflush(nullptr);
    const pid_t nChild = fork();
    if (nChild < 0)
        return "no process";
    if (nChild == 0)
    {
        const int nFile = open(output.GetPath(), O_WRONLY | O_APPEND);
        dup2(nFile, STDOUT_FILENO);
        dup2(nFile, STDERR_FILENO);
        alarm(static_cast<unsigned>(nSeconds));
        _exit(EndsWell(fn) ? 0 : 1);
    }
    int nStatus = 0;
    waitpid(nChild, &nStatus, 0);
    const std::string sEnd = DescribeEnd(nStatus);
    const std::string sOutput = ReadBytes(output.GetPath());
    if (sEnd.empty())
        return "";
    return sEnd + "\n" + sOutput.substr(sOutput.size() - std::min(sOutput.size(), c_nTail));
}
