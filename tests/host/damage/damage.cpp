// Damaged files through what zorcld is made of: scripts/damage. Each file is given to `check` and to one
// other command that reads, in processes of a hundred files each.

#include <tests/host/support/CZorcld.h>
#include <tests/host/support/DamagedFiles.h>
#include <tests/host/support/RunCommands.h>
#include <tests/io/CMemFile.h>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

// Under the address sanitizer too a block that is too large is no block, and not the end of the program.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

namespace
{

constexpr int c_nBatch = 100;

struct CFormat
{
    const char* sName;
    const char* sType;   ///< as --type takes it
    const char* sEnding; ///< of the seeds; empty: all of the type
};

constexpr CFormat c_formats[] = {{"native", "native", ""},
                                 {"ply", "ply", ""},
                                 {"grid", "grid", ""},
                                 {"las", "las", ".las"},
                                 {"laz", "las", ".laz"}};

std::vector<CSeedFile> FindSeeds(const CFormat& format)
{
    std::vector<CSeedFile> vecSeeds = OfType(ReadSeeds(ZORCLD_SOURCES), format.sType);
    const std::string sEnding = format.sEnding;
    const auto isOther = [&](const CSeedFile& seed)
    {
        return seed.sName.size() < sEnding.size() ||
               seed.sName.compare(seed.sName.size() - sEnding.size(), sEnding.size(), sEnding) != 0;
    };
    vecSeeds.erase(std::remove_if(vecSeeds.begin(), vecSeeds.end(), isOther), vecSeeds.end());
    return vecSeeds;
}

void RunFile(const CFormat& format, const std::vector<CSeedFile>& vecSeeds, int nFile,
             const std::string& sFolder)
{
    const CMemFile file(MakeDamaged(vecSeeds, nFile).sBytes);
    const std::vector<TCommand>& vecAll = GetReadingCommands();
    const std::size_t nOther = static_cast<std::size_t>(nFile) % vecAll.size();
    for (TCommand command : {TCommand{"check", "%F"}, vecAll[nOther]})
    {
        command.insert(command.end(), {"--type", format.sType});
        const std::string sWrong = RunReading(command, file.GetPath(), sFolder);
        if (!sWrong.empty())
            throw std::runtime_error(command[0] + ": " + sWrong);
    }
}

/// @return empty, or what went wrong.
std::string RunFiles(const CFormat& format, const std::vector<CSeedFile>& vecSeeds, int nFirst, int nEnd,
                     const std::string& sFolder)
{
    constexpr int c_nMaxSeconds = 300;
    return RunInChild(c_nMaxSeconds,
                      [&]
                      {
                          for (int n = nFirst; n < nEnd; ++n)
                              RunFile(format, vecSeeds, n, sFolder);
                      });
}

/// Finds the files of a batch that fail, and keeps them.
int TellFailures(const CFormat& format, const std::vector<CSeedFile>& vecSeeds, int nFirst, int nEnd,
                 const std::string& sFolder)
{
    int nNumFailed = 0;
    for (int n = nFirst; n < nEnd; ++n)
    {
        const std::string sFailure = RunFiles(format, vecSeeds, n, n + 1, sFolder);
        if (sFailure.empty())
            continue;
        ++nNumFailed;
        const std::string sKept = std::string("damage-") + format.sName + "-" + std::to_string(n);
        std::ofstream(sKept, std::ios::binary) << MakeDamaged(vecSeeds, n).sBytes;
        std::printf("%s: %s\n", sKept.c_str(), sFailure.c_str());
    }
    if (nNumFailed == 0) // together they fail, alone none does
        std::printf("%s: files %d to %d fail together only\n", format.sName, nFirst, nEnd - 1);
    return std::max(nNumFailed, 1);
}

int Run(const CFormat& format, int nFirst, int nEnd)
{
    const CZorcld folder{CZorcld::InMemory{}};
    const std::vector<CSeedFile> vecSeeds = FindSeeds(format);
    if (vecSeeds.empty())
    {
        std::printf("%s: not read by this build\n", format.sName);
        return 0;
    }
    const auto begin = std::chrono::steady_clock::now();
    int nNumFailed = 0;
    for (int n = nFirst; n < nEnd; n += c_nBatch)
    {
        const int nBatchEnd = std::min(n + c_nBatch, nEnd);
        if (!RunFiles(format, vecSeeds, n, nBatchEnd, folder.GetPath("")).empty())
            nNumFailed += TellFailures(format, vecSeeds, n, nBatchEnd, folder.GetPath(""));
        const int nNumDone = nBatchEnd - nFirst;
        if (nNumDone % (c_nBatch * 50) == 0 && nBatchEnd < nEnd)
            std::printf("%s: %d done, %d failed\n", format.sName, nNumDone, nNumFailed);
        std::fflush(stdout);
    }
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const double dSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf("%s: %d files, %d failed; %.0f s, of the processor %ld s; at most %ld MB in a process\n",
                format.sName, nEnd - nFirst, nNumFailed, dSeconds,
                usage.ru_utime.tv_sec + usage.ru_stime.tv_sec, usage.ru_maxrss / 1024);
    return nNumFailed;
}

} // namespace

/// damage FORMAT COUNT [FIRST]
int main(int nNumArgs, char** asArgs)
{
    if (nNumArgs < 3)
    {
        std::fputs("usage: damage native|ply|grid|las|laz COUNT [FIRST]\n", stderr);
        return 2;
    }
    const int nCount = std::atoi(asArgs[2]);
    const int nFirst = nNumArgs > 3 ? std::atoi(asArgs[3]) : 0;
    for (const CFormat& format : c_formats)
        if (std::strcmp(format.sName, asArgs[1]) == 0)
            return Run(format, nFirst, nFirst + nCount) == 0 ? 0 : 1;
    std::fprintf(stderr, "damage: no format '%s'\n", asArgs[1]);
    return 2;
}
