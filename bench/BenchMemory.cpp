#include <bench/BenchMemory.h>

#include <cstdio>
#include <cstring>

#include <malloc.h>
#include <sys/mman.h>

std::int64_t GetHeapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks) + static_cast<std::int64_t>(info.hblkhd);
}

namespace
{

/// @return the bytes that /proc/self/status tells under `pKey`, or -1.
std::int64_t ReadStatus(const char* pKey)
{
    std::FILE* const pFile = std::fopen("/proc/self/status", "r");
    if (pFile == nullptr)
        return -1;
    char line[256];
    long long nKiB = -1;
    while (std::fgets(line, sizeof line, pFile) != nullptr)
        if (std::strncmp(line, pKey, std::strlen(pKey)) == 0)
            std::sscanf(line + std::strlen(pKey), " %lld", &nKiB);
    std::fclose(pFile);
    return nKiB < 0 ? -1 : nKiB * 1024;
}

bool ResetPeak()
{
    std::FILE* const pFile = std::fopen("/proc/self/clear_refs", "w");
    if (pFile == nullptr)
        return false;
    const bool bDone = std::fputs("5", pFile) >= 0;
    return std::fclose(pFile) == 0 && bDone;
}

} // namespace

std::int64_t MeasurePeak(const std::function<void()>& fn)
{
    malloc_trim(0); // what earlier rows gave back must not hide what this one takes
    const std::int64_t nBefore = ReadStatus("VmRSS:");
    if (nBefore < 0 || !ResetPeak())
        return -1;
    fn();
    return ReadStatus("VmHWM:") - nBefore;
}

void TouchMemory(std::size_t nNumBytes)
{
    void* const pBytes = mmap(nullptr, nNumBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pBytes == MAP_FAILED)
        return;
    static_cast<void>(madvise(pBytes, nNumBytes, MADV_HUGEPAGE)); // an advice: refused, small pages do
    constexpr std::size_t c_nPage = 4096;
    for (std::size_t i = 0; i < nNumBytes; i += c_nPage)
        static_cast<volatile char*>(pBytes)[i] = 1;
    munmap(pBytes, nNumBytes);
}
