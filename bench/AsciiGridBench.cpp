#include <bench/AsciiGridFiles.h>

#include <bench/BenchClouds.h>
#include <bench/CNoEnd.h>
#include <io/ReadForeign.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

std::string GetGrid(std::int64_t nNumCols, std::int64_t nNumRows)
{
    const auto write = [=](const std::string& sPath)
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
    return GetBenchFile(std::to_string(nNumCols) + "x" + std::to_string(nNumRows) + ".asc", write);
}

std::uint64_t DecodeGrid(std::int64_t nNumCols, std::int64_t nNumRows, CCpuTimer& timer)
{
    CNoColors colors;
    CPntCld cld(&colors);
    CNoEnd listener(cld);
    const std::string sPath = GetGrid(nNumCols, nNumRows);
    timer.Measure([&] { ReadForeign(listener, nullptr, PntCldFile_AsciiGrid, sPath.c_str()); });
    CMmSum sum;
    zor::geom::PNT_3D pnt;
    for (int i = 0; i < cld.GetNumPnts(); ++i)
    {
        cld.GetPnt(i, pnt);
        sum.Add(0.0, 0.0, pnt.z);
    }
    return sum.Get();
}

namespace
{

/// Reads the file whole and turns every word behind the header into a number, all of which it keeps.
std::uint64_t LoopStrtod(std::int64_t nNumCols, std::int64_t nNumRows, CCpuTimer& timer)
{
    const std::string sPath = GetGrid(nNumCols, nNumRows);
    std::vector<double> vecCells;
    timer.Measure(
        [&]
        {
            vecCells.reserve(static_cast<std::size_t>(nNumCols * nNumRows));
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
                vecCells.push_back(d);
            }
        });
    CMmSum sum;
    for (const double d : vecCells)
        sum.Add(0.0, 0.0, d);
    return sum.Get();
}

void AddGridRows()
{
    for (const std::int64_t nNum : BenchSizes({1000000, 10000000}))
        AddRow({"grid",
                "ASCII grid, tree excluded",
                nNum,
                "strtod loop",
                {0.50, 0.35},
                [=](CCpuTimer& timer) { return DecodeGrid(1000, nNum / 1000, timer); },
                [=](CCpuTimer& timer) { return LoopStrtod(1000, nNum / 1000, timer); }});
    const std::int64_t nNum = BenchSizes({1000000}).back();
    AddRow({"grid",
            "ASCII grid, one row",
            nNum,
            "the same values in rows of 1,000",
            {1.3, 1.1},
            [=](CCpuTimer& timer) { return DecodeGrid(nNum, 1, timer); },
            [=](CCpuTimer& timer) { return DecodeGrid(1000, nNum / 1000, timer); }});
}

const CBenchGroup c_group("grid", AddGridRows);

} // namespace
