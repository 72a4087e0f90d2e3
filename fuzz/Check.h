#ifndef FUZZ_CHECK_H
#define FUZZ_CHECK_H

#include <cstdio>
#include <cstdlib>

/// Ends the program where something that must hold does not.
inline void Check(bool bHolds, const char* sWhat)
{
    if (bHolds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", sWhat);
    std::abort();
}

#endif
