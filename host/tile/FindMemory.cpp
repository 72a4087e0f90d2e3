#include <host/tile/FindMemory.h>

#include <algorithm>

#include <sys/resource.h>
#include <unistd.h>

namespace zorcld
{

namespace
{

rlim_t FindLimit()
{
    struct rlimit limit = {};
    return getrlimit(RLIMIT_AS, &limit) == 0 ? limit.rlim_cur : RLIM_INFINITY;
}

} // namespace

double FindMemory()
{
    const double dMachine =
        static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
    return IsMemoryLimited() ? std::min(dMachine, static_cast<double>(FindLimit())) : dMachine;
}

bool IsMemoryLimited()
{
    return FindLimit() != RLIM_INFINITY;
}

} // namespace zorcld
