#include <bench/AsciiGridFiles.h>

#include <bench/BenchClouds.h>
#include <bench/CNoEnd.h>
#include <bench/CTempFile.h>
#include <io/ReadForeign.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

const std::string& GetGrid(std::int64_t nNumCols, std::int64_t nNumRows)
{
    static CTempFiles files;
    const auto write = [&](const std::string& sPath)
    {
        std::FILE* const pFile = std::fopen(sPath.c_str(), "w");
        if (pFile == nullptr)
            return false;
        std::fprintf(pFile, "ncols %lld\nnrows %lld\n", static_cast<long long>(nNumCols),
                     static_cast<long long>(nNumRows));
        std::fprintf(pFile, "xllcorner 500000\nyllcorner 4000000\ncellsize 1\nNODATA_value -9999\n");
        for (std::int64_t i = 0; i < nNumCols * nNumRows; ++i)
        {
            const double dPhase = static_cast<double>(i);
            std::fprintf(pFile, "%.3f%c", 450.0 + 50.0 * std::sin(dPhase * 0.001) * std::cos(dPhase * 0.37),
                         (i + 1) % nNumCols == 0 ? '\n' : ' ');
        }
        return std::fclose(pFile) == 0;
    };
    return files.Get(std::to_string(nNumCols) + "x" + std::to_string(nNumRows) + ".asc", write);
}

std::uint64_t DecodeGrid(std::int64_t nNumCols, std::int64_t nNumRows, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    CNoEnd listener(cld);
    const std::string& sPath = GetGrid(nNumCols, nNumRows);
    timer.Measure([&] { ReadForeign(listener, nullptr, PntCldFile_AsciiGrid, sPath); });
    return static_cast<std::uint64_t>(cld.GetNumPnts());
}

namespace
{

/// Reads the file whole and turns every word behind the header into a number; keeps their sum only.
std::uint64_t LoopStrtod(std::int64_t nNumCols, std::int64_t nNumRows, CCpuTimer& timer)
{
    const std::string& sPath = GetGrid(nNumCols, nNumRows);
    std::uint64_t nNumCells = 0;
    double dSum = 0.0;
    timer.Measure(
        [&]
        {
            const std::size_t nSize = std::filesystem::file_size(sPath);
            const std::unique_ptr<char[]> pText(new char[nSize + 1]);
            std::FILE* const pFile = std::fopen(sPath.c_str(), "r");
            pText[std::fread(pText.get(), 1, nSize, pFile)] = '\0';
            std::fclose(pFile);
            const char* p = pText.get();
            for (int nLine = 0; nLine < 6; ++nLine)
                p = std::strchr(p, '\n') + 1;
            for (char* pEnd = nullptr;; p = pEnd)
            {
                const double d = std::strtod(p, &pEnd);
                if (pEnd == p)
                    break;
                dSum += d;
                ++nNumCells;
            }
        });
    return dSum > 0.0 ? nNumCells : 0;
}

void AddGridRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddRow({"grid", "ASCII grid, tree excluded", nNum, "strtod loop", 0.50,
                [=](CCpuTimer& timer) { return DecodeGrid(1000, nNum / 1000, timer); },
                [=](CCpuTimer& timer) { return LoopStrtod(1000, nNum / 1000, timer); }});
    const std::int64_t nNum = BenchSizes({1000000}).back();
    AddRow({"grid", "ASCII grid, one row", nNum, "the same values in rows of 1,000", 1.3,
            [=](CCpuTimer& timer) { return DecodeGrid(nNum, 1, timer); },
            [=](CCpuTimer& timer) { return DecodeGrid(1000, nNum / 1000, timer); }});
}

const CBenchGroup group("grid", AddGridRows);

} // namespace
