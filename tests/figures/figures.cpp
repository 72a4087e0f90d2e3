// Figures that people ask for:
//
//   figures accuracy [N]          largest error of stored coordinates, N points (1000000) a line
//   figures sizes [N] [colour]    time and memory of N points (1000000) at every stage
//   figures laz N FORMAT FILE     no figure: writes N equal points, for scripts/costs

#include <tests/figures/Figures.h>

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int nNumArgs, char** ppArgs)
{
    const std::string sWhat = nNumArgs > 1 ? ppArgs[1] : "";
    const std::int64_t nNum = nNumArgs > 2 ? std::atoll(ppArgs[2]) : 1000000;
    if (sWhat == "accuracy")
        return PrintAccuracy(nNum) ? 0 : 1;
    if (sWhat == "sizes")
        return PrintSizes(nNum, nNumArgs > 3) ? 0 : 1;
    if (sWhat == "laz" && nNumArgs == 5)
        return WriteEqualLaz(nNum, std::atoi(ppArgs[3]), ppArgs[4]) ? 0 : 1;
    std::fputs("figures accuracy [N] | sizes [N] [colour] | laz N FORMAT FILE\n", stderr);
    return 2;
}
