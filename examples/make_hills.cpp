// Writes files to try the other programs with: hills.ply, and beside it two that do not load.

#include "common/FillHills.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

namespace
{

void AppendFloat(std::string& sBytes, double d)
{
    const float f = static_cast<float>(d);
    std::uint32_t nBits = 0;
    std::memcpy(&nBits, &f, sizeof nBits);
    for (int i = 0; i < 4; ++i)
        sBytes += static_cast<char>(nBits >> (8 * i) & 0xFFU); // little-endian
}

// Floats reach to centimetres up to some 100 km: the file counts from the south-west corner.
std::string MakePly()
{
    const int n = CHills::c_nPntsASide;
    std::string sBytes = "ply\nformat binary_little_endian 1.0\nelement vertex " + std::to_string(n * n) +
                         "\nproperty float x\nproperty float y\nproperty float z\n"
                         "property uchar red\nproperty uchar green\nproperty uchar blue\nend_header\n";
    for (int i = 0; i < n * n; ++i)
    {
        const int nRow = i / n;
        const double x = CHills::c_dSpacing * (i % n);
        const double y = CHills::c_dSpacing * nRow;
        AppendFloat(sBytes, x);
        AppendFloat(sBytes, y);
        AppendFloat(sBytes, CHills::CalcHeight(x, y));
        sBytes += CHills::IsHouse(x, y) ? "\xC8\x3C\x28" : "\x5A\x8C\x46";
    }
    return sBytes;
}

bool WriteFile(const char* pPath, const std::string& sBytes)
{
    std::ofstream file(pPath, std::ios::binary);
    file << sBytes;
    file.close();
    return !file.fail();
}

} // namespace

int main()
{
    const std::string sPly = MakePly();
    const std::string sText = "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
                              "property float z\nend_header\n1 2 3\n";
    const bool bWritten = WriteFile("hills.ply", sPly) &&
                          WriteFile("hills_cut.ply", sPly.substr(0, sPly.size() / 2)) &&
                          WriteFile("hills_text.ply", sText);
    if (!bWritten)
        return std::fprintf(stderr, "make_hills: not everything was written\n"), 1;
    return 0;
}
