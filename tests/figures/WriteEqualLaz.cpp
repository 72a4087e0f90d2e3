#include <tests/figures/Figures.h>

#include <cstdio>

#ifdef ZOR4DATA_TEST_LAZ

#include <tests/support/LazBytes.h>

#include <fstream>

bool WriteEqualLaz(std::int64_t nNum, int nFormat, const char* sPath)
{
    constexpr unsigned c_nChunkSize = 50000;
    CLasFile file;
    file.nMinor = nFormat < 6 ? 2 : 4;
    file.nFormat = nFormat;
    file.vecPnts.resize(static_cast<std::size_t>(nNum));
    std::ofstream stream(sPath, std::ios::binary);
    stream << LazBytes(file, c_nChunkSize);
    return static_cast<bool>(stream.flush());
}

#else

bool WriteEqualLaz(std::int64_t, int, const char*)
{
    std::fputs("figures: built without LASzip, which writes LAZ\n", stderr);
    return false;
}

#endif
